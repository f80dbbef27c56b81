#include "Tests/Import/GltfBuilder.h"
#include "Tests/Import/TestFolder.h"
#include "Viewer/Import/ImportError.h"
#include "Viewer/Import/Importer.h"

#include <gtest/gtest.h>

namespace sgview {

namespace {

class GltfReaderTest : public ::testing::Test {
protected:
    Model import(GltfBuilder const& builder)
    {
        return importModel(folder_.write("model.glb", builder.glb()), {});
    }

    ImportFailure failure(GltfBuilder const& builder)
    {
        try {
            (void)import(builder);
        } catch (ImportError const& error) {
            message_ = error.what();
            return error.failure();
        }
        ADD_FAILURE() << "imported";
        return ImportFailure::crashed;
    }

    /// A triangle hanging on two joints; the test adds weights and inverse bind matrices.
    static GltfBuilder skinned()
    {
        GltfBuilder builder;
        builder.triangle();
        builder.node({{"mesh", 0}, {"skin", 0}, {"translation", {5, 0, 0}}});
        builder.node({{"name", "hip"}, {"children", {2}}, {"translation", {0, 1, 0}}});
        builder.json["nodes"].push_back({{"name", "knee"}, {"translation", {0, 2, 0}}});
        builder.json["skins"] = {{{"joints", {1, 2}}}};
        return builder;
    }

    static nlohmann::json& attributes(GltfBuilder& builder)
    {
        return builder.json["meshes"][0]["primitives"][0]["attributes"];
    }

    TestFolder folder_;
    std::string message_;
};

std::vector<std::uint8_t> const jointsOfThree{0, 1, 0, 0, 0, 1, 0, 0, 1, 0, 0, 0};

void expectWeights(ModelSurface const& surface)
{
    ASSERT_EQ(surface.influenceOffsets, (std::vector<std::int32_t>{0, 2, 3, 4}));
    EXPECT_NEAR(surface.influences[0].weight, 0.8, 1e-12);
    EXPECT_NEAR(surface.influences[1].weight, 0.2, 1e-12);
    EXPECT_EQ(surface.influences[0].bone, 0);
    EXPECT_EQ(surface.influences[1].bone, 1);
    EXPECT_EQ(surface.influences[2].weight, 1.0);
    EXPECT_EQ(surface.influences[3].bone, 1);
}

} // namespace

TEST_F(GltfReaderTest, ReadsATriangleWithNormalsMade)
{
    GltfBuilder builder;
    builder.triangle();
    builder.node({{"mesh", 0}, {"translation", {1, 2, 3}}, {"scale", {2, 2, 2}}});
    Model const model = import(builder);
    ASSERT_EQ(model.surfaces.size(), 1U);
    EXPECT_EQ(model.format, "glTF 2.0 (binary)");
    EXPECT_EQ(model.surfaces[0].positions, (std::vector<Vector3>{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}));
    EXPECT_EQ(model.surfaces[0].normals, (std::vector<Vector3>(3, {0, 0, 1})));
    EXPECT_EQ(model.nodes[0].translation, Vector3(1, 2, 3));
    EXPECT_EQ(model.nodes[0].surfaces, std::vector<Index>{0});
}

TEST_F(GltfReaderTest, ReadsWeightsOfEveryType)
{
    {
        GltfBuilder builder = skinned();
        attributes(builder)["JOINTS_0"] = builder.bytes("VEC4", jointsOfThree, false);
        attributes(builder)["WEIGHTS_0"] =
            builder.bytes("VEC4", {204, 51, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0}, true);
        expectWeights(import(builder).surfaces[0]);
    }
    {
        GltfBuilder builder = skinned();
        attributes(builder)["JOINTS_0"] =
            builder.shorts("VEC4", {jointsOfThree.begin(), jointsOfThree.end()}, false);
        attributes(builder)["WEIGHTS_0"] =
            builder.shorts("VEC4", {52428, 13107, 0, 0, 65535, 0, 0, 0, 65535, 0, 0, 0}, true);
        expectWeights(import(builder).surfaces[0]);
    }
    {
        GltfBuilder builder = skinned();
        attributes(builder)["JOINTS_0"] = builder.bytes("VEC4", jointsOfThree, false);
        attributes(builder)["WEIGHTS_0"] = builder.floats("VEC4", {4, 1, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0});
        expectWeights(import(builder).surfaces[0]);
    }
}

TEST_F(GltfReaderTest, ReadsSeveralSetsOfWeights)
{
    GltfBuilder builder = skinned();
    builder.json["skins"][0]["joints"] = {1, 2, 1, 2, 1, 2};
    std::vector<std::uint8_t> first;
    std::vector<std::uint8_t> second;
    std::vector<float> strong;
    std::vector<float> weak;
    for (int vertex = 0; vertex < 3; ++vertex) {
        first.insert(first.end(), {0, 1, 2, 3});
        second.insert(second.end(), {4, 5, 0, 0});
        strong.insert(strong.end(), {0.1F, 0.2F, 0.1F, 0.2F});
        weak.insert(weak.end(), {0.3F, 0.05F, 0.0F, 0.0F});
    }
    attributes(builder)["JOINTS_0"] = builder.bytes("VEC4", first, false);
    attributes(builder)["JOINTS_1"] = builder.bytes("VEC4", second, false);
    attributes(builder)["WEIGHTS_0"] = builder.floats("VEC4", strong);
    attributes(builder)["WEIGHTS_1"] = builder.floats("VEC4", weak);
    ModelSurface const surface = import(builder).surfaces[0];
    EXPECT_EQ(surface.mostInfluencesInFile, 6);
    EXPECT_EQ(surface.droppedInfluences, 6);
    EXPECT_EQ(surface.influences[0].bone, 4);
    EXPECT_NEAR(surface.influences[0].weight, 0.3 / 0.8, 1e-6);
}

TEST_F(GltfReaderTest, TakesTheIdentityWhereBindMatricesAreMissing)
{
    GltfBuilder builder = skinned();
    attributes(builder)["JOINTS_0"] = builder.bytes("VEC4", jointsOfThree, false);
    attributes(builder)["WEIGHTS_0"] =
        builder.bytes("VEC4", {255, 0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0}, true);
    Model const model = import(builder);
    ASSERT_EQ(model.skins[0].bones.size(), 2U);
    EXPECT_EQ(model.skins[0].bones[1].inverseBind, Matrix());
    EXPECT_EQ(model.nodes[static_cast<std::size_t>(model.skins[0].bones[1].node)].name, "knee");
}

TEST_F(GltfReaderTest, ReadsBindMatricesByColumns)
{
    GltfBuilder builder = skinned();
    attributes(builder)["JOINTS_0"] = builder.bytes("VEC4", jointsOfThree, false);
    attributes(builder)["WEIGHTS_0"] =
        builder.bytes("VEC4", {255, 0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0}, true);
    std::vector<float> matrices(32, 0.0F);
    for (std::size_t i : {0U, 5U, 10U, 15U})
        matrices[i] = matrices[16 + i] = 1.0F;
    matrices[13] = -1.0F;
    builder.json["skins"][0]["inverseBindMatrices"] = builder.floats("MAT4", matrices);
    EXPECT_EQ(import(builder).skins[0].bones[0].inverseBind, Matrix::translationMatrix({0, -1, 0}));

    builder.json["skins"][0]["inverseBindMatrices"] = builder.floats("MAT4", std::vector<float>(16, 1.0F));
    EXPECT_EQ(failure(builder), ImportFailure::broken);
    EXPECT_NE(message_.find("too few inverse bind matrices"), std::string::npos) << message_;
}

TEST_F(GltfReaderTest, LeavesUnboundVerticesWithTheirNode)
{
    GltfBuilder builder = skinned();
    attributes(builder)["JOINTS_0"] = builder.bytes("VEC4", jointsOfThree, false);
    attributes(builder)["WEIGHTS_0"] = builder.bytes("VEC4", {0, 0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0}, true);
    Model const model = import(builder);
    ModelInfluence const influence = model.surfaces[0].influences[0];
    ASSERT_EQ(influence.bone, 2);
    EXPECT_EQ(model.skins[0].bones[2].inverseBind, Matrix());
    EXPECT_EQ(model.nodes[static_cast<std::size_t>(model.skins[0].bones[2].node)].translation,
              Vector3(5, 0, 0));
}

TEST_F(GltfReaderTest, RefusesAJointThatDoesNotExist)
{
    GltfBuilder builder = skinned();
    attributes(builder)["JOINTS_0"] = builder.bytes("VEC4", std::vector<std::uint8_t>(12, 2), false);
    attributes(builder)["WEIGHTS_0"] = builder.bytes("VEC4", std::vector<std::uint8_t>(12, 255), true);
    EXPECT_EQ(failure(builder), ImportFailure::broken);
}

TEST_F(GltfReaderTest, RefusesNodesInARing)
{
    GltfBuilder builder;
    builder.triangle();
    builder.node({{"mesh", 0}, {"children", {1}}});
    builder.json["nodes"].push_back({{"children", {0}}});
    EXPECT_EQ(failure(builder), ImportFailure::broken);
    EXPECT_NE(message_.find("its own ancestor"), std::string::npos) << message_;
    builder.json["nodes"][1]["children"] = {7};
    EXPECT_EQ(failure(builder), ImportFailure::broken);
}

TEST_F(GltfReaderTest, ReadsDeepHierarchies)
{
    constexpr int depth = 20000;
    GltfBuilder builder;
    builder.triangle();
    builder.node({{"children", {1}}});
    for (int i = 1; i < depth; ++i)
        builder.json["nodes"].push_back({{"children", {i + 1}}});
    builder.json["nodes"].push_back({{"mesh", 0}});
    EXPECT_EQ(import(builder).nodes.size(), static_cast<std::size_t>(depth) + 1);
}

TEST_F(GltfReaderTest, FindsNodesWithoutAScene)
{
    GltfBuilder builder;
    builder.triangle();
    builder.node({{"mesh", 0}});
    builder.json.erase("scene");
    EXPECT_EQ(import(builder).surfaces.size(), 1U);
    builder.json.erase("scenes");
    EXPECT_EQ(import(builder).surfaces.size(), 1U);
}

TEST_F(GltfReaderTest, TurnsLinesIntoCurves)
{
    GltfBuilder builder;
    nlohmann::json& primitive = builder.triangle();
    builder.node({{"mesh", 0}});
    primitive["mode"] = 2;
    Model const loop = import(builder);
    ASSERT_EQ(loop.curves.size(), 1U);
    EXPECT_TRUE(loop.curves[0].closed);
    EXPECT_EQ(loop.curves[0].positions.size(), 3U);
    builder.json["meshes"][0]["primitives"][0]["mode"] = 3;
    EXPECT_FALSE(import(builder).curves[0].closed);
}

TEST_F(GltfReaderTest, TellsPointsFromNothing)
{
    GltfBuilder builder;
    builder.triangle()["mode"] = 0;
    EXPECT_EQ(failure(builder), ImportFailure::nothingToDraw);
    builder.node({{"mesh", 0}});
    EXPECT_EQ(failure(builder), ImportFailure::pointCloud);
}

TEST_F(GltfReaderTest, KeepsTheWindingOfStripsAndFans)
{
    for (int const mode : {5, 6}) {
        GltfBuilder builder;
        // Around the origin for the fan, zigzag for the strip: both counter-clockwise.
        std::vector<float> const strip{0, 0, 0, 1, 0, 0, 0, 1, 0, 1, 1, 0};
        std::vector<float> const fan{0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0};
        int const positions = builder.floats("VEC3", mode == 5 ? strip : fan);
        builder.json["meshes"] = {
            {{"primitives", {{{"attributes", {{"POSITION", positions}}}, {"mode", mode}}}}}};
        builder.node({{"mesh", 0}});
        ModelSurface const surface = import(builder).surfaces[0];
        ASSERT_EQ(surface.facets.size(), 6U);
        for (Vector3 const& normal : surface.normals)
            EXPECT_EQ(normal, Vector3(0, 0, 1)) << mode;
    }
}

TEST_F(GltfReaderTest, BakesMorphTargetsAtRest)
{
    GltfBuilder builder;
    nlohmann::json& primitive = builder.triangle();
    int const offsets = builder.floats("VEC3", {0, 0, 1, 0, 0, 1, 0, 0, 1});
    primitive["targets"] = {{{"POSITION", offsets}}};
    builder.json["meshes"][0]["weights"] = {0.5};
    builder.node({{"mesh", 0}});
    builder.node({{"mesh", 0}, {"weights", {2.0}}});
    Model const model = import(builder);
    EXPECT_EQ(model.surfaces[0].positions[0].z, 0.5);
    EXPECT_EQ(model.surfaces[1].positions[0].z, 2.0);
}

TEST_F(GltfReaderTest, AppliesSparseAccessors)
{
    GltfBuilder builder;
    builder.triangle();
    builder.node({{"mesh", 0}});
    int const places = builder.view({2});
    std::vector<std::uint8_t> value(12, 0);
    value[10] = 0x80;
    value[11] = 0x40; // z = 4
    int const values = builder.view(value);
    builder.json["accessors"][0]["sparse"] = {{"count", 1},
                                              {"indices", {{"bufferView", places}, {"componentType", 5121}}},
                                              {"values", {{"bufferView", values}}}};
    EXPECT_EQ(import(builder).surfaces[0].positions[2], Vector3(0, 0, 4));
    builder.json["accessors"][0]["sparse"]["count"] = 1000;
    EXPECT_EQ(failure(builder), ImportFailure::broken);
}

TEST_F(GltfReaderTest, RefusesAccessorsThatLie)
{
    for (auto const& [key, value] :
         std::vector<std::pair<std::string, nlohmann::json>>{{"count", 4},
                                                             {"count", 4294967296ULL},
                                                             {"byteOffset", 4},
                                                             {"byteOffset", 4294967295ULL},
                                                             {"bufferView", 5},
                                                             {"componentType", 5130},
                                                             {"type", "VEC2"}}) {
        GltfBuilder builder;
        builder.triangle();
        builder.node({{"mesh", 0}});
        builder.json["accessors"][0][key] = value;
        EXPECT_EQ(failure(builder), ImportFailure::broken) << key << value;
    }
    GltfBuilder builder;
    builder.triangle();
    builder.node({{"mesh", 0}});
    builder.json["accessors"][0].erase("bufferView");
    builder.json["accessors"][0]["count"] = 4000000000U;
    EXPECT_EQ(failure(builder), ImportFailure::tooBig);
}

TEST_F(GltfReaderTest, RefusesRequiredExtensionsThatItDoesNotKnow)
{
    GltfBuilder builder;
    builder.triangle();
    builder.node({{"mesh", 0}});
    builder.json["extensionsRequired"] = {"KHR_draco_mesh_compression"};
    EXPECT_EQ(failure(builder), ImportFailure::formatNotRead);
}

TEST_F(GltfReaderTest, ReadsBuffersOnlyFromItsFolder)
{
    GltfBuilder builder;
    builder.triangle();
    builder.node({{"mesh", 0}});
    nlohmann::json document = builder.json;
    std::string const glb = builder.glb();
    std::string const data = glb.substr(glb.size() - 36);
    auto const write = [&](std::string const& uri) {
        document["buffers"] = {{{"byteLength", 36}, {"uri", uri}}};
        return folder_.write("sub/model.gltf", document.dump());
    };
    folder_.write("data.bin", data);
    std::filesystem::path const file = write("../data.bin");
    try {
        (void)importModel(file, {});
        ADD_FAILURE() << "imported";
    } catch (ImportError const& error) {
        EXPECT_EQ(error.failure(), ImportFailure::refusedPath) << error.what();
    }
    folder_.write("sub/my data.bin", data + "more than the buffer says");
    EXPECT_EQ(importModel(write("my%20data.bin"), {}).surfaces.size(), 1U);
    EXPECT_THROW((void)importModel(write("absent.bin"), {}), ImportError);
}

TEST_F(GltfReaderTest, RefusesJsonNestedTooDeeply)
{
    std::string const deep = R"({"asset":{"version":"2.0"},"extras":)" + std::string(100000, '[');
    EXPECT_THROW((void)importModel(folder_.write("deep.gltf", deep), {}), ImportError);
}

} // namespace sgview
