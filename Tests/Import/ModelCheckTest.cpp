#include "Viewer/Import/ModelCheck.h"

#include "Tests/Import/SampleModel.h"
#include "Viewer/Import/ImportError.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

namespace sgview {

namespace {

struct Fault {
    char const* reason;
    std::function<void(Model&)> make;
};

double const nan = std::numeric_limits<double>::quiet_NaN();

std::vector<Fault> const faults{
    {"image 0: a side that is no power of two", [](Model& m) { m.images[0].width = 3; }},
    {"image 0: rows of a wrong size", [](Model& m) { m.images[0].rows.pop_back(); }},
    {"image 0: rows of a wrong size",
     [](Model& m) {
         m.images[0].alpha = true;
         m.images[0].width = 4;
     }},
    {"material 0: a colour outside", [](Model& m) { m.materials[0].diffuse[1] = 1.5F; }},
    {"material 0: a colour outside",
     [](Model& m) { m.materials[0].emissive[0] = std::numeric_limits<float>::quiet_NaN(); }},
    {"material 0: shininess", [](Model& m) { m.materials[0].shininess = 129.0F; }},
    {"material 0: a texture layer without an image", [](Model& m) { m.materials[0].textures[0].image = 1; }},
    {"material 0: a texture layer without coordinates",
     [](Model& m) { m.materials[0].textures[0].coordinates = -1; }},
    {"material 0: too many texture layers",
     [](Model& m) {
         m.materials[0].textures.resize(9, {0, 0, false});
     }},
    {"node 1: its parent", [](Model& m) { m.nodes[1].parent = 1; }},
    {"node 0: its parent", [](Model& m) { m.nodes[0].parent = 2; }},
    {"node 0: its parent", [](Model& m) { m.nodes[0].parent = -7; }},
    {"node 0: a map that is not finite", [](Model& m) { m.nodes[0].translation.y = nan; }},
    {"node 0: a rotation", [](Model& m) { m.nodes[0].rotation.w = 0.5; }},
    {"node 2: a matrix that is not finite", [](Model& m) { m.nodes[2].matrix(1, 1) = nan; }},
    {"node 2: a matrix that is not affine", [](Model& m) { m.nodes[2].matrix(3, 0) = 1.0; }},
    {"node 0: a surface", [](Model& m) { m.nodes[0].surfaces[0] = 2; }},
    {"node 0: a curve", [](Model& m) { m.nodes[0].curves[0] = -1; }},
    {"skin 0: no bones", [](Model& m) { m.skins[0].bones.clear(); }},
    {"skin 0: too many bones", [](Model& m) { m.skins[0].bones.resize(57); }},
    {"split 0: parts", [](Model& m) { m.splits[0].first = -1; }},
    {"split 0: parts", [](Model& m) { m.splits[0].first = 2; }},
    {"split 0: parts", [](Model& m) { m.splits[0].parts = 1; }},
    {"split 0: parts", [](Model& m) { m.splits[0].parts = std::numeric_limits<Index>::max(); }},
    {"skin 0: a bone whose node", [](Model& m) { m.skins[0].bones[0].node = 3; }},
    {"surface 0: a material", [](Model& m) { m.surfaces[0].material = 1; }},
    {"surface 0: not one normal", [](Model& m) { m.surfaces[0].normals.pop_back(); }},
    {"surface 0: a position", [](Model& m) { m.surfaces[0].positions[1].x = nan; }},
    {"surface 0: a normal",
     [](Model& m) {
         m.surfaces[0].normals[1] = {0, 0, 2};
     }},
    {"surface 0: not one pair", [](Model& m) { m.surfaces[0].coordinates[0].pop_back(); }},
    {"surface 0: coordinates that", [](Model& m) { m.surfaces[0].coordinates[0][0][1] = nan; }},
    {"surface 0: facets that are not in threes", [](Model& m) { m.surfaces[0].facets.push_back(0); }},
    {"surface 0: a facet's vertex", [](Model& m) { m.surfaces[0].facets[0] = 3; }},
    {"surface 0: a facet's vertex", [](Model& m) { m.surfaces[0].facets[0] = -1; }},
    {"surface 0: no coordinates for a texture layer", [](Model& m) { m.surfaces[0].coordinates.clear(); }},
    {"surface 0: too many texture layers",
     [](Model& m) {
         m.materials[0].textures.resize(7, {0, 0, false});
     }},
    {"surface 0: influences without a skin", [](Model& m) { m.surfaces[0].skin = none; }},
    {"surface 0: a skin that", [](Model& m) { m.surfaces[0].skin = 1; }},
    {"surface 0: influence offsets",
     [](Model& m) {
         m.surfaces[0].influenceOffsets = {0, 3, 1, 4};
     }},
    {"surface 0: influence offsets", [](Model& m) { m.surfaces[0].influenceOffsets.pop_back(); }},
    {"surface 0: influence offsets",
     [](Model& m) {
         m.surfaces[0].influenceOffsets = {-1, 1, 3, 4};
     }},
    {"surface 0: not one to four",
     [](Model& m) {
         m.surfaces[0].influenceOffsets = {0, 0, 3, 4};
     }},
    {"surface 0: an influence of a bone", [](Model& m) { m.surfaces[0].influences[0].bone = 2; }},
    {"surface 0: a weight outside", [](Model& m) { m.surfaces[0].influences[0].weight = nan; }},
    {"surface 0: weights that do not sum", [](Model& m) { m.surfaces[0].influences[0].weight = 0.5; }},
    {"surface 0: weights that are not strongest",
     [](Model& m) { std::swap(m.surfaces[0].influences[1], m.surfaces[0].influences[2]); }},
    {"curve 0: fewer than two", [](Model& m) { m.curves[0].positions.pop_back(); }},
    {"curve 0: a material", [](Model& m) { m.curves[0].material = 5; }},
    {"animation 0: a length", [](Model& m) { m.animations[0].length = nan; }},
    {"animation 0: a channel of a node that", [](Model& m) { m.animations[0].channels[0].node = 3; }},
    {"animation 0: a channel of a node with", [](Model& m) { m.animations[0].channels[0].node = 2; }},
    {"animation 0: an interpolation",
     [](Model& m) { m.animations[0].channels[0].scale.interpolation = static_cast<Interpolation>(3); }},
    {"animation 0: not as many values",
     [](Model& m) { m.animations[0].channels[0].rotation.values.pop_back(); }},
    {"animation 0: a key outside",
     [](Model& m) {
         m.animations[0].channels[0].scale.times = {0.0, 3.0};
     }},
    {"animation 0: keys that do not ascend",
     [](Model& m) {
         m.animations[0].channels[0].scale.times = {1.0, 1.0};
     }},
    {"animation 0: a key that is not finite",
     [](Model& m) { m.animations[0].channels[0].translation.values[0].z = nan; }},
};

} // namespace

TEST(ModelCheck, AcceptsASoundModel)
{
    EXPECT_NO_THROW(checkModel(makeSampleModel(), "file"));
}

TEST(ModelCheck, FindsEveryFault)
{
    for (Fault const& fault : faults) {
        Model model = makeSampleModel();
        fault.make(model);
        try {
            checkModel(model, "some.file");
            ADD_FAILURE() << "accepted: " << fault.reason;
        } catch (ImportError const& error) {
            EXPECT_EQ(error.failure(), ImportFailure::broken);
            EXPECT_TRUE(std::string(error.what()).starts_with(std::string("some.file: ") + fault.reason))
                << error.what() << "\nexpected: " << fault.reason;
        }
    }
}

} // namespace sgview
