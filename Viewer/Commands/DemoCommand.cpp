#include "Viewer/Commands/Commands.h"

#include "Viewer/Commands/MeasuredTechnique.h"
#include "Viewer/Commands/ModelLoader.h"
#include "Viewer/Import/ImportError.h"
#include "Viewer/Platform/OffscreenRenderer.h"
#include "Viewer/Platform/PngWriter.h"
#include "Viewer/Scene/DemoScene.h"

#include <utility>

namespace sgview {

void run(DemoRequest const& demo, Messages const& messages)
{
    Model creature = loadCreature(messages);

    std::string const drawing = oneLine("drawing " + demo.picture.output.filename().string());
    Progress progress = messages.begin(drawing);
    PictureSize const size = demo.picture.size;
    OffscreenRenderer renderer(size, demo.picture.module);
    renderer.use(
        demo.picture.technique
            ? *demo.picture.technique
            : measuredTechnique(renderer.engine(), demo.picture.module, progress, messages).technique);
    progress.say(drawing);
    DemoScene scene(std::move(creature));
    scene.pose(demo.seconds);
    scene.setView(size.width, size.height);
    writePng(demo.picture.output, renderer.draw(scene.root()));
}

} // namespace sgview
