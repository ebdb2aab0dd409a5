#include "platform/linux/text/linux_ui_font.h"

#include "tests/support/temporary_folder.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>

namespace amperly {
namespace {

namespace fs = std::filesystem;

/// Fontconfig with a configuration of its own, so that the machine's other fonts don't matter.
class LinuxUiFontTest : public testing::Test {
protected:
    void SetUp() override { configure("/usr/share/fonts/truetype/dejavu"); }

    void TearDown() override { unsetenv("FONTCONFIG_FILE"); }

    void configure(const std::string& fontFolder) const
    {
        m_folder.write("fonts.conf",
            "<?xml version=\"1.0\"?><!DOCTYPE fontconfig SYSTEM \"fonts.dtd\"><fontconfig><dir>" + fontFolder
                + "</dir><cachedir>" + m_folder / "cache"
                + "</cachedir><alias><family>Sans</family><prefer><family>DejaVu "
                  "Sans</family></prefer></alias></fontconfig>");
        setenv("FONTCONFIG_FILE", (m_folder / "fonts.conf").c_str(), 1);
    }

    [[nodiscard]] static std::string nameOf(const std::optional<FontFace>& face)
    {
        return face ? fs::path(face->path).filename().string() : "none";
    }

private:
    TemporaryFolder m_folder;
};

TEST_F(LinuxUiFontTest, AFontIsFoundByItsFamily)
{
    EXPECT_EQ(
        nameOf(LinuxUiFont("DejaVu Serif").face(FontWeight::Regular, U"0123456789")), "DejaVuSerif.ttf");
    EXPECT_EQ(nameOf(LinuxUiFont("Sans").face(FontWeight::Regular, U"0123456789")), "DejaVuSans.ttf");
}

TEST_F(LinuxUiFontTest, AnUnknownFamilyGivesWhatTheSystemWouldShow)
{
    EXPECT_NE(nameOf(LinuxUiFont("No Such Font").face(FontWeight::Regular, U"0123456789")), "none");
}

TEST_F(LinuxUiFontTest, AFontThatLacksCharactersGivesWayToOneThatHasThem)
{
    // DejaVu Sans Mono has no Hebrew, DejaVu Sans has.
    const std::u32string_view hebrew = U"\u05d0\u05d1";
    EXPECT_EQ(nameOf(LinuxUiFont("DejaVu Sans Mono").face(FontWeight::Regular, U"12")), "DejaVuSansMono.ttf");
    EXPECT_NE(
        nameOf(LinuxUiFont("DejaVu Sans Mono").face(FontWeight::Regular, hebrew)), "DejaVuSansMono.ttf");
    EXPECT_NE(nameOf(LinuxUiFont("DejaVu Sans Mono").face(FontWeight::Regular, hebrew)), "none");
}

TEST_F(LinuxUiFontTest, WithoutAnyFontsThereIsNone)
{
    configure("/nowhere");
    EXPECT_EQ(LinuxUiFont("Sans").face(FontWeight::Regular, U"0"), std::nullopt);
}

} // namespace
} // namespace amperly
