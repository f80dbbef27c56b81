#include "Viewer/Platform/PictureDifference.h"

#include <algorithm>
#include <cstdlib>

namespace sgview {

namespace {

constexpr int toleratedSquaredDistance = 100;
constexpr std::size_t components = 4;

} // namespace

PictureDifference measureDifference(Picture const& a, Picture const& b)
{
    PictureDifference difference;
    difference.pixels = a.pixels.size() / components;
    for (std::size_t i = 0; i < a.pixels.size(); i += components) {
        int squared = 0;
        int largest = 0;
        for (std::size_t c = i; c < i + components; ++c) {
            int const distance = std::abs(int{a.pixels[c]} - int{b.pixels[c]});
            squared += distance * distance;
            largest = std::max(largest, distance);
        }
        difference.largest = std::max(difference.largest, largest);
        if (squared > toleratedSquaredDistance)
            ++difference.mismatches;
        else
            difference.largestElsewhere = std::max(difference.largestElsewhere, largest);
    }
    return difference;
}

Picture amplifiedDifference(Picture const& a, Picture const& b, int amplification)
{
    constexpr int brightest = 255;
    Picture difference(a.size);
    for (std::size_t i = 0; i < a.pixels.size(); ++i)
        difference.pixels[i] = static_cast<std::uint8_t>(
            std::min(brightest, amplification * std::abs(int{a.pixels[i]} - int{b.pixels[i]})));
    return difference;
}

} // namespace sgview
