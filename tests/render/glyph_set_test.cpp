#include "render/glyph_set.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QString>
#include <algorithm>
#include <set>
#include <string>

#include <gtest/gtest.h>

namespace amperly {
namespace {

constexpr GlyphStyle kRegular{.pointSize = 13.0, .weight = FontWeight::Regular};
constexpr GlyphStyle kMedium{.pointSize = 9.5, .weight = FontWeight::Medium};
constexpr GlyphStyle kLargeRegular{.pointSize = 14.0, .weight = FontWeight::Regular};
constexpr GlyphStyle kLargeMedium{.pointSize = 10.5, .weight = FontWeight::Medium};

/// The view box that a drawing states, as "width height".
QString statedBox(const QString& folder, std::string_view name)
{
    QFile file(
        folder + QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())) + QLatin1String(".svg"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    static const QRegularExpression box(QLatin1String("viewBox=\"0 0 (\\d+ \\d+)\""));
    return box.match(QString::fromUtf8(file.readAll())).captured(1);
}

int fullPixels(const CoverageMask& mask)
{
    return static_cast<int>(std::count(mask.coverage.begin(), mask.coverage.end(), 255));
}

int inkedPixels(const CoverageMask& mask)
{
    return static_cast<int>(mask.coverage.size())
        - static_cast<int>(std::count(mask.coverage.begin(), mask.coverage.end(), 0));
}

TEST(GlyphFormsTest, EveryFormHasTheBoxesThatItsDrawingsState)
{
    for (const GlyphForm& form : kGlyphForms) {
        EXPECT_EQ(statedBox(QLatin1String(":/amperly/glyphs/"), form.name),
            QString::asprintf("%d %d", form.regularWidth, kRegularBoxHeight))
            << form.name;
        EXPECT_EQ(statedBox(QLatin1String(":/amperly/glyphs/medium/"), form.name),
            QString::asprintf("%d %d", form.mediumWidth, kMediumBoxHeight))
            << form.name;
    }
}

TEST(GlyphFormsTest, FormsThatGrowHaveADrawingForEachLargerSize)
{
    const auto stated = [](int width, int height) {
        return width > 0 ? QString::asprintf("%d %d", width, height) : QString();
    };
    for (const GlyphForm& form : kGlyphForms) {
        EXPECT_EQ(statedBox(QLatin1String(":/amperly/glyphs/large/"), form.name),
            stated(form.largeRegularWidth, kLargeRegularBoxHeight))
            << form.name;
        EXPECT_EQ(statedBox(QLatin1String(":/amperly/glyphs/medium/large/"), form.name),
            stated(form.largeMediumWidth, kLargeMediumBoxHeight))
            << form.name;
    }
}

TEST(GlyphFormsTest, EveryDrawingHasAForm)
{
    const QDir drawings(QLatin1String(":/amperly/glyphs"), QLatin1String("*.svg"));
    EXPECT_EQ(drawings.count(), kGlyphForms.size());
    for (const QString& file : drawings.entryList()) {
        const std::string name = QString(file).remove(QLatin1String(".svg")).toStdString();
        EXPECT_EQ(glyphNamed(name).name, name);
    }
}

TEST(GlyphFormsTest, ANameThatIsNoSymbolsIsTheBolt)
{
    EXPECT_EQ(glyphNamed("toaster").name, "bolt.fill");
    EXPECT_EQ(glyphNamed("").name, "bolt.fill");
    EXPECT_EQ(glyphNamed("Cpu").name, "bolt.fill");
}

TEST(GlyphSizeTest, TheRegularMasterIsAsHighAsItsPointSize)
{
    EXPECT_EQ(glyphSize("laptopcomputer", kRegular), (GlyphSize{20.0, 13.0}));
    EXPECT_EQ(
        glyphSize("battery.50percent", {.pointSize = 14.0, .weight = FontWeight::Regular}).height, 14.0);
}

TEST(GlyphSizeTest, TheMediumMasterHasTwoUnitsToThePointAtItsOwnSize)
{
    EXPECT_EQ(glyphSize("battery.50percent", kMedium), (GlyphSize{18.0, 10.0}));
}

TEST(GlyphSizeTest, ForLargerTextASymbolIsAPointHigher)
{
    EXPECT_EQ(glyphSize("laptopcomputer", kLargeRegular), (GlyphSize{22.0, 14.0}));
    EXPECT_EQ(glyphSize("laptopcomputer", kLargeMedium), (GlyphSize{15.0, 11.0}));
}

TEST(GlyphSizeTest, TheFallbackHasItsOwnWidth)
{
    EXPECT_EQ(glyphSize("toaster", kRegular), glyphSize("bolt.fill", kRegular));
}

TEST(CrispnessTest, SizesNearACrispOneAreDrawnAsThat)
{
    EXPECT_EQ(crispPixelsPerUnit(14.0 / 26.0), 0.5);
    EXPECT_EQ(crispPixelsPerUnit(2.0 * 14.0 / 26.0), 1.0);
    EXPECT_EQ(crispPixelsPerUnit(10.5 / 19.0), 0.5);
    EXPECT_EQ(crispPixelsPerUnit(0.5), 0.5);
}

TEST(CrispnessTest, SizesBetweenTwoCrispOnesStay)
{
    EXPECT_EQ(crispPixelsPerUnit(0.625), 0.625);
    EXPECT_EQ(crispPixelsPerUnit(0.3), 0.3);
}

TEST(GlyphMaskTest, AMaskIsItsBoxInPixels)
{
    GlyphSet glyphs;
    for (const int scale : {1, 2, 3}) {
        const CoverageMask& mask = glyphs.drawing("laptopcomputer", kRegular, scale).mask;
        EXPECT_EQ(mask.width, 20 * scale);
        EXPECT_EQ(mask.height, 13 * scale);
    }
}

TEST(GlyphMaskTest, ForLargerTextAMaskIsItsLargerBoxInPixels)
{
    GlyphSet glyphs;
    for (const int scale : {1, 2, 3}) {
        EXPECT_EQ(glyphs.drawing("battery.75percent", kLargeRegular, scale).mask.width, 24 * scale);
        EXPECT_EQ(glyphs.drawing("battery.75percent", kLargeRegular, scale).mask.height, 14 * scale);
        EXPECT_EQ(glyphs.drawing("battery.75percent", kLargeMedium, scale).mask.height, 11 * scale);
    }
}

TEST(GlyphMaskTest, AStrokeInTheMiddleKeepsASymbolAtItsSmallerSize)
{
    GlyphSet glyphs;
    for (const int scale : {1, 2, 3}) {
        EXPECT_EQ(glyphs.drawing("cpu", kLargeRegular, scale).mask.height, 13 * scale);
        EXPECT_EQ(glyphs.drawing("cpu", kLargeMedium, scale).mask.height, 10 * scale);
    }
}

TEST(GlyphMaskTest, ForLargerTextStrokesFillWholePixelsToo)
{
    GlyphSet glyphs;
    for (const GlyphStyle& style : {kLargeRegular, kLargeMedium}) {
        // Away from corners and its pole a battery has no grey.
        const auto isHard = [](int coverage) { return coverage <= 1 || coverage >= 254; };
        for (const std::string_view name :
            {"battery.0percent", "battery.25percent", "battery.50percent", "battery.75percent"}) {
            const CoverageMask& mask = glyphs.drawing(name, style, 1.0).mask;
            for (int x = 0; x + 2 < mask.width; ++x)
                EXPECT_TRUE(isHard(mask.at(x, mask.height / 2))) << name << ' ' << x;
            for (int y = 0; y < mask.height; ++y)
                EXPECT_TRUE(isHard(mask.at(mask.width / 3, y))) << name << ' ' << y;
        }
    }
}

TEST(GlyphMaskTest, ABoxOfBrokenPixelsIsRoundedUp)
{
    GlyphSet glyphs;
    const CoverageMask& mask = glyphs.drawingPerUnit("bolt.fill", FontWeight::Medium, 0.33).mask;
    EXPECT_EQ(mask.width, 5); // 14 × 0.33 = 4.62
    EXPECT_EQ(mask.height, 7); // 20 × 0.33 = 6.6
}

TEST(GlyphMaskTest, EverySymbolHasInkInBothMasters)
{
    GlyphSet glyphs;
    for (const GlyphForm& form : kGlyphForms) {
        EXPECT_GT(inkedPixels(glyphs.drawing(form.name, kRegular, 1.0).mask), 35) << form.name;
        EXPECT_GT(inkedPixels(glyphs.drawing(form.name, kMedium, 1.0).mask), 25) << form.name;
    }
}

TEST(GlyphMaskTest, EverySymbolLooksDifferent)
{
    GlyphSet glyphs;
    std::set<std::vector<std::uint8_t>> pictures;
    for (const GlyphForm& form : kGlyphForms)
        pictures.insert(glyphs.drawing(form.name, kRegular, 2.0).mask.coverage);
    EXPECT_EQ(pictures.size(), kGlyphForms.size());
}

TEST(GlyphMaskTest, LevelAndUprightStrokesFillWholePixelsAtOnePixelPerPoint)
{
    GlyphSet glyphs;
    // The laptop's base, as wide as its box and without any grey above or below.
    const CoverageMask& mask = glyphs.drawing("laptopcomputer", kMedium, 1.0).mask;
    int fullRow = 0;
    for (int x = 1; x + 1 < mask.width; ++x)
        fullRow += mask.at(x, 8) == 255 ? 1 : 0;
    EXPECT_EQ(fullRow, mask.width - 2);
    EXPECT_EQ(mask.at(mask.width / 2, 7), 0);
    EXPECT_EQ(mask.at(mask.width / 2, 9), 0);
}

TEST(GlyphMaskTest, AtTwicePixelsEdgesAreHardNearlyEverywhere)
{
    GlyphSet glyphs;
    for (const std::string_view name : {"laptopcomputer", "battery.75percent"}) {
        const CoverageMask& mask = glyphs.drawing(name, kRegular, 2.0).mask;
        EXPECT_GT(fullPixels(mask), inkedPixels(mask) * 8 / 10) << name;
    }
}

TEST(GlyphMaskTest, ASymbolIsDrawnOnce)
{
    GlyphSet glyphs;
    const std::uint8_t* first = glyphs.drawing("cpu", kRegular, 1.0).mask.coverage.data();
    EXPECT_EQ(glyphs.drawing("cpu", kRegular, 1.0).mask.coverage.data(), first);
}

TEST(GlyphMaskTest, HoweverManySizesAreAskedForTheLastOneIsRight)
{
    GlyphSet glyphs;
    for (int side = 1; side <= 200; ++side)
        EXPECT_EQ(glyphs.drawingPerUnit("cpu", FontWeight::Regular, side / 26.0).mask.width, side);
}

} // namespace
} // namespace amperly
