#include "platform/preference_store.h"

#include <cstdlib>

namespace amperly {

PreferenceStore& PreferenceStore::standard()
{
    PreferenceStore* const store = Injected<PreferenceStore>::current();
    if (store == nullptr)
        std::abort();
    return *store;
}

} // namespace amperly
