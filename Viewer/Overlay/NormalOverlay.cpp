#include "Viewer/Overlay/NormalOverlay.h"

namespace sgview {

namespace {

std::size_t countVertices(ModelInstance const& instance)
{
    std::size_t count = 0;
    for (std::size_t i = 0; i < instance.partCount(); ++i)
        count += instance.part(i).drawn->getGeometry()->get()->vertices.size();
    return count;
}

Pen penFor(OverlayStyle const& style)
{
    return {style.suited({0.0F, 0.30F, 0.60F, 1.0F}, {0.45F, 0.80F, 1.0F, 1.0F}), style.pixelsPerPoint};
}

} // namespace

NormalOverlay::NormalOverlay(ModelScene& scene, OverlayStyle const& style)
    : scene_(scene),
      length_(style.size() * relativeLength),
      step_((countVertices(scene.instance()) + mostLines - 1) / mostLines),
      top_(scene.cameraNode()),
      lines_(top_.node(), shareCurve({{0.0, 0.0, 0.0}, {0.0, 0.0, 1.0}}), penFor(style))
{
    step_ = std::max<std::size_t>(step_, 1);
    update();
}

void NormalOverlay::update()
{
    std::vector<Transform> places;
    for (PosedNormal const& normal : scene_.instance().posedNormals(step_))
        places.push_back(alongLine(normal.place, normal.place + normal.direction * length_));
    lines_.place(places);
}

} // namespace sgview
