#include "Viewer/Import/GltfReader.h"

#include "Viewer/Import/GltfAnimations.h"
#include "Viewer/Import/GltfMaterials.h"
#include "Viewer/Import/GltfMeshes.h"
#include "Viewer/Import/GltfNodes.h"

namespace sgview {

ReadModel readGltf(std::filesystem::path const& file, Bytes const& bytes, ImportOptions const& options,
                   FileAccess& access, Warnings& warnings)
{
    GltfDocument const document = parseGltf(file, bytes, access, warnings);
    TextureStore textures(access, warnings, FirstRow::top, options.largestTextureSide);
    MaterialTable materials(warnings);
    std::vector<std::size_t> const plans = readGltfMaterials(document, materials, textures, warnings);

    ReadModel result;
    Model& model = result.model;
    model.format = document.binary ? "glTF 2.0 (binary)" : "glTF 2.0";
    GltfNodes const nodes = readGltfNodes(document, warnings);
    model.nodes = nodes.nodes;
    GltfMeshes meshes(document, materials, plans, model, warnings);
    meshes.attach(nodes);
    result.hasPoints = meshes.hasPoints();
    model.animations = readGltfAnimations(document, nodes, warnings);
    model.materials = materials.take();
    model.images = textures.take();
    return result;
}

} // namespace sgview
