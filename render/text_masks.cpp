#include "render/text_masks.h"

#include "render/code_points.h"
#include "render/font_file.h"
#include "render/pixel_grid.h"

#include <QChar>
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numeric>
#include <optional>
#include <string>
#include <utility>

namespace amperly {
namespace {

/// Drawn together as soon as any is needed: opening the font costs more than drawing them.
constexpr std::u32string_view kUsualCharacters = U"0123456789.,+\u2212\u2013W ";

/// The share of a line's height that its digits fill.
constexpr double kDigitShare = 0.65;

/// Widths of spaces, in ems, in a font that has none.
constexpr double kSpaceWidth = 0.28;
constexpr double kNarrowSpaceWidth = 0.2;
constexpr char32_t kNarrowNoBreakSpace = 0x202f;

/// Sizes kept: what the panel shows and what the settings preview shows, at two scales each.
constexpr std::size_t kMostSheets = 8;

constexpr std::uint8_t kNoFont = std::numeric_limits<std::uint8_t>::max();

/// The digit that sizes are measured by: round ones overshoot, slanted ones are pale. It is
/// drawn before all other characters of a sheet.
constexpr char32_t kPlainestDigit = U'0';

/// No stroke is inked more than half as much again.
constexpr std::uint8_t kFaintestFullInk = 170;

std::uint8_t strongest(const CoverageMask& mask)
{
    return mask.coverage.empty() ? std::uint8_t{255}
                                 : *std::max_element(mask.coverage.begin(), mask.coverage.end());
}

bool isDigit(char32_t character)
{
    return QChar::category(character) == QChar::Number_DecimalDigit;
}

/// A character with those it should look alike: a digit with the others of its script.
std::u32string company(char32_t character)
{
    if (kUsualCharacters.find(character) != std::u32string_view::npos)
        return std::u32string{kUsualCharacters};
    if (!isDigit(character))
        return std::u32string(1, character);
    const char32_t zero = character - static_cast<char32_t>(QChar::digitValue(character));
    std::u32string digits(10, zero);
    std::iota(digits.begin(), digits.end(), zero);
    return digits;
}

/// Width of a character that no font needs to have, in ems; nothing for all others.
std::optional<double> blankWidth(char32_t character)
{
    switch (QChar::category(character)) {
    case QChar::Separator_Space:
        return character == kNarrowNoBreakSpace ? kNarrowSpaceWidth : kSpaceWidth;
    case QChar::Other_Format: // marks of writing direction
        return 0.0;
    default:
        return std::nullopt;
    }
}

/// Points that a character takes in text that stands in columns. Rounding must not push it so
/// close to the next one that they touch.
double cellPoints(double advance, double ink, double pointSize)
{
    if (advance <= 0.0)
        return 0.0;
    constexpr double kLeastGap = 1.0;
    const double room = ink > 0.0 ? std::round(ink * pointSize) + kLeastGap : kLeastGap;
    return std::max(room, std::round(advance * pointSize));
}

} // namespace

TextMasks::TextMasks(const UiFont& font) : m_font(font) { }

void TextMasks::clear()
{
    m_weights.clear();
    m_sheets.clear();
}

double TextMasks::width(std::string_view text, const TextMaskStyle& style)
{
    Weight& weight = weightOf(style.weight);
    double points = 0.0;
    while (!text.empty()) {
        const Measure& measured = measureOf(weight, takeCodePoint(text));
        points += cellPoints(measured.advance, measured.ink, style.pointSize);
    }
    return points;
}

double TextMasks::height(const TextMaskStyle& style)
{
    return weightOf(style.weight).digitHeight * style.pointSize / kDigitShare;
}

void TextMasks::draw(
    CoverageMask& target, std::string_view text, const TextMaskStyle& style, const Place& place, double scale)
{
    Sheet& sheet = sheetOf(style, scale);
    const int baseline = nearestPixel(place.middle * scale + sheet.digitRows * 0.5);
    double pen = place.left;
    while (!text.empty()) {
        const Stamp& stamp = stampOf(sheet, takeCodePoint(text));
        if (stamp.width > 0) {
            const int left = nearestPixel(pen * scale + double{stamp.inset}) + stamp.left;
            blitInside(target, {sheet.coverage.data() + stamp.offset, stamp.width, stamp.height}, left,
                baseline - stamp.top);
        }
        pen += double{stamp.cell};
    }
}

TextMasks::Weight& TextMasks::weightOf(FontWeight weight)
{
    const auto known = std::find_if(
        m_weights.begin(), m_weights.end(), [&](const Weight& each) { return each.weight == weight; });
    if (known != m_weights.end())
        return *known;
    Weight& added = m_weights.emplace_back();
    added.weight = weight;
    measure(added, kUsualCharacters);
    return added;
}

const TextMasks::Measure& TextMasks::measureOf(Weight& weight, char32_t character)
{
    const auto find = [&] {
        return std::find_if(weight.measures.begin(), weight.measures.end(),
            [&](const Measure& each) { return each.character == character; });
    };
    if (const auto known = find(); known != weight.measures.end())
        return *known;
    measure(weight, company(character));
    return *find();
}

void TextMasks::measure(Weight& weight, std::u32string_view characters)
{
    const std::optional<FontFace> face = m_font.face(weight.weight, characters);
    const std::optional<FontFile> font = face ? FontFile::open(*face) : std::nullopt;
    std::uint8_t index = kNoFont;
    if (font) {
        const auto place = std::find(weight.fonts.begin(), weight.fonts.end(), *face);
        index = static_cast<std::uint8_t>(place - weight.fonts.begin());
        if (place == weight.fonts.end())
            weight.fonts.push_back(*face);
        if (weight.digitHeight <= 0.0)
            weight.digitHeight = font->rise(kPlainestDigit);
    }

    double widestDigit = 0.0;
    double widestInk = 0.0;
    for (const char32_t character : characters) {
        if (font && isDigit(character)) {
            widestDigit = std::max(widestDigit, font->advance(character));
            widestInk = std::max(widestInk, font->inkWidth(character));
        }
    }
    for (const char32_t character : characters) {
        const std::optional<double> blank = blankWidth(character);
        const bool present = font && font->has(character);
        double advance = blank.value_or(0.0);
        if (present && blank != 0.0)
            advance = isDigit(character) ? widestDigit : font->advance(character);
        double inkWidth = 0.0;
        if (present && !blank)
            inkWidth = isDigit(character) ? widestInk : font->inkWidth(character);
        weight.measures.push_back({.character = character,
            .font = index,
            .inked = present && !blank,
            .advance = advance,
            .ink = inkWidth});
    }
}

TextMasks::Sheet& TextMasks::sheetOf(const TextMaskStyle& style, double scale)
{
    const auto known = std::find_if(m_sheets.begin(), m_sheets.end(),
        [&](const Sheet& each) { return each.style == style && each.scale == scale; });
    if (known != m_sheets.end())
        return *known;
    if (m_sheets.size() == kMostSheets)
        m_sheets.erase(m_sheets.begin());
    Sheet& added = m_sheets.emplace_back();
    added.style = style;
    added.scale = scale;
    static_cast<void>(stampOf(added, kPlainestDigit));
    return added;
}

const TextMasks::Stamp& TextMasks::stampOf(Sheet& sheet, char32_t character)
{
    const auto find = [&] {
        return std::find_if(sheet.stamps.begin(), sheet.stamps.end(),
            [&](const Stamp& each) { return each.character == character; });
    };
    if (const auto known = find(); known != sheet.stamps.end())
        return *known;

    Weight& weight = weightOf(sheet.style.weight);
    const Measure& measured = measureOf(weight, character);
    std::optional<FontFile> font;
    if (measured.inked)
        font = FontFile::open(weight.fonts[measured.font]);
    const std::u32string characters = company(character);
    sheet.stamps.reserve(sheet.stamps.size() + characters.size());
    for (const char32_t each : characters)
        stamp(sheet, weight, each, font ? &*font : nullptr);
    return *find();
}

void TextMasks::stamp(Sheet& sheet, const Weight& weight, char32_t character, FontFile* font)
{
    Stamp& added = sheet.stamps.emplace_back();
    added.character = character;
    const auto measured = std::find_if(weight.measures.begin(), weight.measures.end(),
        [&](const Measure& each) { return each.character == character; });
    const double cell = cellPoints(measured->advance, measured->ink, sheet.style.pointSize);
    added.cell = static_cast<float>(cell);
    if (!font || !measured->inked)
        return;
    const std::optional<FontFile::Drawing> drawing
        = font->draw(character, sheet.style.pointSize * sheet.scale);
    if (!drawing)
        return;

    // What fitting to pixels and whole points changed is shared between both sides.
    added.inset = static_cast<float>((cell * sheet.scale - drawing->advance) * 0.5);
    added.left = static_cast<std::int16_t>(drawing->left);
    added.top = static_cast<std::int16_t>(drawing->top);
    added.width = static_cast<std::int16_t>(drawing->mask.width);
    added.height = static_cast<std::int16_t>(drawing->mask.height);
    added.offset = static_cast<std::uint32_t>(sheet.coverage.size());
    if (character == kPlainestDigit) {
        // At small sizes a font's strokes are thinner than a pixel and would look grey. They are
        // inked as if they filled it, which also stands in for the medium weight few fonts have.
        sheet.fullInk = std::max(kFaintestFullInk, strongest(drawing->mask));
        sheet.digitRows = drawing->top;
    }
    for (const int coverage : drawing->mask.coverage)
        sheet.coverage.push_back(static_cast<std::uint8_t>(std::min(255, coverage * 255 / sheet.fullInk)));
}

} // namespace amperly
