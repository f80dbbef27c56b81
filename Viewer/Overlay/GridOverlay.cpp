#include "Viewer/Overlay/GridOverlay.h"

#include <cmath>

namespace sgview {

namespace {

constexpr double squaresPerSize = 12.0;
constexpr int thickLineEvery = 5;

/// Two axes that span the ground.
struct Ground {
    explicit Ground(OverlayStyle const& style)
        : up(style.up),
          across(style.up.x != 0.0 ? Vector3(0.0, 1.0, 0.0) : Vector3(1.0, 0.0, 0.0)),
          along(cross(up, across)),
          height(style.model.empty() ? 0.0 : dot(up, style.model.low)),
          centre(style.model.empty() ? Vector3() : (style.model.low + style.model.high) * 0.5)
    {
    }

    [[nodiscard]] Vector3 point(double a, double b) const { return across * a + along * b + up * height; }

    Vector3 up;
    Vector3 across;
    Vector3 along;
    double height;
    Vector3 centre;
};

/// Lines side by side, the end of each joined to the next along the border, where a line of the other
/// direction lies anyway.
template <typename Place>
smart_ptr<SharedGeometry> parallels(double first, double last, double step, double from, double to,
                                    Place place)
{
    std::vector<Vector3> points;
    auto const count = static_cast<int>(std::lround((last - first) / step));
    for (int i = 0; i <= count; ++i) {
        double const at = first + i * step;
        points.push_back(place(at, i % 2 == 0 ? from : to));
        points.push_back(place(at, i % 2 == 0 ? to : from));
    }
    return shareCurve(std::move(points));
}

} // namespace

double roundLength(double length)
{
    double const power = std::pow(10.0, std::floor(std::log10(length)));
    for (double const factor : {1.0, 2.0, 5.0})
        if (length <= factor * power * (1.0 + 1e-9))
            return factor * power;
    return 10.0 * power;
}

GridOverlay::GridOverlay(ModelScene& scene, OverlayStyle const& style)
    : side_(roundLength(style.size() / squaresPerSize)), height_(0.0), top_(scene.cameraNode())
{
    Ground const ground(style);
    height_ = ground.height;
    double const thick = side_ * thickLineEvery;
    auto const down = [thick](double value) { return thick * std::floor(value / thick); };
    auto const above = [thick](double value) { return thick * std::ceil(value / thick); };
    double const a = dot(ground.centre, ground.across);
    double const b = dot(ground.centre, ground.along);
    double const reach = style.size();
    double const low[] = {down(a - reach), down(b - reach)};
    double const high[] = {above(a + reach), above(b + reach)};
    bounds_.add(ground.point(low[0], low[1]));
    bounds_.add(ground.point(high[0], high[1]));

    struct Weight {
        double step;
        Pen pen;
    };
    for (Weight const& weight : {Weight{thick, {style.shade(0.45), 1.5 * style.pixelsPerPoint}},
                                 Weight{side_, {style.shade(0.22), style.pixelsPerPoint}}}) {
        drawCurve(top_.node(),
                  parallels(low[0], high[0], weight.step, low[1], high[1],
                            [&ground](double at, double end) { return ground.point(at, end); }),
                  weight.pen);
        drawCurve(top_.node(),
                  parallels(low[1], high[1], weight.step, low[0], high[0],
                            [&ground](double at, double end) { return ground.point(end, at); }),
                  weight.pen);
    }
}

} // namespace sgview
