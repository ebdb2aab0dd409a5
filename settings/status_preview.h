// The status item as it will look: its picture in white, on a dark blue that stands in for the
// panel. Screen readers hear what the status item itself would tell them.
#pragma once

#include "render/status_image.h"

#include <QWidget>

namespace amperly {

struct PowerSample;

class StatusPreview : public QWidget {
public:
    StatusPreview();

    /// Shows `image`; does nothing where it is shown already. `spokenLabel` is what the status item says.
    void show(const StatusImage& image, const QString& spokenLabel);

    [[nodiscard]] const StatusImage& image() const { return m_image; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    StatusImage m_image;
};

} // namespace amperly
