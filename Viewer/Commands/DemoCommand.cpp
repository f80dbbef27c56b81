#include "Viewer/Commands/Commands.h"

#include "Viewer/Commands/DeviceChoice.h"
#include "Viewer/Commands/MeasuredTechnique.h"
#include "Viewer/Commands/ModelLoader.h"
#include "Viewer/Import/ImportError.h"
#include "Viewer/Platform/OffscreenRenderer.h"
#include "Viewer/Platform/PngWriter.h"
#include "Viewer/Scene/DemoScene.h"
#include "Viewer/Window/DemoWindow.h"

#include <utility>

namespace sgview {

namespace {

void draw(DemoRequest const& demo, Model creature, Messages const& messages)
{
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

void show(DemoRequest const& demo, Model creature, Messages const& messages)
{
    PictureRequest const& picture = demo.picture;
    DemoWindow(std::move(creature), picture.size, picture.module,
               techniqueFinder(picture.technique, picture.module, messages))
        .run();
}

} // namespace

void run(DemoRequest const& demo, Messages const& messages)
{
    if (!chooseDevice(demo.picture.device))
        return;
    Model creature = loadCreature(messages);
    if (demo.window)
        show(demo, std::move(creature), messages);
    else
        draw(demo, std::move(creature), messages);
}

} // namespace sgview
