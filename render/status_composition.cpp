#include "platform/preference_store.h"
#include "prefs/pref.h"
#include "render/status_image.h"
#include "render/status_renderer.h"
#include "render/system_symbols.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

namespace amperly {
namespace {

using TextOperation = std::string (*)(const PowerSample& sample, int decimals, bool unit);

constexpr std::string_view kChargerSymbol = "powerplug.fill";

/// The figures of `sample` as they are shown with one decimal. What is rounded from these to
/// whole watts depends on nothing but what is shown, so equal texts make equal images.
PowerSample inTenths(const PowerSample& sample)
{
    const auto tenths = [](double watts) { return std::nearbyint(watts * 10.0) / 10.0; };
    PowerSample rounded = sample;
    rounded.systemLoad = tenths(sample.systemLoad);
    rounded.adapterIn = tenths(sample.adapterIn);
    rounded.battery = tenths(sample.battery);
    return rounded;
}

/// Writes the pieces that the styles ask for.
class PieceWriter {
public:
    PieceWriter(StatusImage& image, const PowerSample& sample, int decimals, bool unit)
        : m_image(image)
        , m_sample(sample)
        , m_rounded(decimals > 0 ? inTenths(sample) : sample)
        , m_decimals(decimals)
        , m_unit(unit)
    {
    }

    void add(ReadingStyle style, std::string_view symbol, TextOperation text) const
    {
        if (style == ReadingStyle::hidden)
            return;
        ReadingPiece piece;
        if (showsIcon(style))
            piece.symbol = symbol;
        if (showsValue(style)) {
            piece.text = text(m_sample, m_decimals, m_unit);
            piece.wholeText = text(m_rounded, 0, false);
        }
        m_image.add(std::move(piece));
    }

private:
    StatusImage& m_image;
    const PowerSample& m_sample;
    PowerSample m_rounded;
    int m_decimals;
    bool m_unit;
};

} // namespace

StatusImage StatusRenderer::image(const std::optional<PowerSample>& sample, const PreferenceStore& store)
{
    const int decimals = static_cast<int>(std::clamp<std::int64_t>(store.integer(Pref::decimals), 0, 1));
    const bool stacked = store.boolean(Pref::stacked);
    const bool unit = store.boolean(stacked ? Pref::showUnitStacked : Pref::showUnit);
    const std::optional<std::string> macIcon = store.text(Pref::macIcon);
    const std::string_view macSymbol
        = symbolName(macIcon ? std::string_view{*macIcon} : Pref::macIcons.front().symbol);

    StatusImage image({
        .arrangement = stacked ? StatusImage::Arrangement::Stacked : StatusImage::Arrangement::Line,
        .large = store.boolean(Pref::largeText),
        .compact = store.boolean(Pref::compact),
    });
    if (!sample) {
        image.add({.symbol = macSymbol, .text = std::string{noValue}, .wholeText = std::string{noValue}});
        return image;
    }

    const PieceWriter writer(image, *sample, decimals, unit);
    writer.add(Pref::style(Pref::macStyle, store), macSymbol, &StatusRenderer::systemLoadText);
    if (sample->externalConnected)
        writer.add(Pref::style(Pref::chargerStyle, store), kChargerSymbol, &StatusRenderer::adapterInText);
    const bool idle = sample->batteryKnown && std::abs(sample->battery) < idleWatts;
    if (!(idle && store.boolean(Pref::hideIdleBattery)))
        writer.add(
            Pref::style(Pref::batteryStyle, store), batterySymbol(*sample), &StatusRenderer::batteryText);
    if (image.readingCount() == 0)
        image.add({.symbol = macSymbol, .text = {}, .wholeText = {}});
    return image;
}

} // namespace amperly
