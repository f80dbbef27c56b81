#include "Viewer/Import/BoneSplitter.h"

#include "Viewer/Import/BonePartition.h"
#include "Viewer/Import/ModelCheck.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <random>
#include <set>

namespace sgview {

namespace {

/// A vertex with all that it carries, posed: what must not change.
using Corner = std::vector<double>;
using Triangle = std::array<Corner, 3>;

Corner cornerOf(Model const& model, ModelSurface const& surface, std::size_t vertex)
{
    Vector3 posed;
    for (auto i = static_cast<std::size_t>(surface.influenceOffsets[vertex]);
         i < static_cast<std::size_t>(surface.influenceOffsets[vertex + 1]); ++i) {
        ModelInfluence const& influence = surface.influences[i];
        ModelBone const& bone = model.skins[static_cast<std::size_t>(surface.skin)]
                                    .bones[static_cast<std::size_t>(influence.bone)];
        posed += transformPoint(bone.inverseBind, surface.positions[vertex]) * influence.weight;
    }
    Vector3 const& rest = surface.positions[vertex];
    Vector3 const& normal = surface.normals[vertex];
    auto const& [u, v] = surface.coordinates[0][vertex];
    return {posed.x, posed.y, posed.z, rest.x, rest.y, rest.z, normal.x, normal.y, normal.z, u, v};
}

/// In the order in which they are drawn.
std::vector<Triangle> trianglesOf(Model const& model)
{
    std::vector<Triangle> triangles;
    for (ModelNode const& node : model.nodes) {
        for (Index const index : node.surfaces) {
            ModelSurface const& surface = model.surfaces[static_cast<std::size_t>(index)];
            for (std::size_t f = 0; f < surface.facets.size(); f += 3) {
                Triangle& triangle = triangles.emplace_back();
                for (std::size_t k = 0; k < 3; ++k)
                    triangle[k] = cornerOf(model, surface, static_cast<std::size_t>(surface.facets[f + k]));
            }
        }
    }
    return triangles;
}

std::vector<Triangle> sorted(std::vector<Triangle> triangles)
{
    std::ranges::sort(triangles);
    return triangles;
}

std::size_t vertexCount(Model const& model)
{
    std::size_t count = 0;
    for (ModelSurface const& surface : model.surfaces)
        count += surface.positions.size();
    return count;
}

/// A node, a material and a skin whose every bone has a map of its own.
Model makeSkin(int bones)
{
    Model model;
    model.nodes.emplace_back();
    model.materials.emplace_back();
    model.skins.push_back({"skin", {}});
    for (int i = 0; i < bones; ++i)
        model.skins[0].bones.push_back(
            {i % 2 == 0 ? 0 : none, Matrix::translationMatrix({0.1 * i, -1.0 * i, 2.0})});
    return model;
}

void addVertex(ModelSurface& surface, Vector3 const& position, std::vector<ModelInfluence> const& influences)
{
    if (surface.influenceOffsets.empty()) {
        surface.influenceOffsets.push_back(0);
        surface.coordinates.emplace_back();
    }
    auto const number = static_cast<double>(surface.positions.size());
    surface.positions.push_back(position);
    surface.normals.emplace_back(0.0, 0.0, surface.positions.size() % 2 == 0 ? 1.0 : -1.0);
    surface.coordinates[0].push_back({number, -number});
    surface.influences.insert(surface.influences.end(), influences.begin(), influences.end());
    surface.influenceOffsets.push_back(static_cast<std::int32_t>(surface.influences.size()));
}

void addSurface(Model& model, ModelSurface surface)
{
    surface.skin = 0;
    model.nodes[0].surfaces.push_back(static_cast<Index>(model.surfaces.size()));
    model.surfaces.push_back(std::move(surface));
}

/// A strip along a chain of bones: two vertices a bone, two triangles from each bone to the next.
ModelSurface makeStrip(int firstBone, int bones)
{
    ModelSurface strip;
    strip.name = "strip";
    for (int i = 0; i < bones; ++i) {
        int const bone = firstBone + i;
        std::vector<ModelInfluence> const influences =
            i + 1 < bones ? std::vector<ModelInfluence>{{bone, 0.75}, {bone + 1, 0.25}}
                          : std::vector<ModelInfluence>{{bone, 1.0}};
        for (double const y : {0.0, 1.0})
            addVertex(strip, {1.0 * i, y, 0}, influences);
    }
    for (std::int32_t i = 0; i + 3 < 2 * bones; i += 2)
        strip.facets.insert(strip.facets.end(), {i, i + 2, i + 1, i + 1, i + 2, i + 3});
    strip.droppedInfluences = 9;
    return strip;
}

/// Triangles between vertices that hang on four bones each, wherever those are.
ModelSurface makeTangle(int bones, std::mt19937& random)
{
    ModelSurface tangle;
    tangle.name = "tangle";
    auto const upTo = [&random](int count) { return std::uniform_int_distribution(0, count - 1)(random); };
    constexpr int vertices = 400;
    for (int i = 0; i < vertices; ++i) {
        std::set<Index> chosen;
        while (chosen.size() < 4)
            chosen.insert(upTo(bones));
        std::vector<ModelInfluence> influences;
        std::ranges::transform(chosen, std::back_inserter(influences), [](Index bone) {
            return ModelInfluence{bone, 0.25};
        });
        addVertex(tangle, {1.0 * upTo(100), 1.0 * upTo(100), 1.0 * i}, influences);
    }
    for (int i = 0; i < 900; ++i)
        tangle.facets.push_back(upTo(vertices));
    return tangle;
}

void expectSmallSkins(Model const& model)
{
    EXPECT_NO_THROW(checkModel(model, "file"));
    for (ModelSkin const& skin : model.skins)
        EXPECT_LE(skin.bones.size(), 56U);
}

} // namespace

TEST(BoneSplitter, LeavesAsManyAsFit)
{
    Model model = makeSkin(56);
    addSurface(model, makeStrip(0, 56));
    Model const before = model;
    splitByBones(model);
    EXPECT_EQ(model.surfaces.size(), 1U);
    EXPECT_TRUE(model.splits.empty());
    EXPECT_EQ(model.surfaces[0].name, "strip");
    EXPECT_EQ(model.skins[0].bones.size(), 56U);
    EXPECT_EQ(trianglesOf(model), trianglesOf(before));
}

TEST(BoneSplitter, OneMoreMakesTwo)
{
    Model model = makeSkin(57);
    addSurface(model, makeStrip(0, 57));
    Model const before = model;
    splitByBones(model);
    ASSERT_EQ(model.surfaces.size(), 2U);
    EXPECT_EQ(model.surfaces[0].name, "strip (1 of 2)");
    EXPECT_EQ(model.surfaces[1].name, "strip (2 of 2)");
    EXPECT_EQ(model.nodes[0].surfaces, (std::vector<Index>{0, 1}));
    EXPECT_EQ(model.surfaces[0].droppedInfluences + model.surfaces[1].droppedInfluences, 9);
    ASSERT_EQ(model.splits.size(), 1U);
    EXPECT_EQ(model.splits[0].name, "strip");
    EXPECT_EQ(model.splits[0].first, 0);
    EXPECT_EQ(model.splits[0].parts, 2);
    EXPECT_EQ(sorted(trianglesOf(model)), sorted(trianglesOf(before)));
    expectSmallSkins(model);
}

TEST(BoneSplitter, LongChainIsCutFewTimes)
{
    Model model = makeSkin(300);
    addSurface(model, makeStrip(0, 300));
    Model const before = model;
    splitByBones(model);
    EXPECT_EQ(model.surfaces.size(), 6U);
    EXPECT_EQ(sorted(trianglesOf(model)), sorted(trianglesOf(before)));
    EXPECT_LE(vertexCount(model), vertexCount(before) + 10) << "two vertices are shared at each cut";
    expectSmallSkins(model);
}

TEST(BoneSplitter, PartsKeepTheOrderOfTheBones)
{
    Model model = makeSkin(300);
    addSurface(model, makeStrip(0, 300));
    std::vector<ModelBone> const all = model.skins[0].bones;
    splitByBones(model);
    for (ModelSkin const& skin : model.skins) {
        auto from = all.begin();
        for (ModelBone const& bone : skin.bones) {
            from = std::find_if(from, all.end(), [&](ModelBone const& other) {
                return other.node == bone.node && other.inverseBind == bone.inverseBind;
            });
            ASSERT_NE(from, all.end());
        }
    }
}

TEST(BoneSplitter, TangleIsSplitWhateverItsBones)
{
    std::mt19937 random(7);
    for (int const bones : {57, 100, 300}) {
        SCOPED_TRACE(bones);
        Model model = makeSkin(bones);
        addSurface(model, makeTangle(bones, random));
        Model const before = model;
        splitByBones(model);
        EXPECT_GE(model.surfaces.size(), 2U);
        EXPECT_EQ(sorted(trianglesOf(model)), sorted(trianglesOf(before)));
        expectSmallSkins(model);
    }
}

TEST(BoneSplitter, BlendedTrianglesKeepTheirOrder)
{
    std::mt19937 random(8);
    Model model = makeSkin(100);
    model.materials[0].blending = true;
    addSurface(model, makeTangle(100, random));
    Model const before = model;
    splitByBones(model);
    EXPECT_GE(model.surfaces.size(), 2U);
    EXPECT_EQ(trianglesOf(model), trianglesOf(before));
    expectSmallSkins(model);
}

TEST(BoneSplitter, FewBonesOfALargeSkinNeedNoSplit)
{
    Model model = makeSkin(300);
    addSurface(model, makeStrip(200, 20));
    addSurface(model, makeStrip(200, 20));
    addSurface(model, makeStrip(10, 30));
    Model const before = model;
    splitByBones(model);
    EXPECT_EQ(model.surfaces.size(), 3U);
    EXPECT_TRUE(model.splits.empty());
    EXPECT_EQ(trianglesOf(model), trianglesOf(before));
    ASSERT_EQ(model.skins.size(), 2U) << "equal lists of bones are one skin";
    EXPECT_EQ(model.skins[0].bones.size(), 20U);
    EXPECT_EQ(model.skins[1].bones.size(), 30U);
    expectSmallSkins(model);
}

TEST(BoneSplitter, OtherSurfacesKeepTheirPlace)
{
    Model model = makeSkin(60);
    ModelSurface rigid = makeStrip(0, 3);
    addSurface(model, rigid);
    model.surfaces[0].skin = none;
    model.surfaces[0].influenceOffsets.clear();
    model.surfaces[0].influences.clear();
    addSurface(model, makeStrip(0, 60));
    addSurface(model, makeStrip(0, 5));
    splitByBones(model);
    EXPECT_EQ(model.nodes[0].surfaces, (std::vector<Index>{0, 1, 2, 3}));
    EXPECT_EQ(model.splits[0].first, 1);
    EXPECT_EQ(model.surfaces[0].skin, none);
    EXPECT_EQ(model.surfaces[3].name, "strip");
    expectSmallSkins(model);
}

TEST(BonePartition, PiecesThatShareNoBonesMayShareAPart)
{
    ModelSurface pieces = makeStrip(0, 10);
    ModelSurface const other = makeStrip(10, 10);
    auto const shift = static_cast<std::int32_t>(pieces.positions.size());
    for (std::size_t v = 0; v < other.positions.size(); ++v)
        addVertex(pieces, other.positions[v],
                  {other.influences.begin() + other.influenceOffsets[v],
                   other.influences.begin() + other.influenceOffsets[v + 1]});
    for (std::int32_t const vertex : other.facets)
        pieces.facets.push_back(vertex + shift);
    EXPECT_EQ(partitionByBones(pieces, 20).size(), 1U);
    EXPECT_EQ(partitionByBones(pieces, 12).size(), 2U);
    EXPECT_EQ(partitionByBonesInOrder(pieces, 12).size(), 2U);
    EXPECT_EQ(bonesOf(pieces).size(), 20U);
}

} // namespace sgview
