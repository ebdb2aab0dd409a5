// The I/O registry: the kernel's own tree of devices, each with a dictionary of properties.
#pragma once

#include "platform/registry.h"

namespace amperly {

class IoKitRegistry : public Registry {
public:
    [[nodiscard]] RegistryEntry find(std::string_view className) override;
    [[nodiscard]] RegistryProperty copyProperty(RegistryEntry entry, std::string_view name) override;
    void release(RegistryEntry entry) override;
};

} // namespace amperly
