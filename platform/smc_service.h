// The way to the System Management Controller, the chip that meters the machine's supply
// rails: open a user client by class name, exchange fixed 80-byte records, close.
//
// The contents of the records are the client's affair; this interface only carries them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace amperly {

/// Size of the one record that the controller's driver takes and gives, in bytes.
inline constexpr std::size_t kSmcRecordSize = 80;

/// What opening a service came to.
struct SmcOpening {
    bool opened = false; ///< the driver accepted the client
    std::uint32_t connection = 0; ///< the client's handle; 0 where there is no such service
};

class SmcService {
public:
    virtual ~SmcService() = default;

    /// Finds the first service of class `className`, opens a client of type 0 on it for this
    /// process and lets the service handle go again.
    [[nodiscard]] virtual SmcOpening open(std::string_view className) = 0;

    /// One struct call: `request` in, `reply` out. Returns the kernel's code, 0 for success.
    [[nodiscard]] virtual std::int32_t callStruct(std::uint32_t connection, std::uint32_t selector,
        std::span<const std::byte, kSmcRecordSize> request, std::span<std::byte, kSmcRecordSize> reply)
        = 0;

    /// Closes a handle that open() gave. Closing 0 does nothing.
    virtual void close(std::uint32_t connection) = 0;
};

} // namespace amperly
