// Gives memory back whenever the program comes to rest: once after its start, and each time its
// last window has gone.
#pragma once

#include <QObject>
#include <QTimer>

#include <functional>

namespace amperly {

class RestKeeper : public QObject {
public:
    /// So long nothing may happen before the program counts as at rest. Long enough for the
    /// panel to have fetched the item after the start, and for a window's last animation.
    static constexpr int kSettlingMilliseconds = 1500;

    /// Needs the application object. `giveBack` is what is done at rest.
    explicit RestKeeper(std::function<void()> giveBack = returnMemory);
    ~RestKeeper() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    static void returnMemory();

    QTimer m_settling;
};

} // namespace amperly
