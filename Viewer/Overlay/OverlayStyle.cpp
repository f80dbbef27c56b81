#include "Viewer/Overlay/OverlayStyle.h"

namespace sgview {

namespace {

bool isDark(Color const& color)
{
    // Rec. 709 luma.
    return 0.2126F * color.r + 0.7152F * color.g + 0.0722F * color.b < 0.5F;
}

} // namespace

bool OverlayStyle::operator==(OverlayStyle const& other) const
{
    return model.low == other.model.low && model.high == other.model.high && up == other.up &&
           background == other.background && pixelsPerPoint == other.pixelsPerPoint;
}

double OverlayStyle::size() const
{
    double const diagonal = model.empty() ? 0.0 : length(model.high - model.low);
    return diagonal > 0.0 ? diagonal : 1.0;
}

Color OverlayStyle::ink() const
{
    return suited({0.05F, 0.06F, 0.08F, 1.0F}, {0.95F, 0.96F, 0.97F, 1.0F});
}

Color OverlayStyle::shade(double strength) const
{
    auto const mix = [t = static_cast<float>(strength)](float a, float b) { return a + (b - a) * t; };
    Color const to = ink();
    return {mix(background.r, to.r), mix(background.g, to.g), mix(background.b, to.b), 1.0F};
}

Color OverlayStyle::suited(Color const& onLight, Color const& onDark) const
{
    return isDark(background) ? onDark : onLight;
}

} // namespace sgview
