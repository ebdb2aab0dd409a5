// Failures show figures instead of bytes.
#pragma once

#include "platform/power_sample.h"

#include <ostream>

namespace amperly {

inline void PrintTo(const PowerSample& sample, std::ostream* out)
{
    const auto figure = [&](const char* name, double watts, bool known) {
        *out << name << ' ';
        if (known)
            *out << watts << " W, ";
        else
            *out << "unknown, ";
    };
    figure("load", sample.systemLoad, sample.systemLoadKnown);
    figure("adapter", sample.adapterIn, sample.adapterInKnown);
    figure("battery", sample.battery, sample.batteryKnown);
    if (sample.adapterRating)
        *out << "rated " << *sample.adapterRating << " W, ";
    if (sample.batteryPercent)
        *out << *sample.batteryPercent << " %, ";
    *out << (sample.externalConnected ? "plugged in"
            : sample.isUnplugged()    ? "on battery"
                                      : "source unknown");
}

} // namespace amperly
