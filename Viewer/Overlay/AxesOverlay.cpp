#include "Viewer/Overlay/AxesOverlay.h"

namespace sgview {

namespace {

constexpr double relativeLength = 0.3; // of the model's diagonal

struct Axis {
    char const* name;
    Vector3 direction;
    Color onLight;
    Color onDark;
    std::uint16_t stipple;
};

std::array<Axis, 3> const axes{{
    {"x", {1.0, 0.0, 0.0}, {0.75F, 0.10F, 0.08F, 1.0F}, {1.0F, 0.45F, 0.40F, 1.0F}, 0},
    {"y", {0.0, 1.0, 0.0}, {0.05F, 0.45F, 0.10F, 1.0F}, {0.45F, 0.90F, 0.45F, 1.0F}, 0x0FFF},
    {"z", {0.0, 0.0, 1.0}, {0.10F, 0.20F, 0.75F, 1.0F}, {0.55F, 0.70F, 1.0F, 1.0F}, 0x3333},
}};

Vector3 originFor(OverlayStyle const& style)
{
    if (style.model.empty())
        return {};
    Vector3 const centre = (style.model.low + style.model.high) * 0.5;
    return length(centre) <= 2.0 * style.size() ? Vector3() : style.model.low;
}

} // namespace

AxesOverlay::AxesOverlay(ModelScene& scene, OverlayStyle const& style) : top_(scene.cameraNode())
{
    // Before the skeleton, which lies in the nearest hundredth of the depth buffer.
    top_.node()->lower = -0.97;
    top_.node()->upper = -0.96;
    Vector3 const origin = originFor(style);
    for (std::size_t i = 0; i < axes.size(); ++i) {
        Axis const& axis = axes[i];
        Vector3 const tip = origin + axis.direction * (style.size() * relativeLength);
        drawCurve(top_.node(), shareCurve({origin, tip}),
                  {style.suited(axis.onLight, axis.onDark), 2.0 * style.pixelsPerPoint, axis.stipple});
        labels_[i] = {tip, origin, axis.name};
    }
}

} // namespace sgview
