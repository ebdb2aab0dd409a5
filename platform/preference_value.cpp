#include "platform/preference_value.h"

namespace amperly {
} // namespace amperly
