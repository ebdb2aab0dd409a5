// Whether windows can be translucent.
#pragma once

namespace amperly {

/// On X11, whether a compositing manager runs at this moment; true on any other windowing system.
[[nodiscard]] bool isComposited();

} // namespace amperly
