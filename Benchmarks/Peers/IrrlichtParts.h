#pragma once

#include "Benchmarks/Peers/PlainScene.h"

// Its XML reader is no C++20, and is not needed: the guard of that header keeps it out.
#define __I_XML_READER_H_INCLUDED__
namespace irr::io {
class IXMLReader;
class IXMLReaderUTF8;
} // namespace irr::io
#include <IAnimatedMeshSceneNode.h>
#include <ICameraSceneNode.h>
#include <ILightSceneNode.h>
#include <IMeshSceneNode.h>
#include <ISceneManager.h>
#include <ISkinnedMesh.h>
#include <IVideoDriver.h>
#include <IrrlichtDevice.h>
#include <SMesh.h>

#include <memory>

// What the scenes are made of in Irrlicht. Its coordinates are left-handed: z is mirrored.

struct IrrlichtDrop {
    void operator()(irr::IReferenceCounted* object) const { object->drop(); }
};
template <typename Object>
using IrrlichtPointer = std::unique_ptr<Object, IrrlichtDrop>;

/// A window of the benchmarks' size.
/// \throws std::runtime_error
[[nodiscard]] IrrlichtPointer<irr::IrrlichtDevice> openIrrlicht();

void addIrrlichtCamera(irr::scene::ISceneManager& manager, PlainView const& view);
void addIrrlichtLight(irr::scene::ISceneManager& manager);

/// On the card once it was drawn.
[[nodiscard]] IrrlichtPointer<irr::scene::SMesh> irrlichtMesh(PlainMesh const& mesh);

/// A sheet that two joints bend, and the key of their animation at which the first is turned by an angle.
[[nodiscard]] irr::scene::ISkinnedMesh* irrlichtSheet(irr::scene::ISceneManager& manager,
                                                      PlainMesh const& mesh,
                                                      std::vector<double> const& secondWeights);
[[nodiscard]] float irrlichtKeyOf(double bend);

/// One colour, ambient and diffuse.
void setIrrlichtColor(irr::video::SMaterial& material, std::size_t surface);

/// The pictures of the textured scene.
[[nodiscard]] std::vector<irr::video::ITexture*> irrlichtTextures(irr::video::IVideoDriver& driver);

[[nodiscard]] inline irr::core::vector3df irrlichtVector(Vector3 const& vector)
{
    return {static_cast<float>(vector.x), static_cast<float>(vector.y), static_cast<float>(-vector.z)};
}

/// Rotations as Irrlicht takes them, from right-handed ones.
[[nodiscard]] irr::core::vector3df irrlichtTurnAboutY(double angle);
[[nodiscard]] irr::core::vector3df irrlichtTurnAboutZ(Transform const& transform);
