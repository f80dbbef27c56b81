#include "Tests/Unit/Overlay/LimbModel.h"

#include <cmath>

namespace sgview {

Model makeLimb()
{
    Model model;
    model.nodes.resize(4);
    char const* const names[] = {"root", "upper", "lower", "prop"};
    Index const parents[] = {none, 0, 1, 0};
    for (std::size_t i = 0; i < model.nodes.size(); ++i) {
        model.nodes[i].name = names[i];
        model.nodes[i].parent = parents[i];
    }
    model.nodes[2].translation = Vector3(0, 1, 0);
    model.nodes[3].translation = Vector3(5, 0, 0);
    model.nodes[0].surfaces = {0};
    model.nodes[3].surfaces = {1};

    model.materials.resize(2);
    model.materials[0].diffuse = {0.2F, 0.4F, 0.6F, 1.0F};
    model.materials[0].name = "skin";
    model.materials[1].name = "wood";

    ModelSurface limb;
    limb.name = "limb";
    limb.positions = {{0, 0, 0}, {0, 1, 0}, {0, 2, 0}};
    limb.normals = {{1, 0, 0}, {1, 0, 0}, {1, 0, 0}};
    limb.facets = {0, 1, 2};
    limb.skin = 0;
    limb.influenceOffsets = {0, 1, 3, 4};
    limb.influences = {{0, 1.0}, {0, 0.5}, {1, 0.5}, {1, 1.0}};
    model.surfaces.push_back(limb);

    ModelSurface prop;
    prop.name = "prop";
    prop.material = 1;
    prop.positions = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    prop.normals = {{0, 0, 1}, {0, 0, 1}, {0, 0, 1}};
    prop.facets = {0, 1, 2};
    model.surfaces.push_back(prop);

    ModelSkin skin;
    skin.bones = {{1, Matrix()}, {2, Matrix::translationMatrix(Vector3(0, -1, 0))}};
    model.skins.push_back(skin);

    ModelAnimation bend;
    bend.length = 1.0;
    double const half = std::sqrt(0.5);
    bend.channels.push_back(
        {2, {}, {Interpolation::linear, {0.0, 1.0}, {{0, 0, 0, 1}, {0, 0, half, half}}}, {}});
    model.animations.push_back(bend);
    return model;
}

} // namespace sgview
