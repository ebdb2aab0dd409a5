// The colour that the item is drawn in, which has to be legible on a panel that no protocol
// tells the background of.
#pragma once

#include "platform/coverage_mask.h"
#include "platform/linux/desktop/color_scheme.h"
#include "platform/linux/tray/host_profile.h"
#include "platform/linux/tray/x11_tray_colors.h"

#include <QObject>
#include <functional>
#include <memory>
#include <optional>

namespace amperly {

inline constexpr Ink kWhiteInk{0xffffffff};
inline constexpr Ink kBlackInk{0xff000000};

/// What the desktop tells.
struct InkFacts {
    std::optional<Ink> tray; ///< the colour that the tray itself asks for
    std::optional<bool> prefersDark; ///< the desktop's colour scheme
    Ink paletteText{}; ///< the toolkit's colour for text in windows
};

/// What the tray itself asks for first, then what is usual for panels of that kind.
[[nodiscard]] Ink chooseInk(PanelInk panel, const InkFacts& facts);

class InkSource {
public:
    virtual ~InkSource() = default;

    /// Cheap: it is asked at every tick that has something to show.
    [[nodiscard]] virtual Ink ink(PanelInk panel) const = 0;

    /// Called whenever ink() may have another answer: while the readings stay, no tick asks.
    virtual void onChanged(std::function<void()> handler) = 0;

    /// Another panel has appeared, with colours of its own.
    virtual void panelChanged() = 0;
};

/// From everything that this desktop tells: the X11 tray's colours, the portal's colour scheme, the
/// toolkit's palette.
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
