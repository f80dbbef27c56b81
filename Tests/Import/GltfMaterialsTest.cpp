#include "Tests/Import/GltfBuilder.h"
#include "Tests/Import/TestFolder.h"
#include "Viewer/Import/Importer.h"

#include <gtest/gtest.h>

#include <cmath>

namespace sgview {

namespace {

/// A bitmap of 1 by 2 pixels: red above blue.
std::vector<std::uint8_t> const redAboveBlue{
    'B', 'M', 62, 0, 0, 0, 0, 0, 0, 0, 54, 0, 0, 0, 40, 0, 0, 0, 1, 0, 0, 0, 2, 0,   0, 0, 1, 0, 24, 0,   0,
    0,   0,   0,  8, 0, 0, 0, 0, 0, 0, 0,  0, 0, 0, 0,  0, 0, 0, 0, 0, 0, 0, 0, 255, 0, 0, 0, 0, 0,  255, 0};

class GltfMaterialsTest : public ::testing::Test {
protected:
    GltfMaterialsTest()
    {
        nlohmann::json& primitive = builder_.triangle();
        primitive["material"] = 0;
        primitive["attributes"]["TEXCOORD_0"] = builder_.floats("VEC2", {0, 0, 1, 0, 0, 1});
        builder_.node({{"mesh", 0}});
        builder_.json["textures"] = {{{"source", 0}}};
        builder_.json["images"] = {{{"uri", "red.bmp"}}};
    }

    Model import(nlohmann::json const& material)
    {
        builder_.json["materials"] = {material};
        return importModel(folder_.write("model.glb", builder_.glb()), {});
    }

    TestFolder folder_;
    GltfBuilder builder_;
    nlohmann::json const textured_{{"pbrMetallicRoughness", {{"baseColorTexture", {{"index", 0}}}}}};
};

} // namespace

TEST_F(GltfMaterialsTest, TurnsBaseColourIntoAmbientAndDiffuse)
{
    Model const model = import(
        {{"name", "paint"},
         {"pbrMetallicRoughness",
          {{"baseColorFactor", {0.25, 0.5, 1.0, 0.5}}, {"metallicFactor", 1.0}, {"roughnessFactor", 0.5}}},
         {"emissiveFactor", {0.1, 0.2, 0.3}}});
    ModelMaterial const& material = model.materials[0];
    EXPECT_EQ(material.name, "paint");
    EXPECT_EQ(material.diffuse,
              (std::array<float, 4>{0.25F, 0.5F, 1.0F, 1.0F})); // opaque: alpha does not count
    EXPECT_EQ(material.ambient, material.diffuse);
    EXPECT_FLOAT_EQ(material.specular[1], 0.25F); // base colour times glossiness
    EXPECT_FLOAT_EQ(material.shininess, 30.0F);
    EXPECT_FLOAT_EQ(material.emissive[2], 0.3F);
    EXPECT_FALSE(material.blending);
}

TEST_F(GltfMaterialsTest, BlendsWhereTheFileSaysSo)
{
    nlohmann::json material{{"pbrMetallicRoughness", {{"baseColorFactor", {1, 1, 1, 0.5}}}},
                            {"alphaMode", "BLEND"}};
    material["extensions"]["KHR_materials_unlit"] = nlohmann::json::object();
    Model const model = import(material);
    EXPECT_TRUE(model.materials[0].blending);
    EXPECT_TRUE(model.materials[0].unlit);
    EXPECT_EQ(model.materials[0].diffuse[3], 0.5F);
}

TEST_F(GltfMaterialsTest, IgnoresVertexAlphaWhereTheMaterialIsOpaque)
{
    builder_.json["meshes"][0]["primitives"][0]["attributes"]["COLOR_0"] =
        builder_.floats("VEC4", {1, 0, 0, 0.3F, 1, 0, 0, 0.3F, 1, 0, 0, 0.3F});
    auto const drawn = [&](char const* mode) {
        Model const model = import({{"alphaMode", mode}});
        return model.materials[static_cast<std::size_t>(model.surfaces[0].material)];
    };
    EXPECT_FALSE(drawn("OPAQUE").blending);
    EXPECT_EQ(drawn("OPAQUE").diffuse, (std::array<float, 4>{1, 0, 0, 1}));
    EXPECT_TRUE(drawn("BLEND").blending);
    EXPECT_FLOAT_EQ(drawn("BLEND").diffuse[3], 0.3F);
}

TEST_F(GltfMaterialsTest, ShowsTheEmissiveTextureOfABlackSurface)
{
    folder_.write("red.bmp", redAboveBlue);
    nlohmann::json label{{"pbrMetallicRoughness", {{"baseColorFactor", {0, 0, 0, 1}}}},
                         {"emissiveFactor", {1.0, 0.5, 0.25}},
                         {"emissiveTexture", {{"index", 0}}}};
    Model const model = import(label);
    EXPECT_EQ(model.materials[0].textures.size(), 1U);
    EXPECT_TRUE(model.materials[0].unlit);
    EXPECT_EQ(model.materials[0].diffuse, (std::array<float, 4>{1.0F, 0.5F, 0.25F, 1.0F}));
    EXPECT_TRUE(model.warnings.empty());

    label["pbrMetallicRoughness"]["baseColorFactor"] = {0.5, 0, 0, 1};
    Model const painted = import(label);
    EXPECT_TRUE(painted.materials[0].textures.empty());
    EXPECT_FALSE(painted.materials[0].unlit);
    EXPECT_EQ(painted.warnings.size(), 1U);
}

TEST_F(GltfMaterialsTest, BeginsPicturesAtTheTop)
{
    folder_.write("red.bmp", redAboveBlue);
    Model const model = import(textured_);
    ASSERT_EQ(model.images.size(), 1U);
    EXPECT_EQ(model.images[0].rows, (std::vector<std::uint8_t>{255, 0, 0, 0, 0, 0, 255, 0}));
    EXPECT_EQ(model.materials[0].textures.size(), 1U);
    EXPECT_EQ(model.surfaces[0].coordinates[0][2], (std::array<double, 2>{0.0, 1.0}));
}

TEST_F(GltfMaterialsTest, ReadsPicturesInTheFile)
{
    int const view = builder_.view(redAboveBlue);
    builder_.json["images"] = {{{"bufferView", view}, {"mimeType", "image/bmp"}}};
    EXPECT_EQ(import(textured_).images[0].rows[0], 255);
    builder_.json["bufferViews"][static_cast<std::size_t>(view)]["byteLength"] = 5000;
    Model const broken = import(textured_);
    EXPECT_TRUE(broken.images.empty());
    EXPECT_EQ(broken.warnings.size(), 1U);
}

TEST_F(GltfMaterialsTest, NamesATextureThatIsMissing)
{
    Model const model = import(textured_);
    EXPECT_TRUE(model.materials[0].textures.empty());
    EXPECT_EQ(model.warnings, std::vector<std::string>{"texture 'red.bmp': not found"});
}

TEST_F(GltfMaterialsTest, RefusesTexturesOutsideItsFolder)
{
    TestFolder other;
    other.write("secret.bmp", redAboveBlue);
    builder_.json["images"] = {{{"uri", (other.path() / "secret.bmp").string()}}};
    Model const model = import(textured_);
    EXPECT_TRUE(model.images.empty());
    ASSERT_EQ(model.warnings.size(), 1U);
    EXPECT_NE(model.warnings[0].find("an absolute path, refused"), std::string::npos) << model.warnings[0];
}

TEST_F(GltfMaterialsTest, TurnsCoordinatesCounterClockwise)
{
    folder_.write("red.bmp", redAboveBlue);
    nlohmann::json material = textured_;
    material["pbrMetallicRoughness"]["baseColorTexture"]["extensions"]["KHR_texture_transform"] = {
        {"offset", {-0.2, -0.1}}, {"rotation", 0.3}, {"scale", {1.5, 1.5}}};
    auto const set = import(material).surfaces[0].coordinates[0];
    EXPECT_NEAR(set[0][0], -0.2, 1e-12);
    EXPECT_NEAR(set[0][1], -0.1, 1e-12);
    EXPECT_NEAR(set[1][0], 1.5 * std::cos(0.3) - 0.2, 1e-12);
    EXPECT_NEAR(set[1][1], -1.5 * std::sin(0.3) - 0.1, 1e-12);
}

} // namespace sgview
