#include "platform/linux/login/exec_value.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

TEST(ExecValueTest, APlainPathStandsAsItIs)
{
    EXPECT_EQ(execValue("/usr/bin/amperly"), "/usr/bin/amperly");
}

TEST(ExecValueTest, ABlankNeedsQuotes)
{
    EXPECT_EQ(execValue("/opt/my programs/amperly"), "\"/opt/my programs/amperly\"");
}

TEST(ExecValueTest, WhatQuotesDoNotProtectIsEscapedTwice)
{
    EXPECT_EQ(execValue("/a$b"), R"("/a\\$b")");
    EXPECT_EQ(execValue("/a`b"), R"("/a\\`b")");
    EXPECT_EQ(execValue("/a\"b"), R"("/a\\"b")");
    EXPECT_EQ(execValue("/a\\b"), R"("/a\\\\b")");
}

TEST(ExecValueTest, APercentSignIsNotTakenForAFieldCode)
{
    EXPECT_EQ(execValue("/100%u"), "\"/100%%u\"");
}

TEST(ExecValueTest, AProgramIsFoundInWhatWasWrittenForIt)
{
    for (const std::string path : {"/usr/bin/amperly", "/opt/my programs/amperly", "/a$b", "/a`b", "/a\"b",
             "/a\\b", "/100%u", "/a'b", "/a=b;c"})
        EXPECT_EQ(execProgram(execValue(path)), path);
}

TEST(ExecValueTest, ArgumentsAreNotPartOfTheProgram)
{
    EXPECT_EQ(execProgram("/usr/bin/amperly --quiet %u"), "/usr/bin/amperly");
    EXPECT_EQ(execProgram("\"/opt/my programs/amperly\" --quiet"), "/opt/my programs/amperly");
    EXPECT_EQ(execProgram(""), std::nullopt);
    EXPECT_EQ(execProgram("\"\""), std::nullopt);
}

} // namespace
} // namespace amperly
