#include "Viewer/Import/PictureScaler.h"

#include <algorithm>
#include <cmath>

namespace sgview {

namespace {

constexpr std::size_t channels = 4;

double mitchell(double x)
{
    x = std::abs(x);
    if (x < 1.0)
        return (7.0 * x * x * x - 12.0 * x * x + 16.0 / 3.0) / 6.0;
    if (x < 2.0)
        return (-7.0 / 3.0 * x * x * x + 12.0 * x * x - 20.0 * x + 32.0 / 3.0) / 6.0;
    return 0.0;
}

/// What one target position takes from the source: weights of neighbouring positions from `first` on.
struct Taps {
    std::ptrdiff_t first = 0;
    std::vector<float> weights;
};

std::vector<Taps> tapsFor(std::size_t from, std::size_t to)
{
    double const ratio = static_cast<double>(from) / static_cast<double>(to);
    double const stretch = std::max(1.0, ratio);
    std::vector<Taps> all(to);
    for (std::size_t i = 0; i < to; ++i) {
        double const centre = (static_cast<double>(i) + 0.5) * ratio - 0.5;
        auto const first = static_cast<std::ptrdiff_t>(std::ceil(centre - 2.0 * stretch));
        auto const last = static_cast<std::ptrdiff_t>(std::floor(centre + 2.0 * stretch));
        double sum = 0.0;
        std::vector<double> weights;
        for (std::ptrdiff_t at = first; at <= last; ++at) {
            weights.push_back(mitchell((static_cast<double>(at) - centre) / stretch));
            sum += weights.back();
        }
        all[i].first = first;
        for (double const weight : weights)
            all[i].weights.push_back(static_cast<float>(weight / sum));
    }
    return all;
}

/// Colours multiplied by alpha, which is 0 to 1. Rows are scaled straight from the bytes, so that a large
/// picture is never held as floats in full.
std::vector<float> withRowsScaled(Pixels const& pixels, std::size_t width)
{
    auto const from = static_cast<std::size_t>(pixels.width);
    auto const height = static_cast<std::size_t>(pixels.height);
    std::vector<Taps> const taps = tapsFor(from, width);
    auto const last = static_cast<std::ptrdiff_t>(from) - 1;
    std::vector<float> target(height * width * channels);
    for (std::size_t y = 0; y < height; ++y)
        for (std::size_t x = 0; x < width; ++x) {
            float* const out = target.data() + (y * width + x) * channels;
            std::ptrdiff_t position = taps[x].first;
            for (float const weight : taps[x].weights) {
                auto const inside = static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(position++, 0, last));
                std::uint8_t const* const in = pixels.rgba.data() + (y * from + inside) * channels;
                float const share = weight * static_cast<float>(in[3]) / 255.0F;
                for (std::size_t c = 0; c < 3; ++c)
                    out[c] += share * static_cast<float>(in[c]);
                out[3] += share;
            }
        }
    return target;
}

std::vector<float> withColumnsScaled(std::vector<float> const& source, std::size_t width, std::size_t from,
                                     std::size_t height)
{
    std::vector<Taps> const taps = tapsFor(from, height);
    auto const last = static_cast<std::ptrdiff_t>(from) - 1;
    std::size_t const row = width * channels;
    std::vector<float> target(height * row);
    for (std::size_t y = 0; y < height; ++y) {
        std::ptrdiff_t position = taps[y].first;
        for (float const weight : taps[y].weights) {
            auto const inside = static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(position++, 0, last));
            for (std::size_t i = 0; i < row; ++i)
                target[y * row + i] += weight * source[inside * row + i];
        }
    }
    return target;
}

} // namespace

Pixels resampled(Pixels const& pixels, std::int32_t width, std::int32_t height)
{
    std::vector<float> const values = withColumnsScaled(
        withRowsScaled(pixels, static_cast<std::size_t>(width)), static_cast<std::size_t>(width),
        static_cast<std::size_t>(pixels.height), static_cast<std::size_t>(height));

    Pixels result{width, height, std::vector<std::uint8_t>(values.size())};
    auto const byte = [](float value) {
        return static_cast<std::uint8_t>(std::lround(std::clamp(value, 0.0F, 255.0F)));
    };
    for (std::size_t i = 0; i < values.size(); i += channels) {
        float const alpha = std::clamp(values[i + 3], 0.0F, 1.0F);
        for (std::size_t c = 0; c < 3; ++c)
            result.rgba[i + c] = alpha > 0.0F ? byte(values[i + c] / alpha) : std::uint8_t{0};
        result.rgba[i + 3] = byte(alpha * 255.0F);
    }
    return result;
}

} // namespace sgview
