#include "Viewer/Import/MaterialTable.h"
#include "Viewer/Import/ModelCheck.h"

#include <gtest/gtest.h>

namespace sgview {

namespace {

ModelSurface triangle()
{
    ModelSurface surface;
    surface.name = "triangle";
    surface.positions = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    return surface;
}

MaterialPlan planWithLayers(std::size_t count)
{
    MaterialPlan plan;
    for (std::size_t i = 0; i < count; ++i) {
        plan.material.textures.push_back({static_cast<Index>(i), 0, false});
        plan.sources.push_back({0, {1, 0, static_cast<double>(i), 0, 1, 0}});
    }
    return plan;
}

CoordinateSet const corners{{0, 0}, {1, 0}, {0, 1}};

} // namespace

TEST(MaterialTable, MapsCoordinatesForEachLayer)
{
    Warnings warnings;
    MaterialTable table(warnings);
    std::size_t const plan = table.add(planWithLayers(2));
    ModelSurface surface = triangle();
    table.dress(surface, plan, {corners}, {});
    ASSERT_EQ(surface.coordinates.size(), 2U);
    EXPECT_EQ(surface.coordinates[0], corners);
    EXPECT_EQ(surface.coordinates[1][1], (std::array<double, 2>{2.0, 0.0}));
    ModelMaterial const material = table.take()[0];
    EXPECT_EQ(material.textures[1].coordinates, 1);
}

TEST(MaterialTable, LeavesOutLayersWithoutCoordinates)
{
    Warnings warnings;
    MaterialTable table(warnings);
    std::size_t const plan = table.add(planWithLayers(1));
    ModelSurface bare = triangle();
    table.dress(bare, plan, {}, {});
    ModelSurface dressed = triangle();
    table.dress(dressed, plan, {corners}, {});
    std::vector<ModelMaterial> const materials = table.take();
    EXPECT_NE(bare.material, dressed.material);
    EXPECT_TRUE(materials[static_cast<std::size_t>(bare.material)].textures.empty());
    EXPECT_EQ(materials[static_cast<std::size_t>(dressed.material)].textures.size(), 1U);
    EXPECT_EQ(warnings.take().size(), 1U);
}

TEST(MaterialTable, KnowsHowManyLayersTheRendererTakes)
{
    Warnings warnings;
    MaterialTable table(warnings);
    std::size_t const plan = table.add(planWithLayers(10));
    ModelSurface plain = triangle();
    table.dress(plain, plan, {corners}, {});
    EXPECT_EQ(plain.coordinates.size(), mostLayers);
    ModelSurface skinned = triangle();
    skinned.skin = 0;
    table.dress(skinned, plan, {corners}, {});
    EXPECT_EQ(skinned.coordinates.size(), mostLayersOfSkinned);
}

TEST(MaterialTable, TakesInAColourThatAllVerticesShare)
{
    Warnings warnings;
    MaterialTable table(warnings);
    std::size_t const plan = table.add({});
    ModelSurface tinted = triangle();
    table.dress(tinted, plan, {}, std::vector<Colour>(3, {0.5F, 1.0F, 0.0F, 0.5F}));
    ModelSurface white = triangle();
    table.dress(white, plan, {}, std::vector<Colour>(3, {1, 1, 1, 1}));
    ModelSurface mixed = triangle();
    table.dress(mixed, plan, {}, {{1, 0, 0, 1}, {0, 1, 0, 1}, {0, 0, 1, 1}});
    EXPECT_EQ(white.material, mixed.material);
    ModelSurface faded = triangle();
    table.dress(faded, plan, {}, {{0.5F, 1, 0, 0.1F}, {0.5F, 1, 0, 0.5F}, {0.5F, 1, 0, 1}});
    EXPECT_EQ(faded.material, tinted.material);

    ModelMaterial const material = table.take()[static_cast<std::size_t>(tinted.material)];
    EXPECT_FLOAT_EQ(material.diffuse[0], 0.4F);
    EXPECT_FLOAT_EQ(material.diffuse[2], 0.0F);
    EXPECT_FLOAT_EQ(material.diffuse[3], 1.0F);
    EXPECT_FALSE(material.blending);
    EXPECT_EQ(warnings.take(),
              std::vector<std::string>{"'triangle': vertex colours that differ are not drawn"});
}

TEST(MaterialTable, TakesInAlphaWhereTheMaterialBlends)
{
    Warnings warnings;
    MaterialTable table(warnings);
    MaterialPlan glass;
    glass.material.blending = true;
    std::size_t const plan = table.add(glass);
    ModelSurface half = triangle();
    table.dress(half, plan, {}, std::vector<Colour>(3, {1, 1, 1, 0.5F}));
    ModelSurface unset = triangle();
    table.dress(unset, plan, {}, std::vector<Colour>(3, {1, 0, 0, 0}));
    std::vector<ModelMaterial> const materials = table.take();
    EXPECT_FLOAT_EQ(materials[static_cast<std::size_t>(half.material)].diffuse[3], 0.5F);
    EXPECT_TRUE(materials[static_cast<std::size_t>(half.material)].blending);
    EXPECT_EQ(materials[static_cast<std::size_t>(unset.material)].diffuse, glass.material.diffuse);
}

} // namespace sgview
