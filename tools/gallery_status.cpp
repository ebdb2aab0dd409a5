#include "tools/gallery_status.h"

#include "render/decimal_formatter.h"
#include "render/status_art.h"
#include "render/status_image.h"
#include "tools/gallery_sheet.h"

#include <array>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace amperly {
namespace {

using Arrangement = StatusImage::Arrangement;

constexpr std::array kScales{1.0, 1.25, 1.5, 2.0, 3.0};
constexpr std::array<std::string_view, kScales.size()> kScaleNames{"1x", "1.25x", "1.5x", "2x", "3x"};

constexpr std::string_view kLaptop = "laptopcomputer";
constexpr std::string_view kPlug = "powerplug.fill";
constexpr std::string_view kCharging = "battery.100percent.bolt";
constexpr std::string_view kBattery = "battery.75percent";

ReadingPiece piece(std::string_view symbol, std::string text, std::string wholeText = {})
{
    return {.symbol = symbol, .text = std::move(text), .wholeText = std::move(wholeText)};
}

StatusImage image(const StatusImage::Setting& setting, std::initializer_list<ReadingPiece> pieces)
{
    StatusImage made(setting);
    for (const ReadingPiece& each : pieces)
        made.add(each);
    return made;
}

StatusImage charging(const StatusImage::Setting& setting, std::string_view unit = {})
{
    const std::string suffix{unit};
    return image(setting,
        {piece(kLaptop, "14.2" + suffix, "14"), piece(kPlug, "30.1" + suffix, "30"),
            piece(kCharging, "+15.9" + suffix, "+16")});
}

StatusImage draining(const StatusImage::Setting& setting, std::string_view unit = {})
{
    const std::string suffix{unit};
    return image(
        setting, {piece(kLaptop, "8.6" + suffix, "9"), piece(kBattery, "\u22128.6" + suffix, "\u22129")});
}

/// The charging image with its numbers as another locale writes them.
StatusImage localised(const StatusImage::Setting& setting, const std::string& locale)
{
    const DecimalFormatter tenths(locale, 1);
    const DecimalFormatter wholes(locale, 0);
    return image(setting,
        {piece(kLaptop, tenths.text(1234.5) + " W", wholes.text(1234.5)),
            piece(kPlug, tenths.text(30.1) + " W", wholes.text(30.1)),
            piece(kBattery, "\u2212" + tenths.text(67.8) + " W", "\u2212" + wholes.text(67.8))});
}

struct Sample {
    std::string_view caption;
    StatusImage image;
};

std::vector<Sample> layouts()
{
    const StatusImage::Setting stacked{.arrangement = Arrangement::Stacked};
    const StatusImage::Setting line{.arrangement = Arrangement::Line};
    const StatusImage::Setting stackedLarge{.arrangement = Arrangement::Stacked, .large = true};
    const StatusImage::Setting lineLarge{.arrangement = Arrangement::Line, .large = true};
    const StatusImage::Setting stackedCompact{.arrangement = Arrangement::Stacked, .compact = true};
    const StatusImage::Setting lineCompact{.arrangement = Arrangement::Line, .compact = true};
    return {
        {"stacked", charging(stacked)},
        {"stacked, on battery", draining(stacked)},
        {"stacked, unit", charging(stacked, " W")},
        {"stacked, compact", charging(stackedCompact)},
        {"stacked, large", charging(stackedLarge)},
        {"line", charging(line, " W")},
        {"line, no unit", charging(line)},
        {"line, on battery", draining(line, " W")},
        {"line, compact", charging(lineCompact, " W")},
        {"line, large", charging(lineLarge, " W")},
        {"values only", image(line, {piece({}, "14.2 W"), piece({}, "30.1 W"), piece({}, "+15.9 W")})},
        {"icons only", image(line, {piece(kLaptop, ""), piece(kPlug, ""), piece(kBattery, "")})},
        {"icons only, stacked", image(stacked, {piece(kLaptop, ""), piece(kPlug, ""), piece(kBattery, "")})},
        {"values only, stacked", image(stacked, {piece({}, "14.2"), piece({}, "30.1")})},
        {"mixed, stacked", image(stacked, {piece(kLaptop, "14.2"), piece({}, "30.1"), piece(kBattery, "")})},
        {"no sample", image(line, {piece(kLaptop, "\u2013")})},
        {"no sample, stacked", image(stacked, {piece(kLaptop, "\u2013")})},
        {"unknown figures",
            image(stacked, {piece(kLaptop, "\u2013"), piece(kPlug, "\u2013"), piece(kCharging, "+15.9")})},
        {"all hidden", image(line, {piece(kLaptop, "")})},
        {"chip", image(line, {piece("cpu", "14.2 W")})},
        {"gauge", image(line, {piece("gauge.with.dots.needle.50percent", "14.2 W")})},
        {"bolt", image(line, {piece("bolt.fill", "14.2 W")})},
        {"plug", image(line, {piece(kPlug, "14.2 W")})},
        {"German", localised(line, "de")},
        {"German, stacked", localised(stacked, "de")},
        {"Swiss", localised(line, "de_CH")},
        {"French", localised(line, "fr")},
        {"Arabic", localised(line, "ar_EG")},
        {"Arabic, stacked", localised(stacked, "ar_EG")},
        {"Persian", localised(stacked, "fa")},
    };
}

bool writeLayouts(const QString& folder, StatusArt& art)
{
    GallerySheet sheet(1000, art.text);
    CoverageMask mask;
    for (std::size_t index = 0; index < kScales.size(); ++index) {
        sheet.heading(std::string{kScaleNames[index]} + ", light and dark panel");
        for (const PanelColours& colours : {kLightPanel, kDarkPanel}) {
            for (const Sample& sample : layouts()) {
                sample.image.draw(mask, kScales[index]);
                sheet.strip(mask, colours, sample.caption);
            }
            sheet.newRow();
        }
    }
    return sheet.save(folder + QLatin1String("/status-layouts.png"));
}

/// Pixels large enough to count.
bool writePixels(const QString& folder, StatusArt& art)
{
    constexpr int kZoom = 5;
    GallerySheet sheet(1500, art.text);
    CoverageMask mask;
    for (std::size_t index = 0; index < kScales.size(); ++index) {
        sheet.heading(kScaleNames[index]);
        for (const bool large : {false, true}) {
            for (const Arrangement arrangement : {Arrangement::Stacked, Arrangement::Line}) {
                const StatusImage::Setting setting{.arrangement = arrangement, .large = large};
                charging(setting, arrangement == Arrangement::Line ? " W" : "").draw(mask, kScales[index]);
                sheet.strip(mask, kLightPanel, large ? "large" : "regular", kScales[index] < 2.0 ? kZoom : 2);
            }
        }
    }
    return sheet.save(folder + QLatin1String("/status-pixels.png"));
}

bool writeTiles(const QString& folder, StatusArt& art)
{
    const StatusImage::Setting setting{.arrangement = Arrangement::Stacked};
    const std::array samples{
        image(setting,
            {piece(kLaptop, "8.6 W", "9"), piece(kPlug, "67.2 W", "67"),
                piece(kBattery, "\u22128.6", "\u22129")}),
        image(setting,
            {piece(kLaptop, "14.2", "14"), piece(kPlug, "100.1", "100"), piece(kCharging, "+15.9", "+16")}),
        image(setting,
            {piece(kLaptop, "1,234.5", "1,234"), piece(kPlug, "\u2013", "\u2013"),
                piece(kBattery, "\u2212128.4", "\u2212128")}),
        image(setting,
            {piece({}, "14.2 W", "14"), piece({}, "100.1", "100"), piece({}, "\u221215.9", "\u221216")}),
        image(setting, {piece(kLaptop, ""), piece(kPlug, ""), piece(kBattery, "")}),
        image(setting,
            {piece("cpu", ""), piece("bolt.fill", ""), piece("gauge.with.dots.needle.50percent", "")}),
    };
    GallerySheet sheet(1400, art.text);
    CoverageMask mask;
    for (const int pixels : {16, 22, 24, 32, 44, 48, 64}) {
        for (const int zoom : {1, pixels < 40 ? 5 : 2}) {
            sheet.heading(std::to_string(pixels) + " pixels");
            for (const PanelColours& colours : {kLightPanel, kDarkPanel}) {
                for (const StatusImage& sample : samples) {
                    for (int reading = 0; reading < sample.readingCount(); ++reading) {
                        sample.drawTile(mask, reading, pixels);
                        sheet.strip(mask, colours, {}, zoom);
                    }
                }
                sheet.newRow();
                if (zoom > 1)
                    break;
            }
        }
    }
    return sheet.save(folder + QLatin1String("/status-tiles.png"));
}

} // namespace

bool writeStatusGallery(const QString& folder, StatusArt& art)
{
    const Injected<StatusArt> inForce(art);
    return writeLayouts(folder, art) && writePixels(folder, art) && writeTiles(folder, art);
}

} // namespace amperly
