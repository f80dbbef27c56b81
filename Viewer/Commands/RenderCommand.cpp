#include "Viewer/Commands/Commands.h"

#include "Viewer/Commands/ModelLoader.h"
#include "Viewer/Platform/OffscreenRenderer.h"
#include "Viewer/Platform/PngWriter.h"
#include "Viewer/Scene/ModelScene.h"

namespace sgview {

void run(RenderRequest const& request, Messages const& messages)
{
    Model model = loadModel(request.model, messages);
    for (std::string const& warning : model.warnings)
        messages.warn(warning);
    Index const animation = findAnimation(model, request.model, messages);

    auto const progress = messages.begin("drawing " + request.picture.output.filename().string());
    PictureSize const size = request.picture.size;
    OffscreenRenderer renderer(size, request.picture.module);
    renderer.use(request.picture.technique);
    ModelScene scene(std::move(model), request.scene);
    scene.pose(animation, request.model.seconds);
    scene.setView(request.view, size.width, size.height);
    writePng(request.picture.output, renderer.draw(scene.root()));
}

} // namespace sgview
