// The same font on every machine, and what is drawn from it, in force for as long as this lives.
#pragma once

#include "platform/simulated/desktop/fixed_ui_font.h"
#include "render/status_art.h"

namespace amperly {

struct PinnedDrawing {
    FixedUiFont font{{AMPERLY_PINNED_FONT, 0}, {AMPERLY_PINNED_FONT, 0}};
    StatusArt art{font};
    Injected<StatusArt> inForce{art};
};

} // namespace amperly
