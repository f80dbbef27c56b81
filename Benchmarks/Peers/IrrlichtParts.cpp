#include "Benchmarks/Peers/IrrlichtParts.h"

#include <CMeshBuffer.h>
#include <SIrrCreationParameters.h>

#include <cmath>
#include <numbers>
#include <stdexcept>
#include <string>

namespace irr {
extern "C" IrrlichtDevice* createDeviceEx(SIrrlichtCreationParameters const& parameters);
}

namespace {

using namespace irr;

constexpr int bendKeys = 64;
constexpr double largestBend = 0.7; ///< radians, of the first key and the last

template <typename Vertex>
void fill(Vertex& vertex, PlainMesh const& mesh, std::size_t i)
{
    auto const& [x, y, z] = mesh.positions[i];
    auto const& [nx, ny, nz] = mesh.normals[i];
    vertex.Pos.set(x, y, -z);
    vertex.Normal.set(nx, ny, -nz);
    vertex.Color = video::SColor(255, 255, 255, 255);
    if (!mesh.coordinates.empty())
        vertex.TCoords.set(mesh.coordinates[i][0], mesh.coordinates[i][1]);
}

template <typename Buffer>
void fillIndices(Buffer& buffer, PlainMesh const& mesh)
{
    for (std::uint16_t const index : mesh.indices)
        buffer.Indices.push_back(index);
    buffer.recalculateBoundingBox();
}

template <typename Buffer>
IrrlichtPointer<Buffer> makeBuffer(PlainMesh const& mesh)
{
    IrrlichtPointer<Buffer> buffer(new Buffer);
    buffer->Vertices.set_used(static_cast<u32>(mesh.positions.size()));
    for (u32 i = 0; i < buffer->Vertices.size(); ++i)
        fill(buffer->Vertices[i], mesh, i);
    fillIndices(*buffer, mesh);
    return buffer;
}

/// The second coordinates of vertices with two are the first.
IrrlichtPointer<scene::SMeshBufferLightMap> makeTwoLayerBuffer(PlainMesh const& mesh)
{
    auto buffer = makeBuffer<scene::SMeshBufferLightMap>(mesh);
    for (u32 i = 0; i < buffer->Vertices.size(); ++i)
        buffer->Vertices[i].TCoords2 = buffer->Vertices[i].TCoords;
    return buffer;
}

void addJoint(scene::ISkinnedMesh& sheet, char const* name, double direction,
              std::vector<double> const& weights)
{
    auto* const joint = sheet.addJoint();
    joint->Name = name;
    joint->LocalMatrix.makeIdentity();
    for (int i = 0; i <= bendKeys; ++i) {
        auto* const key = sheet.addRotationKey(joint);
        key->frame = static_cast<float>(i);
        double const bend = direction * largestBend * (2.0 * i / bendKeys - 1.0);
        key->rotation.fromAngleAxis(static_cast<float>(bend), core::vector3df(0.0F, 1.0F, 0.0F));
    }
    for (std::size_t i = 0; i < weights.size(); ++i) {
        auto* const weight = sheet.addWeight(joint);
        weight->buffer_id = 0;
        weight->vertex_id = static_cast<u32>(i);
        weight->strength = static_cast<float>(weights[i]);
    }
}

float degrees(double radians)
{
    return static_cast<float>(radians * 180.0 / std::numbers::pi);
}

video::SColor black()
{
    return {255, 0, 0, 0};
}

} // namespace

IrrlichtPointer<IrrlichtDevice> openIrrlicht()
{
    SIrrlichtCreationParameters parameters;
    parameters.DriverType = video::EDT_OPENGL;
    parameters.WindowSize = {BenchRun::width, BenchRun::height};
    parameters.Bits = 32;
    parameters.ZBufferBits = 24;
    parameters.LoggingLevel = ELL_ERROR;
    IrrlichtPointer<IrrlichtDevice> device(createDeviceEx(parameters));
    if (!device)
        throw std::runtime_error("no window; Debian's build needs an X server");
    device->getVideoDriver()->setMinHardwareBufferVertexCount(0);
    return device;
}

void addIrrlichtCamera(scene::ISceneManager& manager, PlainView const& view)
{
    core::vector3df const eye = irrlichtVector(view.eye);
    auto* const camera = manager.addCameraSceneNode(nullptr, eye, eye + core::vector3df(0.0F, 0.0F, 1.0F));
    camera->setFOV(core::PI / 4.0F);
    camera->setAspectRatio(1.0F);
    camera->setNearValue(static_cast<float>(view.near));
    camera->setFarValue(static_cast<float>(view.far));
}

void addIrrlichtLight(scene::ISceneManager& manager)
{
    manager.setAmbientLight({ambientLight, ambientLight, ambientLight, 1.0F});
    auto* const node = manager.addLightSceneNode();
    video::SLight& light = node->getLightData();
    light.Type = video::ELT_DIRECTIONAL;
    light.DiffuseColor = {1.0F, 1.0F, 1.0F, 1.0F};
    light.AmbientColor = {0.0F, 0.0F, 0.0F, 1.0F};
    light.SpecularColor = {0.0F, 0.0F, 0.0F, 1.0F};
    light.CastShadows = false;
    node->setRotation(irrlichtVector(towardsLight * -1.0).getHorizontalAngle());
}

IrrlichtPointer<scene::SMesh> irrlichtMesh(PlainMesh const& mesh)
{
    IrrlichtPointer<scene::SMesh> result(new scene::SMesh);
    if (mesh.coordinates.empty())
        result->addMeshBuffer(makeBuffer<scene::SMeshBuffer>(mesh).get());
    else
        result->addMeshBuffer(makeTwoLayerBuffer(mesh).get());
    result->recalculateBoundingBox();
    result->setHardwareMappingHint(scene::EHM_STATIC);
    return result;
}

scene::ISkinnedMesh* irrlichtSheet(scene::ISceneManager& manager, PlainMesh const& mesh,
                                   std::vector<double> const& secondWeights)
{
    scene::ISkinnedMesh* const sheet = manager.createSkinnedMesh();
    auto& buffer = *sheet->addMeshBuffer();
    buffer.Vertices_Standard.set_used(static_cast<u32>(mesh.positions.size()));
    for (u32 i = 0; i < buffer.Vertices_Standard.size(); ++i)
        fill(buffer.Vertices_Standard[i], mesh, i);
    fillIndices(buffer, mesh);
    std::vector<double> firstWeights;
    for (double const second : secondWeights)
        firstWeights.push_back(1.0 - second);
    addJoint(*sheet, "first", 1.0, firstWeights);
    addJoint(*sheet, "second", -1.0, secondWeights);
    sheet->finalize();
    sheet->setInterpolationMode(scene::EIM_LINEAR);
    sheet->setHardwareMappingHint(scene::EHM_STREAM, scene::EBT_VERTEX);
    sheet->setHardwareMappingHint(scene::EHM_STATIC, scene::EBT_INDEX);
    return sheet;
}

float irrlichtKeyOf(double bend)
{
    return static_cast<float>((bend / largestBend + 1.0) / 2.0 * bendKeys);
}

void setIrrlichtColor(video::SMaterial& material, std::size_t surface)
{
    auto const [r, g, b, a] = plainColor(surface);
    material.ColorMaterial = video::ECM_NONE;
    material.DiffuseColor = video::SColorf(r, g, b, a).toSColor();
    material.AmbientColor = material.DiffuseColor;
    material.SpecularColor = black();
    material.EmissiveColor = black();
    material.Shininess = 0.0F;
    material.Lighting = true;
    material.BackfaceCulling = false;
    material.FogEnable = false;
    material.NormalizeNormals = false;
    material.AntiAliasing = 0;
    material.UseMipMaps = false;
}

std::vector<video::ITexture*> irrlichtTextures(video::IVideoDriver& driver)
{
    driver.setTextureCreationFlag(video::ETCF_CREATE_MIP_MAPS, false);
    std::vector<video::ITexture*> textures;
    for (std::size_t i = 0; i < pictureCount; ++i) {
        auto const bytes = pictureBytes(i);
        IrrlichtPointer<video::IImage> const image(
            driver.createImage(video::ECF_A8R8G8B8, {pictureSide, pictureSide}));
        for (u32 y = 0; y < pictureSide; ++y)
            for (u32 x = 0; x < pictureSide; ++x) {
                std::uint8_t const* const rgb = &bytes[4 * (std::size_t{y} * pictureSide + x)];
                image->setPixel(x, y, {255, rgb[0], rgb[1], rgb[2]});
            }
        textures.push_back(driver.addTexture(std::to_string(i).c_str(), image.get()));
    }
    return textures;
}

core::vector3df irrlichtTurnAboutY(double angle)
{
    return {0.0F, degrees(-angle), 0.0F};
}

core::vector3df irrlichtTurnAboutZ(Transform const& transform)
{
    Matrix3 const& rotation = transform.getRotation();
    return {0.0F, 0.0F, degrees(std::atan2(rotation[3], rotation[0]))};
}
