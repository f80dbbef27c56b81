#include "Viewer/Bench/BenchScene.h"

#include "SceneGraph/SGLightsNode.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace sgview {

namespace {

constexpr double halfFieldOfView = 22.5 * std::numbers::pi / 180.0;

SGLightData sun()
{
    SGLightData light;
    light.ambient = Color{0.2F, 0.2F, 0.2F, 1.0F}; // no face is black: each pixel that is drawn can be told
    light.specular = Color();
    light.direction = Vector3(0.3, 0.4, 1.0);
    return light;
}

} // namespace

BenchScene::BenchScene() : root_(make_smart<SGRootNode>())
{
    auto const lights = make_smart<SGLightsNode>(root_);
    lights->lights.push_back(sun());
    camera_ = make_smart<SGCameraNode>(lights);
    camera_->camera = make_smart<CameraBase>();
}

BenchScene::~BenchScene() = default;

void BenchScene::setView(int width, int height)
{
    auto const [eye, near, far] = standpoint_;
    double const slope = std::tan(halfFieldOfView) / std::min(width, height);
    double const right = near * slope * width;
    double const top = near * slope * height;
    camera_->camera = make_smart<CameraBase>(Matrix::translationMatrix(-eye),
                                             Matrix::frustum(-right, right, -top, top, near, far),
                                             quarl::Rect<int>{0, 0, width, height});
}

} // namespace sgview
