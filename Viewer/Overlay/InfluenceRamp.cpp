#include "Viewer/Overlay/InfluenceRamp.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace sgview {

namespace {

constexpr int pictureWidth = 512;
constexpr double lineWidth = 0.012; // in weight

/// The colour map viridis (S. van der Walt and N. Smith, 2015, public domain), at even distances.
constexpr std::array<Color, 9> stops{{
    {0.267F, 0.005F, 0.329F, 1.0F},
    {0.279F, 0.175F, 0.483F, 1.0F},
    {0.230F, 0.322F, 0.546F, 1.0F},
    {0.173F, 0.449F, 0.558F, 1.0F},
    {0.128F, 0.567F, 0.551F, 1.0F},
    {0.158F, 0.684F, 0.502F, 1.0F},
    {0.369F, 0.789F, 0.383F, 1.0F},
    {0.678F, 0.864F, 0.190F, 1.0F},
    {0.993F, 0.906F, 0.144F, 1.0F},
}};

bool isOnLine(double weight)
{
    double const quarters = weight * 4.0;
    double const nearest = std::round(quarters);
    return nearest >= 1.0 && nearest <= 3.0 && std::abs(quarters - nearest) < lineWidth * 2.0;
}

} // namespace

Color influenceColor(double weight)
{
    double const place = std::clamp(weight, 0.0, 1.0) * static_cast<double>(stops.size() - 1);
    auto const index = std::min(static_cast<std::size_t>(place), stops.size() - 2);
    auto const mix = [t = static_cast<float>(place - static_cast<double>(index))](float a, float b) {
        return a + (b - a) * t;
    };
    Color const& a = stops[index];
    Color const& b = stops[index + 1];
    return {mix(a.r, b.r), mix(a.g, b.g), mix(a.b, b.b), 1.0F};
}

Color influenceLineColor(double weight)
{
    return weight < 0.4 ? Color{1.0F, 1.0F, 1.0F, 1.0F} : Color{0.0F, 0.0F, 0.0F, 1.0F};
}

smart_ptr<SharedImage> influenceRamp()
{
    auto image = make_smart<Image_base>(pictureWidth, 1, Image_base::RGB);
    for (int column = 0; column < pictureWidth; ++column) {
        double const weight = static_cast<double>(column) / (pictureWidth - 1);
        Color const color = isOnLine(weight) ? influenceLineColor(weight) : influenceColor(weight);
        for (std::size_t i = 0; i < 3; ++i)
            image->edit()[static_cast<std::size_t>(column) * 3 + i] =
                static_cast<unsigned char>(std::lround(255.0F * color.data()[i]));
    }
    return make_smart<SharedImage>(std::move(image));
}

double influenceCoordinate(double weight)
{
    return (0.5 + std::clamp(weight, 0.0, 1.0) * (pictureWidth - 1)) / pictureWidth;
}

} // namespace sgview
