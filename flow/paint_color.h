// The colours of the flows for the toolkit.
#pragma once

#include "flow/glass/flow_color.h"

#include <QColor>

namespace amperly {

[[nodiscard]] inline QColor paintColor(const Color& color, double opacity = 1.0)
{
    return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
        static_cast<float>(color.blue), static_cast<float>(opacity));
}

} // namespace amperly
