#include "Viewer/Bench/CrowdScene.h"

#include "Viewer/Scene/CameraView.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>
#include <utility>

namespace sgview {

namespace {

constexpr double framesASecond = 60.0;
constexpr double cell = 0.9; ///< of a place on the grid, that an instance takes up

Matrix3 const turn = viewRotation(CameraView()); // as a picture of the model has it

/// Fits what has these bounds, once turned, into a place.
Transform fitted(Bounds const& bounds, Vector3 const& place)
{
    if (bounds.empty())
        return {turn, place, 1.0};
    Vector3 const size = bounds.high - bounds.low;
    double const largest = std::max({size.x, size.y, size.z});
    double const scale = largest > 0.0 && std::isfinite(cell / largest) ? cell / largest : 1.0;
    return {turn, place - (bounds.low * 0.5 + bounds.high * 0.5) * scale, scale};
}

} // namespace

CrowdScene::CrowdScene(Model model, Index animation, int count) : animation_(animation)
{
    GridLayout const layout(count);
    double const distance = layout.viewingDistance();
    lookFrom({{0.0, 0.0, distance}, 0.5 * distance, 1.5 * distance});
    if (animation_ != none)
        length_ = model.animations[static_cast<std::size_t>(animation_)].length;

    auto const resources = std::make_shared<ModelResources const>(std::move(model));
    addInstance(resources);
    std::size_t const vertices = instances_.front().posedVertices().size();
    if (vertices > mostVertices / static_cast<std::size_t>(count))
        throw CrowdTooLarge("a crowd of " + std::to_string(count) + " would have " +
                            std::to_string(vertices) + " vertices each, and " + std::to_string(mostVertices) +
                            " in all are the most");
    while (instances_.size() < static_cast<std::size_t>(count))
        addInstance(resources);

    Bounds const bounds = boundsOf(instances_.front());
    for (int i = 0; i < count; ++i)
        transforms_[static_cast<std::size_t>(i)]->transform = fitted(bounds, layout.place(i));
    prepare(0);
    for (ModelInstance& instance : instances_)
        instance.sortBlended(viewDirection(CameraView()));
}

void CrowdScene::prepare(int frame)
{
    if (animation_ == none)
        return;
    for (std::size_t i = 0; i < instances_.size(); ++i)
        instances_[i].pose(animation_, secondsAt(i, frame));
}

void CrowdScene::addInstance(std::shared_ptr<ModelResources const> const& resources)
{
    auto const& transform = transforms_.emplace_back(make_smart<SGTransformNode>(stage()));
    instances_.emplace_back(resources, SceneOptions(), transform);
}

double CrowdScene::secondsAt(std::size_t instance, int frame) const
{
    if (!(length_ > 0.0))
        return 0.0;
    // Steps by the golden ratio spread any number of instances evenly over the animation.
    double const phase = static_cast<double>(instance) * std::numbers::phi;
    return std::fmod(frame / framesASecond + (phase - std::floor(phase)) * length_, length_);
}

/// Of all moments of the animation, as seen by the camera; about the origin.
Bounds CrowdScene::boundsOf(ModelInstance& instance) const
{
    constexpr int moments = 16;
    Bounds bounds;
    for (int i = 0; i < moments; ++i) {
        if (animation_ != none)
            instance.pose(animation_, length_ * i / moments);
        for (Vector3 const& vertex : instance.posedVertices())
            bounds.add(turn * vertex);
        if (animation_ == none)
            break;
    }
    return bounds;
}

} // namespace sgview
