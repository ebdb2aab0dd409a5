// Whether anybody can see a window on X11: the server tells when it is wholly covered, and whether
// the screen has been switched off.
#pragma once

#include "platform/linux/clock/sight.h"

#include <QAbstractNativeEventFilter>

#include <functional>
#include <memory>
#include <xcb/xcb.h>

namespace amperly {

class X11Sight : public Sight, public QAbstractNativeEventFilter {
public:
    /// Null on other windowing systems. `changed` is called when the window has been covered or
    /// uncovered.
    [[nodiscard]] static std::unique_ptr<X11Sight> of(xcb_window_t window, std::function<void()> changed);
    ~X11Sight() override;
    X11Sight(const X11Sight&) = delete;
    X11Sight& operator=(const X11Sight&) = delete;

    [[nodiscard]] bool isCovered() const override { return m_covered; }
    [[nodiscard]] bool isScreenOff() const override;

    bool nativeEventFilter(const QByteArray& kind, void* message, qintptr* result) override;

private:
    X11Sight(xcb_connection_t* connection, xcb_window_t window, std::function<void()> changed);

    xcb_connection_t* m_connection;
    xcb_window_t m_window;
    std::function<void()> m_changed;
    bool m_covered = false;
    bool m_screenCanBeOff = false;
};

} // namespace amperly
