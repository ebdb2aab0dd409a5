#include "platform/linux/desktop/kde_animations.h"

#include "platform/linux/trimmed.h"

#include <charconv>
#include <fstream>
#include <iterator>

namespace amperly {

std::optional<double> animationFactor(std::string_view globals)
{
    constexpr std::string_view kGroup = "[KDE]";
    constexpr std::string_view kKey = "AnimationDurationFactor";

    bool inGroup = false;
    while (!globals.empty()) {
        const std::size_t end = globals.find('\n');
        const std::string_view line = trimmed(globals.substr(0, end));
        globals.remove_prefix(end == std::string_view::npos ? globals.size() : end + 1);
        if (line.starts_with('[')) {
            inGroup = line == kGroup;
            continue;
        }
        const std::size_t equals = line.find('=');
        if (!inGroup || equals == std::string_view::npos || trimmed(line.substr(0, equals)) != kKey)
            continue;
        const std::string_view number = trimmed(line.substr(equals + 1));
        double factor = 0.0;
        const auto [rest, error] = std::from_chars(number.data(), number.data() + number.size(), factor);
        if (error == std::errc() && rest == number.data() + number.size())
            return factor;
    }
    return std::nullopt;
}

std::optional<double> animationFactorIn(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    const std::string contents{std::istreambuf_iterator<char>(file), {}};
    return animationFactor(contents);
}

} // namespace amperly
