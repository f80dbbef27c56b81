#include "Viewer/Scene/DemoScene.h"

#include "SceneGraph/SGLightsNode.h"
#include "SceneGraph/SGTransformNode.h"
#include "Viewer/Scene/CameraView.h"
#include "Viewer/Scene/DemoProps.h"
#include "Viewer/Scene/ModelScene.h"

#include <cmath>
#include <numbers>
#include <utility>

namespace sgview {

namespace {

constexpr double pi = std::numbers::pi;

// Fixed, so that the picture stays put while the creatures move: corners of what must be seen, and points
// before and behind it that keep the near and far planes away.
std::vector<Vector3> const stage{{-2.1, -0.8, 0.5}, {2.1, -0.8, 0.5}, {-2.1, 1.5, -0.5},
                                 {2.1, 1.5, -0.5},  {0.0, 0.35, 2.5}, {0.0, 0.35, -6.0}};
constexpr CameraView stageView{0.0, 14.0, 1.0};

/// Creatures in one scene swim out of step.
constexpr double phaseStep = 0.37; // seconds

struct Place {
    Vector3 position;
    double heading = 0.0; ///< radians around the up axis
    double scale = 1.0;
};

smart_ptr<SGTransformNode> placed(smart_ptr<SGNode> const& parent, Place const& place)
{
    auto node = make_smart<SGTransformNode>(parent);
    node->transform = Transform(Matrix3::rotationMatrix(Vector3(0.0, 1.0, 0.0), place.heading),
                                place.position, place.scale);
    return node;
}

/// The mirror image in the plane x = 0 of what is below: a half turn about x of the mirror image in the
/// origin.
smart_ptr<SGTransformNode> mirrored(smart_ptr<SGNode> const& parent)
{
    auto node = make_smart<SGTransformNode>(parent);
    node->transform = Transform(Matrix3::rotationMatrix(Vector3(1.0, 0.0, 0.0), pi), Vector3(), -1.0);
    return node;
}

SceneOptions tinted(Color const& light, Color const& dark)
{
    SceneOptions options;
    options.colorize = std::pair(light, dark);
    return options;
}

SceneOptions wireframe()
{
    SceneOptions options;
    options.wireframe = true;
    return options;
}

} // namespace

DemoScene::DemoScene(Model creature)
    : creature_(std::make_shared<ModelResources>(std::move(creature))),
      root_(make_smart<SGRootNode>()),
      camera_(make_smart<SGCameraNode>(root_))
{
    root_->color = Color{0.80F, 0.90F, 0.93F, 1.0F};
    auto lit = make_smart<SGLightsNode>(camera_);
    lit->lights.push_back(headLight());
    addFloor(lit);
    addCreatures(lit);
    addCurves(camera_);
    addPane(camera_);
    addPanel(camera_);
    pose(0.0);
}

void DemoScene::addCreatures(smart_ptr<SGNode> const& lit)
{
    SceneOptions const plain;
    creatures_.emplace_back(creature_, plain, placed(lit, {{-0.85, 0.1, 0.35}, -0.75, 1.0}));
    creatures_.emplace_back(creature_, plain, placed(mirrored(lit), {{-0.85, 0.1, 0.35}, -0.75, 1.0}));
    creatures_.emplace_back(creature_, tinted({1.0F, 0.83F, 0.45F, 1.0F}, {0.62F, 0.10F, 0.08F, 1.0F}),
                            placed(lit, {{-1.3, 1.05, -0.5}, 1.2, 0.75}));
    creatures_.emplace_back(creature_, tinted({0.75F, 1.0F, 0.80F, 1.0F}, {0.05F, 0.35F, 0.30F, 1.0F}),
                            placed(lit, {{0.0, 0.95, -0.6}, 0.0, 0.75}));
    creatures_.emplace_back(creature_, wireframe(), placed(lit, {{1.3, 1.05, -0.5}, -1.2, 0.75}));
}

double DemoScene::length() const
{
    std::vector<ModelAnimation> const& animations = creature_->model().animations;
    return animations.empty() ? 0.0 : animations.front().length;
}

void DemoScene::pose(double seconds)
{
    if (!(length() > 0.0))
        return;
    for (std::size_t i = 0; i < creatures_.size(); ++i)
        creatures_[i].pose(0, std::fmod(seconds + phaseStep * static_cast<double>(i), length()));
}

void DemoScene::setView(int width, int height)
{
    camera_->camera = fitCamera(stage, stageView, width, height);
}

} // namespace sgview
