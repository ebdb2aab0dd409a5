#include "render/code_points.h"

#include <string>

#include <gtest/gtest.h>

namespace amperly {
namespace {

std::u32string decoded(std::string_view text)
{
    std::u32string characters;
    while (!text.empty())
        characters.push_back(takeCodePoint(text));
    return characters;
}

TEST(CodePointsTest, EveryLengthOfCharacterIsRead)
{
    EXPECT_EQ(decoded("7\u00a0\u2212\u0663\U0001d7d9"), U"7\u00a0\u2212\u0663\U0001d7d9");
}

TEST(CodePointsTest, AByteThatStartsNothingIsReplaced)
{
    EXPECT_EQ(decoded("\x80"
                      "1"),
        U"\ufffd1");
    EXPECT_EQ(decoded("\xff"
                      "1"),
        U"\ufffd1");
}

TEST(CodePointsTest, ACharacterCutShortIsReplacedByteForByte)
{
    EXPECT_EQ(decoded("\xe2\x88"), U"\ufffd\ufffd");
    EXPECT_EQ(decoded("\xe2"
                      "1"),
        U"\ufffd1");
}

} // namespace
} // namespace amperly
