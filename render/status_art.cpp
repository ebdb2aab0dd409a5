#include "render/status_art.h"

#include <cstdlib>

namespace amperly {

StatusArt& StatusArt::current()
{
    StatusArt* const art = Injected<StatusArt>::current();
    if (art == nullptr)
        std::abort();
    return *art;
}

} // namespace amperly
