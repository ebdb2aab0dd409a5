#include "render/system_symbols.h"

#include "tests/platform/macos/fakes/fake_desktop_test.h"

namespace amperly {

// As far as the system's symbols ask for it, without the drawings.
const GlyphForm& glyphNamed(std::string_view name)
{
    for (const GlyphForm& form : kGlyphForms) {
        if (form.name == name)
            return form;
    }
    return kGlyphForms[1];
}

namespace {

// The fake's symbols fill boxes twice as wide as they are high; a medium one is a point wider.
class SystemSymbolsTest : public FakeDesktopTest {
protected:
    static constexpr GlyphStyle kRegular{.pointSize = 13.0, .weight = FontWeight::Regular};
    static constexpr GlyphStyle kMedium{.pointSize = 9.5, .weight = FontWeight::Medium};
};

TEST_F(SystemSymbolsTest, TheBoxIsTheSystems)
{
    EXPECT_EQ(systemSymbolSize("laptopcomputer", kRegular), (GlyphSize{26.0, 13.0}));
    EXPECT_EQ(systemSymbolSize("laptopcomputer", kMedium), (GlyphSize{20.0, 9.5}));
}

TEST_F(SystemSymbolsTest, ASymbolOnlyTheSystemKnowsIsShown)
{
    EXPECT_EQ(systemSymbolSize("house.fill", kRegular), (GlyphSize{26.0, 13.0}));
}

TEST_F(SystemSymbolsTest, AnyNameIsLookedUpAsItIs)
{
    std::string chosen("house.fill");
    const std::string_view name = symbolName(chosen);
    chosen = "a name of another length, somewhere else in memory";
    EXPECT_EQ(name, "house.fill");
    EXPECT_EQ(symbolName("house.fill").data(), name.data());
    EXPECT_EQ(symbolName("toaster"), "toaster");
    EXPECT_EQ(symbolName(""), "bolt.fill");
}

TEST_F(SystemSymbolsTest, ASymbolOnlyThisProgramKnowsIsLeftToIt)
{
    EXPECT_EQ(systemSymbolSize("powerplug", kRegular), std::nullopt);
    EXPECT_FALSE(drawSystemSymbol("powerplug", kRegular, 2.0));
}

TEST_F(SystemSymbolsTest, WhatNobodyKnowsIsTheFallback)
{
    EXPECT_EQ(systemSymbolSize("toaster", kRegular), systemSymbolSize("bolt.fill", kRegular));
}

TEST_F(SystemSymbolsTest, ADrawingFillsItsBoxAtTheScaleAskedFor)
{
    const auto drawing = drawSystemSymbol("laptopcomputer", kMedium, 2.0);
    ASSERT_TRUE(drawing);
    EXPECT_EQ(drawing->width, 40.0);
    EXPECT_EQ(drawing->height, 19.0);
    EXPECT_EQ(drawing->mask.width, 40);
    EXPECT_EQ(drawing->mask.height, 19);
    EXPECT_THAT(drawing->mask.coverage, testing::Each(255));
}

TEST_F(SystemSymbolsTest, ABoxBetweenPixelsStandsAtTheUpperLeft)
{
    const auto drawing = drawSystemSymbol("laptopcomputer", kMedium, 1.0);
    ASSERT_TRUE(drawing);
    EXPECT_EQ(drawing->height, 9.5);
    EXPECT_EQ(drawing->mask.height, 10);
    EXPECT_EQ(drawing->mask.at(0, 0), 255);
}

TEST_F(SystemSymbolsTest, ASymbolIsMadeOncePerStyle)
{
    constexpr GlyphStyle kUnusual{.pointSize = 17.0, .weight = FontWeight::Regular};
    static_cast<void>(systemSymbolSize("laptopcomputer", kUnusual));
    static_cast<void>(systemSymbolSize("laptopcomputer", kUnusual));
    static_cast<void>(drawSystemSymbol("laptopcomputer", kUnusual, 1.0));
    EXPECT_EQ(stage.system.symbolsMade, 1);
}

} // namespace
} // namespace amperly
