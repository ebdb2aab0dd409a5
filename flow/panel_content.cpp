#include "flow/panel_content.h"

#include "flow/flow_animator.h"
#include "render/status_renderer.h"

#include <cmath>

namespace amperly {

namespace {

constexpr int kDecimals = 1;

/// A charger that cannot be measured delivers all the same where the battery, which can, need not.
bool chargerIsActive(const PowerSample& sample)
{
    if (!sample.externalConnected)
        return false;
    if (sample.adapterInKnown)
        return sample.adapterIn >= kChargerActiveWatts;
    return sample.batteryKnown && sample.battery > -StatusRenderer::idleWatts;
}

bool batteryIsActive(const PowerSample& sample)
{
    return sample.batteryKnown && std::abs(sample.battery) >= StatusRenderer::idleWatts;
}

} // namespace

Pill pill(const PowerSample& sample)
{
    constexpr double kIdle = StatusRenderer::idleWatts;
    const bool adapterIdle = sample.adapterInKnown && sample.adapterIn < kChargerActiveWatts;

    if (!sample.externalKnown)
        return {"Power source unknown", "powerplug", FlowColor::charger};
    if (!sample.externalConnected)
        return {"On battery", "battery.50percent", FlowColor::draining};
    // A battery that cannot be measured may charge or not.
    if (!sample.batteryKnown)
        return {"Plugged in", "powerplug.fill", FlowColor::charger};
    if (adapterIdle && sample.battery < -kIdle)
        return {"Plugged in · running on battery", "powerplug", FlowColor::draining};
    if (sample.battery > kIdle)
        return {"Charging", "bolt.fill", FlowColor::charging};
    if (sample.battery < -kIdle)
        return {"Using battery too", "exclamationmark.triangle.fill", FlowColor::draining};
    return {"Plugged in · not charging", "powerplug.fill", FlowColor::charger};
}

NodeContent chargerContent(const PowerSample& sample)
{
    NodeContent content{.symbol = "powerplug.fill", .tint = FlowColor::charger};
    content.value = sample.externalConnected ? StatusRenderer::adapterInText(sample, kDecimals)
                                             : std::string(StatusRenderer::noValue);
    if (sample.adapterRating)
        content.title = std::to_string(*sample.adapterRating) + " W charger";
    else
        content.title = sample.isUnplugged() ? "Unplugged" : "Charger";
    content.active = chargerIsActive(sample);
    return content;
}

NodeContent computerContent(const PowerSample& sample, Color accent)
{
    return {.symbol = "laptopcomputer",
        .value = StatusRenderer::systemLoadText(sample, kDecimals),
        .title = "Mac",
        .tint = accent,
        .active = true};
}

NodeContent batteryContent(const PowerSample& sample)
{
    NodeContent content{.symbol = StatusRenderer::batterySymbol(sample)};
    content.active = batteryIsActive(sample);
    content.value = content.active || !sample.batteryKnown ? StatusRenderer::batteryText(sample, kDecimals)
                                                           : std::string("Idle");
    content.title = "Battery";
    if (sample.batteryPercent)
        content.title += ' ' + std::to_string(*sample.batteryPercent) + '%';
    content.tint = sample.battery < 0.0 ? FlowColor::draining : FlowColor::charging;
    return content;
}

std::string chargerSentence(const PowerSample& sample)
{
    if (sample.isUnplugged())
        return "Charger unplugged";
    if (!sample.externalConnected)
        return "Charger: " + std::string(StatusRenderer::noValue);
    std::string sentence = "Charger supplying " + StatusRenderer::adapterInText(sample, kDecimals);
    if (sample.adapterRating)
        sentence += " of " + std::to_string(*sample.adapterRating) + " W";
    return sentence;
}

std::string computerSentence(const PowerSample& sample)
{
    return "Mac using " + StatusRenderer::systemLoadText(sample, kDecimals);
}

std::string batterySentence(const PowerSample& sample)
{
    return StatusRenderer::batteryDescription(sample);
}

} // namespace amperly
