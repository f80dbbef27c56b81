#include "Tests/Import/SampleModel.h"

namespace sgview {

Model makeSampleModel()
{
    Model model;
    model.format = "sample";
    model.images.push_back({"picture", 2, 1, false, {1, 2, 3, 4, 5, 6, 0, 0}});
    ModelMaterial material;
    material.name = "paint";
    material.diffuse = {0.1F, 0.2F, 0.3F, 0.4F};
    material.shininess = 12.0F;
    material.blending = true;
    material.unlit = true;
    material.textures.push_back({0, 0, true});
    model.materials.push_back(material);

    ModelSurface surface;
    surface.name = "triangle";
    surface.positions = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    surface.normals.assign(3, {0, 0, 1});
    surface.coordinates = {{{0, 0}, {1, 0}, {0, 1}}};
    surface.facets = {0, 1, 2};
    surface.skin = 0;
    surface.influenceOffsets = {0, 1, 3, 4};
    surface.influences = {{0, 1.0}, {1, 0.75}, {0, 0.25}, {1, 1.0}};
    surface.mostInfluencesInFile = 5;
    surface.droppedInfluences = 7;
    model.surfaces.push_back(surface);
    model.curves.push_back({"line", 0, {{0, 0, 0}, {1, 2, 3}}, true});
    model.skins.push_back({"skin", {{1, Matrix::translationMatrix({1, 2, 3})}, {none, {}}}});

    ModelNode root;
    root.name = "root";
    root.translation = {1, 2, 3};
    root.surfaces = {0};
    root.curves = {0};
    ModelNode child;
    child.name = "child";
    child.parent = 0;
    child.scale = {1, 2, 3};
    ModelNode sheared;
    sheared.parent = 1;
    sheared.hasMatrix = true;
    sheared.matrix(0, 1) = 0.5;
    model.nodes = {root, child, sheared};

    ModelChannel channel;
    channel.node = 1;
    channel.translation = {Interpolation::step, {0.0, 1.0}, {{0, 0, 0}, {1, 1, 1}}};
    channel.rotation = {Interpolation::cubic, {0.5}, {{0, 0, 0, 0}, {0, 0, 0, 1}, {0, 0, 0, 0}}};
    channel.scale = {Interpolation::linear, {0.0, 2.0}, {{1, 1, 1}, {2, 2, 2}}};
    model.animations.push_back({"clip", 2.0, {channel}});
    model.surfaces.push_back(surface);
    model.splits.push_back({"pair", 0, 2});
    model.warnings = {"something was left out"};
    return model;
}

} // namespace sgview
