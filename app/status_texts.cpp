#include "app/status_texts.h"

#include "render/status_renderer.h"

#include <cmath>
#include <utility>

namespace amperly {

StatusTexts::Shown StatusTexts::shownOf(const PowerSample& sample)
{
    Shown shown;
    shown.load = StatusRenderer::systemLoadText(sample, 1, true);
    shown.adapter = StatusRenderer::adapterInText(sample, 1, true);
    shown.battery = StatusRenderer::batteryText(sample, 1, true);
    if (!sample.batteryKnown)
        shown.flow = BatteryFlow::Unknown;
    else if (std::abs(sample.battery) < StatusRenderer::idleWatts)
        shown.flow = BatteryFlow::Idle;
    else
        shown.flow = sample.battery > 0 ? BatteryFlow::Charging : BatteryFlow::Draining;
    shown.percent = sample.batteryPercent;
    shown.external = sample.externalConnected;
    shown.unplugged = sample.isUnplugged();
    return shown;
}

void StatusTexts::follow(const std::optional<PowerSample>& sample)
{
    std::optional<Shown> shown;
    if (sample)
        shown = shownOf(*sample);
    if (m_isCurrent && shown == m_shown)
        return;

    m_isCurrent = true;
    m_toolTip = shown ? "Mac using " + shown->load : std::string();
    m_spokenLabel = StatusRenderer::accessibilityText(sample);
    m_shown = std::move(shown);
}

std::optional<std::string_view> StatusTexts::toolTip() const
{
    if (!m_shown)
        return std::nullopt;
    return m_toolTip;
}

} // namespace amperly
