// The colour that the item is drawn in, which has to be legible on a panel that no protocol
// tells the background of.
#pragma once

#include "platform/coverage_mask.h"
#include "platform/linux/tray/host_profile.h"

#include <functional>
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

/// The tray's own word first, then what is usual for panels of that kind.
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

} // namespace amperly
