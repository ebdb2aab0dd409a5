// Whether anybody can see a window, where the windowing system lets programs find out.
#pragma once

namespace amperly {

class Sight {
public:
    virtual ~Sight() = default;

    [[nodiscard]] virtual bool isCovered() const = 0;

    /// Asks anew at each call: nobody announces it.
    [[nodiscard]] virtual bool isScreenOff() const = 0;
};

} // namespace amperly
