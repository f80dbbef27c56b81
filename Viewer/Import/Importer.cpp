#include "Viewer/Import/Importer.h"

#include "Viewer/Import/AssimpReader.h"
#include "Viewer/Import/BoneSplitter.h"
#include "Viewer/Import/Counted.h"
#include "Viewer/Import/FileKind.h"
#include "Viewer/Import/GltfReader.h"
#include "Viewer/Import/ImportError.h"
#include "Viewer/Import/ModelCheck.h"
#include "Viewer/Import/TextEncoding.h"

#include <algorithm>
#include <string>

namespace sgview {

namespace {

void requireSomethingToDraw(ReadModel const& read, std::filesystem::path const& file)
{
    Model const& model = read.model;
    if (std::ranges::any_of(model.nodes, [](ModelNode const& node) {
            return !node.surfaces.empty() || !node.curves.empty();
        }))
        return;
    if (read.hasPoints)
        throw ImportError(ImportFailure::pointCloud, file.string(), "a point cloud; points are not drawn");
    std::string const why = model.warnings.empty() ? std::string() : "; " + model.warnings.front();
    throw ImportError(ImportFailure::nothingToDraw, file.string(),
                      "nothing to draw: " + counted(model.nodes.size(), "node") + ", " +
                          counted(model.animations.size(), "animation") + ", no surfaces or lines (" +
                          model.format + ")" + why);
}

} // namespace

Model importModel(std::filesystem::path const& file, ImportOptions const& options, SourceFiles* sources)
{
    Bytes const bytes = asUtf8(readModelFile(file));
    FileKind const kind = classify(file, bytes);
    Warnings warnings;
    FileAccess access(file, options.folders, warnings, sources);
    ReadModel read = kind.reader == FileKind::Reader::gltf2
                         ? readGltf(file, bytes, options, access, warnings)
                         : readWithAssimp(file, kind.extension, bytes, options, access, warnings);
    read.model.warnings = warnings.take();
    requireSomethingToDraw(read, file);
    splitByBones(read.model);
    checkModel(read.model, file.string());
    return std::move(read.model);
}

} // namespace sgview
