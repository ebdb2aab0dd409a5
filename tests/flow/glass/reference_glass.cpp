#include "tests/flow/glass/reference_glass.h"

#include <QRgba64>

#include <cmath>

namespace amperly::glass {

namespace {

/// Blurs one line of numbers that lie `stride` apart.
void blurLine(
    float* numbers, int count, int stride, const std::vector<double>& weights, std::vector<double>& line)
{
    const int reach = static_cast<int>(weights.size()) - 1;
    line.assign(static_cast<std::size_t>(count + 2 * reach), 0.0);
    bool any = false;
    for (int i = 0; i < count; ++i) {
        line[static_cast<std::size_t>(i + reach)] = static_cast<double>(numbers[i * stride]);
        any = any || numbers[i * stride] != 0.0F;
    }
    if (!any)
        return;
    for (int i = 0; i < count; ++i) {
        const double* const middle = line.data() + i + reach;
        double sum = weights[0] * middle[0];
        for (int distance = 1; distance <= reach; ++distance)
            sum += weights[static_cast<std::size_t>(distance)] * (middle[distance] + middle[-distance]);
        numbers[i * stride] = static_cast<float>(sum);
    }
}

/// The opacities of an image, blurred with a Gaussian of this standard deviation in pixels.
std::vector<float> blurredOpacities(const QImage& image, double sigma)
{
    const int reach = static_cast<int>(std::ceil(4.0 * sigma));
    std::vector<double> weights;
    double sum = 0.0;
    for (int distance = 0; distance <= reach; ++distance) {
        weights.push_back(std::exp(-0.5 * distance * distance / (sigma * sigma)));
        sum += (distance == 0 ? 1.0 : 2.0) * weights.back();
    }
    for (double& weight : weights)
        weight /= sum;

    const int width = image.width();
    const int height = image.height();
    std::vector<float> opacities(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    for (int y = 0; y < height; ++y) {
        const auto* const row = reinterpret_cast<const QRgba64*>(image.constScanLine(y));
        for (int x = 0; x < width; ++x)
            opacities[static_cast<std::size_t>(y * width + x)]
                = static_cast<float>(row[x].alpha()) / 65535.0F;
    }
    std::vector<double> line;
    for (int y = 0; y < height; ++y)
        blurLine(opacities.data() + y * width, width, 1, weights, line);
    for (int x = 0; x < width; ++x)
        blurLine(opacities.data() + x, height, width, weights, line);
    return opacities;
}

QImage trulyBlurred(const QImage& layer, double sigma, const Color& color)
{
    const std::vector<float> opacities = blurredOpacities(layer, sigma);
    QImage result(layer.size(), QImage::Format_RGBA64_Premultiplied);
    const float* opacity = opacities.data();
    for (int y = 0; y < result.height(); ++y) {
        auto* const row = reinterpret_cast<QRgba64*>(result.scanLine(y));
        for (int x = 0; x < result.width(); ++x, ++opacity) {
            const auto channel = [&](double part) {
                return static_cast<quint16>(std::lround(part * static_cast<double>(*opacity) * 65535.0));
            };
            row[x] = QRgba64::fromRgba64(
                channel(color.red), channel(color.green), channel(color.blue), channel(1.0));
        }
    }
    return result;
}

} // namespace

QImage paintReference(const std::vector<LayeredFlow>& flows, int width, int height, double scale)
{
    // 16 bits a channel, so that what is compared with is not rounded a dozen times.
    QImage canvas(static_cast<int>(std::lround(width * scale)), static_cast<int>(std::lround(height * scale)),
        QImage::Format_RGBA64_Premultiplied);
    canvas.fill(Qt::transparent);
    paintLayers(canvas, flows, scale, {trulyBlurred, 4.0});
    return canvas.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

} // namespace amperly::glass
