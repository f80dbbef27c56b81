#pragma once

#include "Benchmarks/Peers/PlainScene.h"

#include <osg/Geometry>
#include <osg/Group>
#include <osg/Material>
#include <osg/Texture2D>

// What the scenes are made of in OpenSceneGraph.

[[nodiscard]] osg::ref_ptr<osg::Geometry> osgGeometry(PlainMesh const& mesh);

/// One colour, ambient and diffuse.
[[nodiscard]] osg::ref_ptr<osg::Material> osgMaterial(std::size_t surface);

/// The pictures of the textured scene.
[[nodiscard]] std::vector<osg::ref_ptr<osg::Texture2D>> osgTextures();

/// The root of a scene: lit, seen from both sides.
[[nodiscard]] osg::ref_ptr<osg::Group> osgRoot();

[[nodiscard]] osg::Matrix osgMatrix(Transform const& transform);
[[nodiscard]] inline osg::Matrix osgMatrix(double turnAboutY, Vector3 const& place)
{
    return osg::Matrix::rotate(turnAboutY, osg::Vec3(0.0F, 1.0F, 0.0F)) *
           osg::Matrix::translate(place.x, place.y, place.z);
}
