// What stands in the panel while there is no reading.
#pragma once

#include "flow/spoken_text.h"

namespace amperly {

class NoData : public SpokenText {
public:
    explicit NoData(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace amperly
