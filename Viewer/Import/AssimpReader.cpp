#include "Viewer/Import/AssimpReader.h"

#include "Viewer/Import/AssimpAnimations.h"
#include "Viewer/Import/AssimpCheck.h"
#include "Viewer/Import/AssimpFiles.h"
#include "Viewer/Import/AssimpMaterials.h"
#include "Viewer/Import/AssimpMeshes.h"
#include "Viewer/Import/FileNames.h"
#include "Viewer/Import/ImportError.h"

#include <assimp/Importer.hpp>
#include <assimp/config.h>
#include <assimp/importerdesc.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>

#include <memory>
#include <new>
#include <span>

namespace sgview {

namespace {

constexpr unsigned int steps = aiProcess_Triangulate | aiProcess_SortByPType | aiProcess_GenUVCoords |
                               aiProcess_TransformUVCoords | aiProcess_JoinIdenticalVertices;

/// What Assimp knows the file by: in a folder of its own, with the extension of the format.
std::string nameFor(std::filesystem::path const& file, std::string const& extension)
{
    std::string name = file.filename().string();
    std::string const lower = lowerCase(name);
    return "./" + (lower.ends_with("." + extension) ? name : name + "." + extension);
}

std::string formatName(Assimp::Importer const& importer)
{
    int const index = importer.GetPropertyInteger("importerIndex", -1);
    aiImporterDesc const* const description =
        index >= 0 ? importer.GetImporterInfo(static_cast<std::size_t>(index)) : nullptr;
    std::string name = description != nullptr ? description->mName : "unknown";
    for (std::string_view const suffix : {" Importer", " Reader"})
        if (std::size_t const at = name.rfind(suffix); at != std::string::npos)
            name.erase(at, suffix.size());
    return name;
}

/// The steps refuse a whole scene for one mesh that says it consists of nothing.
void declareEmptyMeshes(aiScene const& scene)
{
    for (aiMesh* const mesh : std::span(scene.mMeshes, scene.mNumMeshes))
        if (mesh->mNumFaces == 0)
            mesh->mPrimitiveTypes = aiPrimitiveType_POINT;
}

ImportError failureOf(Assimp::Importer const& importer, std::filesystem::path const& file)
{
    if (importer.GetException())
        try {
            std::rethrow_exception(importer.GetException());
        } catch (std::bad_alloc const&) {
            throw;
        } catch (...) {
            // Its text is in GetErrorString.
        }
    std::string const reason = importer.GetErrorString();
    // The post-processing steps keep no exception, only its text.
    if (reason.find(std::bad_alloc().what()) != std::string::npos)
        throw std::bad_alloc();
    if (reason.find("No suitable reader") != std::string::npos)
        return {ImportFailure::formatNotRead, file.string(),
                "not what its name says, or a variant that is not read"};
    bool const notRead = reason.find("upported") != std::string::npos;
    return {notRead ? ImportFailure::formatNotRead : ImportFailure::broken, file.string(),
            reason.empty() ? "the file cannot be read" : reason};
}

} // namespace

ReadModel readWithAssimp(std::filesystem::path const& file, std::string const& extension, Bytes const& bytes,
                         ImportOptions const& options, FileAccess& access, Warnings& warnings)
{
    std::string const name = nameFor(file, extension);
    Assimp::Importer importer;
    importer.SetIOHandler(
        std::make_unique<AssimpFiles>(name, bytes, access, warnings).release()); // the importer owns it
    importer.SetPropertyBool(AI_CONFIG_IMPORT_NO_SKELETON_MESHES, true);
    aiScene const* scene = importer.ReadFile(name, 0);
    if (scene == nullptr)
        throw failureOf(importer, file);
    if (std::string const fault = faultOf(*scene); !fault.empty())
        throw ImportError(ImportFailure::broken, file.string(), fault);
    declareEmptyMeshes(*scene);
    // The steps refuse scenes without meshes, and there is nothing to be done for them.
    if (scene->mNumMeshes > 0)
        scene = importer.ApplyPostProcessing(steps);
    if (scene == nullptr)
        throw failureOf(importer, file);

    TextureStore textures(access, warnings, FirstRow::bottom, options.largestTextureSide);
    MaterialTable materials(warnings);
    std::vector<std::size_t> const plans =
        readAssimpMaterials(*scene, materials, textures, extension == "blend" ? "//" : "", warnings);
    ReadModel result;
    result.model.format = formatName(importer);
    AssimpMeshes meshes(*scene, materials, plans, result.model, warnings);
    meshes.read();
    readAssimpAnimations(*scene, meshes.nodesByName(), result.model, warnings);
    result.hasPoints = meshes.hasPoints();
    result.model.materials = materials.take();
    result.model.images = textures.take();
    return result;
}

} // namespace sgview
