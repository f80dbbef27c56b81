#include "Viewer/Scene/ModelScene.h"

#include <utility>

namespace sgview {

namespace {

smart_ptr<SGRootNode> makeRoot(SceneOptions const& options)
{
    auto root = make_smart<SGRootNode>();
    root->color = options.background;
    return root;
}

smart_ptr<SGLightsNode> makeLights(smart_ptr<SGRootNode> const& root)
{
    auto lights = make_smart<SGLightsNode>(root);
    lights->lights.push_back(headLight());
    return lights;
}

smart_ptr<SGCameraNode> makeCamera(smart_ptr<SGLightsNode> const& lights)
{
    auto camera = make_smart<SGCameraNode>(lights);
    camera->camera = make_smart<CameraBase>();
    return camera;
}

} // namespace

SGLightData headLight()
{
    SGLightData light;
    light.ambient = Color{0.35F, 0.35F, 0.35F, 1.0F};
    light.diffuse = Color{0.75F, 0.75F, 0.75F, 1.0F};
    light.specular = Color{0.6F, 0.6F, 0.6F, 1.0F};
    light.direction = Vector3(-0.35, 0.6, 0.9);
    return light;
}

ModelScene::ModelScene(Model model, SceneOptions const& options)
    : root_(makeRoot(options)),
      lights_(makeLights(root_)),
      camera_(makeCamera(lights_)),
      instance_(std::make_shared<ModelResources>(std::move(model)), options, camera_)
{
}

Bounds ModelScene::bounds() const
{
    Bounds all;
    for (SurfaceBounds const& surface : surfaceBounds())
        all.add(surface.bounds);
    return all;
}

void ModelScene::setView(CameraView const& view, int width, int height)
{
    setCamera(fitCamera(instance_.posedVertices(), view, width, height), viewDirection(view));
}

void ModelScene::setCamera(smart_ptr<CameraBase> camera, Vector3 const& direction)
{
    camera_->camera = std::move(camera);
    instance_.sortBlended(direction);
}

} // namespace sgview
