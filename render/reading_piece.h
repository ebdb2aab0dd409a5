// One reading of the status image: a symbol, a value, or both.
#pragma once

#include <string>
#include <string_view>

namespace amperly {

struct ReadingPiece {
    std::string_view symbol; ///< name of a symbol, which lives as long as the program; empty for none
    std::string text; ///< the value as shown, UTF-8; empty for none
    std::string wholeText; ///< the same value in whole watts without unit, for where room is short

    friend bool operator==(const ReadingPiece&, const ReadingPiece&) = default;
};

} // namespace amperly
