// From the pixels that the X server counts in to the desktop's logical coordinates. The toolkit
// keeps each screen's corner where the server has it and scales what lies within.
#pragma once

#include "platform/status_item.h"

#include <span>

namespace amperly {

/// One screen as the toolkit tells it.
struct ScaledScreen {
    int x = 0; ///< of its corner, the same in both coordinates
    int y = 0;
    int width = 0; ///< logical
    int height = 0; ///< logical
    double scale = 1.0; ///< pixels per logical unit
};

/// `native` itself where no screen is.
[[nodiscard]] ScreenPoint logicalPoint(ScreenPoint native, std::span<const ScaledScreen> screens);

/// The same with the screens that there are now.
[[nodiscard]] ScreenPoint logicalPoint(ScreenPoint native);

} // namespace amperly
