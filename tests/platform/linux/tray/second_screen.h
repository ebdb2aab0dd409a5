// One more screen on the toolkit's display, of the scale that the test says. Scales are the platform
// plugin's to tell, so the screen is the plugin's kind of object.
#pragma once

#include <qpa/qplatformscreen.h>
#include <qpa/qwindowsysteminterface.h>

namespace amperly::test {

class SecondScreen {
public:
    explicit SecondScreen(double scale) : m_screen(new Screen(scale))
    {
        QWindowSystemInterface::handleScreenAdded(m_screen);
    }
    ~SecondScreen() { QWindowSystemInterface::handleScreenRemoved(m_screen); }
    SecondScreen(const SecondScreen&) = delete;
    SecondScreen& operator=(const SecondScreen&) = delete;

    /// The user sets another scale: the same pixels are other points.
    void become(double scale)
    {
        m_screen->scale = scale;
        const QRect area = m_screen->geometry();
        QWindowSystemInterface::handleScreenGeometryChange(m_screen->screen(), area, area);
    }

private:
    struct Screen : QPlatformScreen {
        explicit Screen(double scale_) : scale(scale_) { }

        [[nodiscard]] QRect geometry() const override
        {
            return {800, 0, static_cast<int>(1600 / scale), static_cast<int>(1200 / scale)};
        }
        [[nodiscard]] int depth() const override { return 32; }
        [[nodiscard]] QImage::Format format() const override { return QImage::Format_RGB32; }
        [[nodiscard]] qreal devicePixelRatio() const override { return scale; }

        double scale;
    };

    Screen* m_screen; ///< the toolkit's to delete
};

} // namespace amperly::test
