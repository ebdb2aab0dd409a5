// The one instance of a service that is in force. A program has one telemetry source and
// one standard preference store, and a few operations reach them without being handed them.
// Whoever sets up the program, or a test, says which for as long as an Injected lives; the
// one before comes back with its end, so no test leaks into the next.
#pragma once

#include <utility>

namespace amperly {

template <typename Service>
class Injected {
public:
    /// Puts `service` in force; it must outlive this object. Scopes nest.
    explicit Injected(Service& service) : m_previous(std::exchange(s_current, &service)) { }
    ~Injected() { s_current = m_previous; }
    Injected(const Injected&) = delete;
    Injected& operator=(const Injected&) = delete;

    /// The service in force, or null outside every scope.
    [[nodiscard]] static Service* current() { return s_current; }

private:
    static inline Service* s_current = nullptr;
    Service* m_previous;
};

} // namespace amperly
