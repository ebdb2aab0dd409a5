#include "platform/linux/files/ini_text.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

using namespace std::string_literals;

TEST(IniTextTest, OrdinaryTextsStandAsTheyAre)
{
    for (const std::string& text :
        {"iconAndValue"s, "2.0"s, ""s, "two words"s, "a=b"s, "[x]"s, "# no comment"s, "Grüße ☕"s})
        EXPECT_EQ(encodeIniValue(text), text);
}

TEST(IniTextTest, WhatWouldBeLostStandsInQuotes)
{
    EXPECT_EQ(encodeIniValue(" panel"), R"(" panel")");
    EXPECT_EQ(encodeIniValue("panel "), R"("panel ")");
    EXPECT_EQ(encodeIniValue("two\nlines\r"), R"("two\nlines\r")");
    EXPECT_EQ(encodeIniValue("tab\tstop"), R"("tab\tstop")");
    EXPECT_EQ(encodeIniValue(R"(say "hi")"), R"("say \"hi\"")");
    EXPECT_EQ(encodeIniValue(R"(C:\x)"), R"("C:\\x")");
    EXPECT_EQ(encodeIniValue("\0\x1b\x7f"s), R"("\x00\x1b\x7f")");
    EXPECT_EQ(encodeIniValue("caf\xE9!"), R"("caf\xe9!")");
}

TEST(IniTextTest, KeysThatLookLikeSomethingElseStandInQuotes)
{
    EXPECT_EQ(encodeIniKey("macStyle"), "macStyle");
    EXPECT_EQ(encodeIniKey(""), R"("")");
    EXPECT_EQ(encodeIniKey("a=b"), R"("a=b")");
    EXPECT_EQ(encodeIniKey("[General]"), R"("[General]")");
    EXPECT_EQ(encodeIniKey("#1"), R"("#1")");
    EXPECT_EQ(encodeIniKey(";1"), R"(";1")");
}

TEST(IniTextTest, EveryByteComesBack)
{
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all += static_cast<char>(byte);
    EXPECT_EQ(decodeIniText(encodeIniValue(all)), all);
    EXPECT_EQ(decodeIniText(encodeIniKey(all)), all);
    for (const char byte : all)
        EXPECT_EQ(decodeIniText(encodeIniValue(std::string(2, byte))), std::string(2, byte));
}

TEST(IniTextTest, IncompleteQuotesStandForThemselves)
{
    for (const std::string& typed : {R"("panel)"s, R"(")"s, R"("a\")"s, R"("a" b)"s, R"(C:\new)"s})
        EXPECT_EQ(decodeIniText(typed), typed);
}

TEST(IniTextTest, UnknownEscapesStandForTheirLetter)
{
    EXPECT_EQ(decodeIniText(R"("\q\x\x4\xzz\x4a")"), "qxx4xzzJ");
}

TEST(IniTextTest, OnlyWellFormedTextIsPlain)
{
    EXPECT_TRUE(isPlainText("a\tb ü € 😀"));
    EXPECT_TRUE(isPlainText("\xEF\xBF\xBF\xF4\x8F\xBF\xBF\xED\x9F\xBF"));
    EXPECT_FALSE(isPlainText("\0"s));
    EXPECT_FALSE(isPlainText("\x7f"));
    EXPECT_FALSE(isPlainText("\x80")) << "continuation without a start";
    EXPECT_FALSE(isPlainText("\xC3")) << "cut short";
    EXPECT_FALSE(isPlainText("\xC0\xAF")) << "overlong";
    EXPECT_FALSE(isPlainText("\xE0\x80\x80")) << "overlong";
    EXPECT_FALSE(isPlainText("\xF0\x80\x80\x80")) << "overlong";
    EXPECT_FALSE(isPlainText("\xED\xA0\x80")) << "surrogate";
    EXPECT_FALSE(isPlainText("\xF4\x90\x80\x80")) << "beyond the last character";
    EXPECT_FALSE(isPlainText("\xE2\x82x"));
}

} // namespace
} // namespace amperly
