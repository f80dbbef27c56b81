#include "Viewer/Commands/Commands.h"

#include "Viewer/Commands/ModelLoader.h"
#include "Viewer/Platform/OffscreenRenderer.h"
#include "Viewer/Platform/PngWriter.h"
#include "Viewer/Scene/DemoScene.h"

#include <utility>

namespace sgview {

void run(DemoRequest const& demo, Messages const& messages)
{
    Model creature = loadCreature(messages);

    auto const progress = messages.begin("drawing " + demo.picture.output.filename().string());
    PictureSize const size = demo.picture.size;
    OffscreenRenderer renderer(size, demo.picture.module);
    renderer.use(demo.picture.technique);
    DemoScene scene(std::move(creature));
    scene.pose(demo.seconds);
    scene.setView(size.width, size.height);
    writePng(demo.picture.output, renderer.draw(scene.root()));
}

} // namespace sgview
