// A CoreFoundation object that this program owns one reference to, given back at the end.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <utility>

namespace amperly {

template <typename Type>
class CfRef {
public:
    CfRef() = default;

    /// Takes over the reference that a Create or Copy function returned; null is no object.
    explicit CfRef(Type created) : m_object(created) { }

    ~CfRef()
    {
        if (m_object != nullptr)
            CFRelease(m_object);
    }
    CfRef(CfRef&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) { }
    CfRef& operator=(CfRef&& other) noexcept
    {
        std::swap(m_object, other.m_object);
        return *this;
    }
    CfRef(const CfRef&) = delete;
    CfRef& operator=(const CfRef&) = delete;

    [[nodiscard]] explicit operator bool() const { return m_object != nullptr; }
    [[nodiscard]] Type get() const { return m_object; }

    /// Hands the reference over to a function that consumes one.
    [[nodiscard]] Type release() { return std::exchange(m_object, nullptr); }

private:
    Type m_object = nullptr;
};

} // namespace amperly
