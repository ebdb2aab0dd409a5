// The ink from everything that this desktop tells: the X11 tray's colours, the portal's colour
// scheme, the toolkit's palette.
#pragma once

#include "platform/linux/desktop/color_scheme.h"
#include "platform/linux/tray/ink_source.h"
#include "platform/linux/tray/x11_tray_colors.h"

#include <QObject>
#include <memory>
#include <optional>

namespace amperly {

class DesktopInk final : public InkSource, private QObject {
public:
    /// Asks the portal over `connection`, which must outlive this object; without one, there is
    /// no portal.
    explicit DesktopInk(BusConnection* connection);
    ~DesktopInk() override;

    [[nodiscard]] Ink ink(PanelInk panel) const override;
    void onChanged(std::function<void()> handler) override { m_changed = std::move(handler); }
    void panelChanged() override;

    /// Whether applications are to be dark, as ColorScheme has it; nothing without a portal.
    [[nodiscard]] std::optional<bool> prefersDark() const;

    /// Called when prefersDark() has another answer.
    void onSchemeChanged(std::function<void()> handler) { m_schemeChanged = std::move(handler); }

private:
    /// Follows the toolkit's palette, which changes with the desktop's theme.
    bool eventFilter(QObject* watched, QEvent* event) override;
    void announce();

    std::unique_ptr<X11TrayColors> m_tray;
    std::optional<ColorScheme> m_scheme;
    std::function<void()> m_changed;
    std::function<void()> m_schemeChanged;
};

} // namespace amperly
