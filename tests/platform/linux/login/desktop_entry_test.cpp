#include "platform/linux/login/desktop_entry.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

TEST(DesktopEntryTest, APlainPathStandsAsItIs)
{
    EXPECT_EQ(execValue("/usr/bin/amperly"), "/usr/bin/amperly");
}

TEST(DesktopEntryTest, ABlankNeedsQuotes)
{
    EXPECT_EQ(execValue("/opt/my programs/amperly"), "\"/opt/my programs/amperly\"");
}

TEST(DesktopEntryTest, WhatQuotesDoNotProtectIsEscapedTwice)
{
    EXPECT_EQ(execValue("/a$b"), R"("/a\\$b")");
    EXPECT_EQ(execValue("/a`b"), R"("/a\\`b")");
    EXPECT_EQ(execValue("/a\"b"), R"("/a\\"b")");
    EXPECT_EQ(execValue("/a\\b"), R"("/a\\\\b")");
}

TEST(DesktopEntryTest, APercentSignIsNotTakenForAFieldCode)
{
    EXPECT_EQ(execValue("/100%u"), "\"/100%%u\"");
}

TEST(DesktopEntryTest, AProgramIsFoundInWhatWasWrittenForIt)
{
    for (const std::string path : {"/usr/bin/amperly", "/opt/my programs/amperly", "/a$b", "/a`b", "/a\"b",
             "/a\\b", "/100%u", "/a'b", "/a=b;c"})
        EXPECT_EQ(execProgram(execValue(path)), path);
}

TEST(DesktopEntryTest, ArgumentsAreNotPartOfTheProgram)
{
    EXPECT_EQ(execProgram("/usr/bin/amperly --quiet %u"), "/usr/bin/amperly");
    EXPECT_EQ(execProgram("\"/opt/my programs/amperly\" --quiet"), "/opt/my programs/amperly");
    EXPECT_EQ(execProgram(""), std::nullopt);
    EXPECT_EQ(execProgram("\"\""), std::nullopt);
}

TEST(DesktopEntryTest, AValueIsReadFromTheEntrysOwnGroupOnly)
{
    constexpr std::string_view kContents
        = "# a comment\n[Other]\nHidden=true\n[Desktop Entry]\n#Hidden=true\n"
          "Name = Amperly \r\nHidden=false\n[Desktop Action x]\nIcon=y\n";
    EXPECT_EQ(desktopEntryValue(kContents, "Hidden"), "false");
    EXPECT_EQ(desktopEntryValue(kContents, "Name"), "Amperly");
    EXPECT_EQ(desktopEntryValue(kContents, "Icon"), std::nullopt);
    EXPECT_EQ(desktopEntryValue("", "Name"), std::nullopt);
    EXPECT_EQ(desktopEntryValue("[Desktop Entry]\nName=", "Name"), "");
}

} // namespace
} // namespace amperly
