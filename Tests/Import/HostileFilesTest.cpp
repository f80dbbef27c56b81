#include "Tests/Import/GltfBuilder.h"
#include "Tests/Import/TestFolder.h"
#include "Viewer/Import/ImportError.h"
#include "Viewer/Import/ImportSupervisor.h"
#include "Viewer/Import/Importer.h"

#include <gtest/gtest.h>

#include <random>

namespace sgview {

namespace {

/// A file with something of everything: a skin, an animation, indices, a picture.
std::string richGlb()
{
    GltfBuilder builder;
    nlohmann::json& primitive = builder.triangle();
    int const indices = builder.bytes("SCALAR", {0, 1, 2}, false);
    primitive["indices"] = indices;
    primitive["material"] = 0;
    primitive["attributes"]["TEXCOORD_0"] = builder.floats("VEC2", {0, 0, 1, 0, 0, 1});
    primitive["attributes"]["JOINTS_0"] = builder.bytes("VEC4", std::vector<std::uint8_t>(12, 0), false);
    primitive["attributes"]["WEIGHTS_0"] = builder.bytes("VEC4", std::vector<std::uint8_t>(12, 255), true);
    builder.node({{"mesh", 0}, {"skin", 0}});
    builder.json["skins"] = {
        {{"joints", {0}}, {"inverseBindMatrices", builder.floats("MAT4", std::vector<float>(16, 1))}}};
    int const times = builder.floats("SCALAR", {0, 1});
    int const moves = builder.floats("VEC3", {0, 0, 0, 1, 1, 1});
    builder.json["animations"] = {
        {{"channels", {{{"sampler", 0}, {"target", {{"node", 0}, {"path", "translation"}}}}}},
         {"samplers", {{{"input", times}, {"output", moves}}}}}};
    builder.json["images"] = {
        {{"bufferView", builder.view(std::vector<std::uint8_t>(40, 'B'))}, {"mimeType", "image/png"}}};
    builder.json["textures"] = {{{"source", 0}}};
    builder.json["materials"] = {{{"pbrMetallicRoughness", {{"baseColorTexture", {{"index", 0}}}}}}};
    return builder.glb();
}

/// \return whether it was imported; a failure is a line that names the file
bool survives(std::filesystem::path const& file)
{
    try {
        return !importModel(file, {}).nodes.empty();
    } catch (ImportError const& error) {
        EXPECT_TRUE(std::string(error.what()).starts_with(file.string() + ": ")) << error.what();
        EXPECT_EQ(std::string(error.what()).find('\n'), std::string::npos);
        return false;
    }
}

} // namespace

TEST(HostileFiles, EveryTruncationOfAGlbIsRefused)
{
    TestFolder const folder;
    std::string const whole = richGlb();
    ASSERT_TRUE(survives(folder.write("whole.glb", whole)));
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_FALSE(survives(folder.write("cut.glb", whole.substr(0, size)))) << size;
}

TEST(HostileFiles, NoByteOfAGlbBringsTheReaderDown)
{
    TestFolder const folder;
    std::string const whole = richGlb();
    std::mt19937 random(3);
    int imported = 0;
    for (int round = 0; round < 3000; ++round) {
        std::string hostile = whole;
        for (std::uint32_t i = 0; i <= random() % 4; ++i)
            hostile[random() % hostile.size()] = static_cast<char>(random());
        imported += survives(folder.write("hostile.glb", hostile)) ? 1 : 0;
    }
    EXPECT_GT(imported, 0) << "some bytes are only pictures and numbers";
    EXPECT_LT(imported, 3000) << "some bytes are lengths";
}

TEST(HostileFiles, EveryTruncationOfAnObjEndsWell)
{
    TestFolder const folder;
    std::string const whole =
        "# a triangle\nv 0 0 0\nv 1 0 0\nv 0 1 0\nvt 0 0\nvn 0 0 1\nf 1/1/1 2/1/1 3/1/1\n";
    ASSERT_TRUE(survives(folder.write("whole.obj", whole)));
    for (std::size_t size = 0; size < whole.size(); ++size)
        survives(folder.write("cut.obj", whole.substr(0, size)));
}

TEST(HostileFiles, NoByteOfAnyFormatBringsTheProgramDown)
{
    TestFolder const folder;
    std::string const stl =
        "solid a\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\nvertex 0 1 0\n"
        "endloop\nendfacet\nendsolid a\n";
    std::string const off = "OFF\n3 1 0\n0 0 0\n1 0 0\n0 1 0\n3 0 1 2\n";
    std::mt19937 random(5);
    for (int round = 0; round < 40; ++round) {
        std::string hostile = round % 2 == 0 ? stl : off;
        for (int i = 0; i < 3; ++i)
            hostile[random() % hostile.size()] = static_cast<char>(random());
        try {
            EXPECT_FALSE(
                superviseImport(folder.write(round % 2 == 0 ? "a.stl" : "a.off", hostile), {}).nodes.empty());
        } catch (ImportError const& error) {
            EXPECT_NE(std::string(error.what()), "");
        }
    }
}

TEST(HostileFiles, HugeCountsInSmallFilesAreRefused)
{
    TestFolder const folder;
    try {
        (void)superviseImport(folder.write("a.off", "OFF\n999999999999 1 0\n0 0 0\n1 0 0\n0 1 0\n3 0 1 2\n"),
                              {});
        ADD_FAILURE() << "imported";
    } catch (ImportError const& error) {
        EXPECT_NE(error.failure(), ImportFailure::timedOut) << error.what();
    }
}

} // namespace sgview
