#include "Viewer/Commands.h"

#include "Utilities/AssetManager.h"
#include "Viewer/ModelLoader.h"
#include "Viewer/OffscreenRenderer.h"
#include "Viewer/PngWriter.h"
#include "Viewer/Scene/DemoScene.h"

#include <utility>

namespace sgview {

namespace {

constexpr char const* creature = "Assets/creature.glb";

} // namespace

void run(DemoRequest const& demo, Messages const& messages)
{
    ModelRequest request;
    request.file = AssetManager::getInstance().findFile(creature);
    Model model = loadModel(request, messages);

    auto const progress = messages.begin("drawing " + demo.picture.output.filename().string());
    PictureSize const size = demo.picture.size;
    OffscreenRenderer renderer(size, demo.picture.module);
    DemoScene scene(std::move(model));
    scene.pose(demo.seconds);
    scene.setView(size.width, size.height);
    writePng(demo.picture.output, renderer.draw(scene.root()));
}

} // namespace sgview
