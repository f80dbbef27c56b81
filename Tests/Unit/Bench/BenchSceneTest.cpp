#include "Tests/Unit/Bench/SceneWalk.h"
#include "Viewer/Bench/BenchSceneKind.h"
#include "Viewer/Bench/SceneMotion.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <tuple>

namespace {

using namespace sgview;
using Kind = BenchSceneKind;

struct Seen {
    std::unique_ptr<BenchScene> scene;
    smart_ptr<SceneWalk> walk;
};

Seen look(Kind kind, int count, bool moving = false, int frame = 0)
{
    auto scene = makeBenchScene(kind, count, moving);
    scene->setView(512, 512);
    scene->prepare(frame);
    auto walk = SceneWalk::through(*scene->root());
    return {std::move(scene), walk};
}

std::vector<Matrix> placesAt(BenchScene& scene, int frame)
{
    scene.prepare(frame);
    return SceneWalk::through(*scene.root())->places;
}

std::size_t verticesOf(SGSurfaceGeometryReferenceNode const& surface)
{
    return surface.getGeometry()->get()->vertices.size();
}

TEST(BenchSceneKind, NamesLeadBack)
{
    for (Kind const kind : allBenchScenes)
        EXPECT_EQ(benchSceneNamed(nameOf(kind)), kind);
    EXPECT_EQ(nameOf(Kind::skinnedVaried), "skinned-varied");
    for (char const* const name : {"", "Many", "man", "many ", "skinnedVaried"})
        EXPECT_EQ(benchSceneNamed(name), std::nullopt) << name;
}

TEST(BenchSceneKind, UsualCountsArePossible)
{
    std::map<Kind, int> const usual{{Kind::many, 10'000},
                                    {Kind::textured, 2'000},
                                    {Kind::skinned, 64},
                                    {Kind::skinnedVaried, 64},
                                    {Kind::deep, 2'000}};
    for (Kind const kind : allBenchScenes) {
        EXPECT_EQ(usualCount(kind), usual.at(kind));
        EXPECT_LE(usualCount(kind), mostOf(kind));
    }
}

TEST(BenchScene, HasOneLightAndOneCamera)
{
    for (Kind const kind : allBenchScenes) {
        SCOPED_TRACE(nameOf(kind));
        auto const [scene, walk] = look(kind, 5);
        ASSERT_EQ(walk->lights.size(), 1U);
        EXPECT_EQ(walk->lights[0]->lights.size(), 1U);
        ASSERT_EQ(walk->cameras.size(), 1U);
        EXPECT_EQ(walk->cameras[0]->camera->viewport, (quarl::Rect<int>{0, 0, 512, 512}));
        EXPECT_EQ(scene->root()->color, Color());
    }
}

/// All corners of all surfaces lie in the picture, between the clip planes.
void expectAllInView(SceneWalk const& walk, std::string const& what)
{
    CameraBase const& camera = *walk.cameras[0]->camera;
    Matrix const toClip = camera.projection * camera.view;
    for (std::size_t i = 0; i < walk.surfaces.size(); ++i) {
        for (Vector3 const& vertex : walk.surfaces[i]->getGeometry()->get()->vertices) {
            Vector3 const p = transformPoint(walk.places[i], vertex);
            auto const row = [&](int r) {
                return toClip(r, 0) * p.x + toClip(r, 1) * p.y + toClip(r, 2) * p.z + toClip(r, 3);
            };
            double const w = row(3);
            ASSERT_GT(w, 0.0) << what;
            for (int axis = 0; axis < 3; ++axis)
                ASSERT_LE(std::abs(row(axis)), w) << what << ", surface " << i << ", axis " << axis;
        }
    }
}

TEST(BenchScene, EverythingIsInView)
{
    for (Kind const kind : allBenchScenes)
        for (int const count : {1, 7, usualCount(kind)})
            for (auto const& [width, height] : {std::pair(512, 512), std::pair(300, 200), std::pair(64, 480)})
                for (int const frame : {0, 100}) {
                    auto const scene = makeBenchScene(kind, count, frame > 0);
                    scene->setView(width, height);
                    scene->prepare(frame);
                    expectAllInView(*SceneWalk::through(*scene->root()),
                                    std::string(nameOf(kind)) + " of " + std::to_string(count));
                }
}

TEST(BenchScene, DeepChainsStayInView)
{
    auto const [scene, walk] = look(Kind::deep, 50'000);
    expectAllInView(*walk, "50,000 levels");
}

TEST(BenchScene, ManyShareOneCube)
{
    auto const [scene, walk] = look(Kind::many, 50);
    ASSERT_EQ(walk->surfaces.size(), 50U);
    EXPECT_EQ(walk->transforms.size(), 50U);
    EXPECT_EQ(walk->deepest, 1U);
    EXPECT_EQ(verticesOf(*walk->surfaces[0]), 24U);
    EXPECT_EQ(walk->surfaces[0]->getFacets()->get()->facets.size(), 36U);
    std::set<std::tuple<float, float, float>> colors;
    for (auto const* const surface : walk->surfaces) {
        EXPECT_EQ(surface->getGeometry(), walk->surfaces[0]->getGeometry());
        EXPECT_EQ(surface->getFacets(), walk->surfaces[0]->getFacets());
        Color const color = surface->material.ambient;
        EXPECT_EQ(surface->material.diffuse, color);
        colors.emplace(color.r, color.g, color.b);
    }
    EXPECT_EQ(colors.size(), 50U);
}

/// Facets are counter-clockwise from where their corners' normals point.
TEST(BenchScene, ShapesFaceOutwards)
{
    for (Kind const kind : {Kind::many, Kind::textured, Kind::skinned}) {
        auto const [scene, walk] = look(kind, 1);
        auto const& data = *walk->surfaces[0]->getNormals()->get();
        for (std::size_t i = 0; i < data.facets.size(); i += 3) {
            auto const at = [&](std::size_t k) { return static_cast<std::size_t>(data.facets[i + k]); };
            Vector3 const a = data.vertices[at(0)];
            Vector3 const out = cross(data.vertices[at(1)] - a, data.vertices[at(2)] - a);
            for (std::size_t k = 0; k < 3; ++k)
                ASSERT_GT(dot(out, data.normals[at(k)]), 0.0) << nameOf(kind);
            if (kind == Kind::many) {
                EXPECT_GT(dot(out, a), 0.0) << "away from the cube's middle";
            }
        }
    }
}

TEST(BenchScene, TexturedHaveTwoLayersOfSixteenPictures)
{
    auto const [scene, walk] = look(Kind::textured, 40);
    EXPECT_EQ(verticesOf(*walk->surfaces[0]), 400U);
    std::set<SharedImage const*> images;
    for (auto const* const surface : walk->surfaces) {
        ASSERT_EQ(surface->textureLayers.size(), 2U);
        EXPECT_NE(surface->textureLayers[0].texture, surface->textureLayers[1].texture);
        for (SGTextureLayer const& layer : surface->textureLayers) {
            images.insert(layer.texture.get());
            EXPECT_EQ(layer.texture->get()->getWidth(), 64);
            EXPECT_EQ(layer.texture->get()->getHeight(), 64);
            EXPECT_EQ(layer.coordinates, walk->surfaces[0]->textureLayers[0].coordinates);
            EXPECT_EQ(layer.coordinates->get()->coordinates.size(), 400U);
        }
    }
    EXPECT_EQ(images.size(), 16U);
}

TEST(BenchScene, SkinnedHaveTwoInfluencesAVertex)
{
    std::map<Kind, std::size_t> const distinctWeights{{Kind::skinned, 100}, {Kind::skinnedVaried, 9980}};
    for (auto const& [kind, least] : distinctWeights) {
        auto const [scene, walk] = look(kind, 3);
        EXPECT_EQ(verticesOf(*walk->surfaces[0]), 10'000U);
        std::set<SharedBoneTransforms const*> poses;
        for (auto const* const surface : walk->surfaces) {
            EXPECT_EQ(surface->getBoneWeights(), walk->surfaces[0]->getBoneWeights());
            EXPECT_EQ(surface->getBoneTransforms()->get().transforms.size(), 2U);
            poses.insert(surface->getBoneTransforms().get());
        }
        EXPECT_EQ(poses.size(), 3U);
        BoneWeightsData const& weights = *walk->surfaces[0]->getBoneWeights()->get();
        ASSERT_EQ(weights.size(), 10'000U);
        std::set<double> distinct;
        for (std::size_t i = 0; i < weights.size(); ++i) {
            auto const influences = weights.influences(i);
            ASSERT_EQ(influences.size(), 2U);
            EXPECT_GT(influences[0].weight, 0.0);
            EXPECT_GT(influences[1].weight, 0.0);
            EXPECT_DOUBLE_EQ(influences[0].weight + influences[1].weight, 1.0);
            distinct.insert(influences[1].weight);
        }
        EXPECT_GE(distinct.size(), least) << nameOf(kind);
        EXPECT_LE(distinct.size(), kind == Kind::skinned ? 100U : 10'000U);
    }
}

TEST(BenchScene, EverySheetHasANewPoseInEveryFrame)
{
    auto const [scene, walk] = look(Kind::skinned, 4);
    std::map<SGSurfaceGeometryReferenceNode const*, std::set<double>> bends; // of all frames
    for (int frame = 0; frame < 10; ++frame) {
        std::set<double> ofFrame;
        scene->prepare(frame);
        for (auto const* const surface : walk->surfaces) {
            double const bend = surface->getBoneTransforms()->get().transforms[0].rotation[2];
            bends[surface].insert(bend);
            ofFrame.insert(bend);
        }
        EXPECT_EQ(ofFrame.size(), 4U) << frame;
    }
    for (auto const& [surface, ofSurface] : bends)
        EXPECT_EQ(ofSurface.size(), 10U);
}

TEST(BenchScene, DeepHasACubeAtEveryTenthLevel)
{
    auto const [scene, walk] = look(Kind::deep, 200);
    EXPECT_EQ(walk->transforms.size(), 201U);
    EXPECT_EQ(walk->deepest, 201U) << "one above the other, below the one that turns";
    EXPECT_EQ(walk->surfaces.size(), 20U);
}

TEST(BenchScene, WhatMovesByItself)
{
    auto const changes = [](Kind kind, bool moving) {
        auto const scene = makeBenchScene(kind, 20, moving);
        auto const first = placesAt(*scene, 0);
        auto const later = placesAt(*scene, 3);
        std::size_t count = 0;
        for (std::size_t i = 0; i < first.size(); ++i)
            count += first[i] == later[i] ? 0 : 1;
        return count;
    };
    for (Kind const kind : {Kind::many, Kind::textured, Kind::skinned, Kind::skinnedVaried}) {
        EXPECT_EQ(changes(kind, false), 0U) << nameOf(kind);
        EXPECT_EQ(changes(kind, true), 20U) << nameOf(kind);
    }
    EXPECT_EQ(changes(Kind::deep, false), 2U) << "the top turns all that is below it";
}

TEST(BenchScene, MovingSetsEveryTransformAnew)
{
    for (Kind const kind : allBenchScenes) {
        auto const [scene, walk] = look(kind, 30, true);
        std::vector<Transform> before;
        for (auto const* const node : walk->transforms)
            before.push_back(node->transform);
        scene->prepare(7);
        for (std::size_t i = 0; i < before.size(); ++i)
            EXPECT_NE(walk->transforms[i]->transform, before[i]) << nameOf(kind) << ' ' << i;
    }
}

TEST(BenchScene, AFramesNumberAloneDecides)
{
    for (Kind const kind : allBenchScenes) {
        auto const one = makeBenchScene(kind, 10, true);
        auto const other = makeBenchScene(kind, 10, true);
        for (int frame = 0; frame < 5; ++frame)
            one->prepare(frame);
        EXPECT_EQ(placesAt(*one, 5), placesAt(*other, 5)) << nameOf(kind);
    }
}

} // namespace
