#include "Viewer/Commands/ModelLoader.h"

#include "Utilities/AssetManager.h"
#include "Viewer/CommandLine/UsageError.h"
#include "Viewer/Import/ImportSupervisor.h"
#include "Viewer/Scene/Animation.h"

namespace sgview {

namespace {

std::string listOf(std::vector<ModelAnimation> const& animations)
{
    std::string list;
    for (std::size_t i = 0; i < animations.size(); ++i)
        list += (i ? ", " : "") + std::to_string(i) + " '" + animations[i].name + "'";
    return list;
}

} // namespace

Model loadModel(ModelRequest const& request, Messages const& messages)
{
    auto const progress = messages.begin("loading " + request.file.filename().string());
    return superviseImport(request.file, request.import);
}

Model loadCreature(Messages const& messages)
{
    ModelRequest request;
    request.file = AssetManager::getInstance().findFile("Assets/creature.glb");
    return loadModel(request, messages);
}

Index findAnimation(Model const& model, ModelRequest const& request,
                    std::function<void(std::string const&)> const& warn)
{
    if (!request.animation)
        return none;
    if (model.animations.empty()) {
        warn("no animation in " + request.file.string() + "; taken in its rest pose");
        return none;
    }
    if (std::optional<Index> const found = findAnimation(model, *request.animation))
        return *found;
    throw UsageError("--animation: " + request.file.string() + " has no animation '" + *request.animation +
                     "'; it has " + listOf(model.animations));
}

Index findAnimation(Model const& model, ModelRequest const& request, Messages const& messages)
{
    return findAnimation(model, request, [&messages](std::string const& text) { messages.warn(text); });
}

} // namespace sgview
