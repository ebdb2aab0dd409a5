// amperly-reading: prints what Amperly can know of this machine's power, a figure a line. For
// scripts, and for people who report how their machine is read.

#include "own_sources.h"

#include <cstdio>
#include <optional>

namespace {

using amperly::PowerSample;

void printWatts(const char* name, double watts, bool isKnown)
{
    if (isKnown)
        std::printf("%s %.1f W\n", name, watts);
    else
        std::printf("%s unknown\n", name);
}

void printWhole(const char* name, std::optional<int> value, const char* unit)
{
    if (value)
        std::printf("%s %d %s\n", name, *value, unit);
    else
        std::printf("%s unknown\n", name);
}

void print(const PowerSample& sample)
{
    printWatts("computer", sample.systemLoad, sample.systemLoadKnown);
    printWatts("adapter", sample.adapterIn, sample.adapterInKnown);
    printWatts("battery", sample.battery, sample.batteryKnown);
    printWhole("adapter rating", sample.adapterRating, "W");
    printWhole("charge", sample.batteryPercent, "%");
    if (sample.externalKnown)
        std::puts(sample.externalConnected ? "external power connected" : "external power not connected");
    else
        std::puts("external power unknown");
}

} // namespace

int main()
{
    amperly::OwnSources own;
    const std::optional<PowerSample> sample = own.power.read();
    if (!sample) {
        std::puts("No readable power source on this machine.");
        return 1;
    }
    print(*sample);
    return 0;
}
