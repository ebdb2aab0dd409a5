// A kernel object that this program holds a handle of, given back at the end.
#pragma once

#include <IOKit/IOKitLib.h>

#include <string_view>
#include <utility>

namespace amperly {

class IoObject {
public:
    /// Takes over a handle; IO_OBJECT_NULL is no object.
    explicit IoObject(io_object_t handle) : m_handle(handle) { }

    ~IoObject()
    {
        if (m_handle != IO_OBJECT_NULL)
            IOObjectRelease(m_handle);
    }
    IoObject(const IoObject&) = delete;
    IoObject& operator=(const IoObject&) = delete;

    /// The first service of class `className`, or no object.
    [[nodiscard]] static IoObject firstService(std::string_view className);

    [[nodiscard]] explicit operator bool() const { return m_handle != IO_OBJECT_NULL; }
    [[nodiscard]] io_object_t get() const { return m_handle; }

    /// Hands the handle over to the caller.
    [[nodiscard]] io_object_t release() { return std::exchange(m_handle, IO_OBJECT_NULL); }

private:
    io_object_t m_handle;
};

} // namespace amperly
