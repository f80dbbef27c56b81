#include "Tests/Import/TestFolder.h"
#include "Viewer/Import/ImportError.h"
#include "Viewer/Import/Importer.h"

#include <gtest/gtest.h>

namespace sgview {

namespace {

std::string const quad = "mtllib paint.mtl\nusemtl paint\n"
                         "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\n"
                         "vt 0 0\nvt 1 0\nvt 1 1\nvt 0 1\n"
                         "f 1/1 2/2 3/3 4/4\n";

/// 1 by 2 pixels, red above blue.
std::vector<std::uint8_t> const redAboveBlue{0, 0, 2, 0, 0,  0, 0,   0, 0, 0, 0, 0,
                                             1, 0, 2, 0, 24, 0, 255, 0, 0, 0, 0, 255};

} // namespace

TEST(AssimpReader, ReadsATexturedQuad)
{
    TestFolder const folder;
    folder.write("paint.mtl",
                 "newmtl paint\nKd 0 0 0\nNs 500\nKs 0.5 0.5 0.5\nmap_Kd C:\\textures\\RED.TGA\n");
    folder.write("red.tga", redAboveBlue);
    Model const model = importModel(folder.write("quad.obj", quad), {});

    EXPECT_EQ(model.format, "Wavefront Object");
    ASSERT_EQ(model.surfaces.size(), 1U);
    EXPECT_EQ(model.surfaces[0].facets.size(), 6U);
    EXPECT_EQ(model.surfaces[0].positions.size(), 4U);
    for (Vector3 const& normal : model.surfaces[0].normals)
        EXPECT_EQ(normal, Vector3(0, 0, 1));
    ASSERT_EQ(model.images.size(), 1U);
    EXPECT_EQ(model.images[0].rows[2], 255) << "v = 0 is the bottom row, blue";
    ModelMaterial const& material = model.materials[static_cast<std::size_t>(model.surfaces[0].material)];
    EXPECT_EQ(material.diffuse, (std::array<float, 4>{1, 1, 1, 1})) << "a texture on black is shown";
    EXPECT_EQ(material.ambient, material.diffuse);
    EXPECT_EQ(material.shininess, 128.0F);
    ASSERT_EQ(model.warnings.size(), 1U);
    EXPECT_NE(model.warnings[0].find("an absolute path, refused"), std::string::npos) << model.warnings[0];
}

TEST(AssimpReader, DrawsWithoutATextureThatIsBroken)
{
    TestFolder const folder;
    folder.write("paint.mtl", "newmtl paint\nKd 1 0 0\nmap_Kd red.tga\n");
    folder.write("red.tga", "no picture");
    Model const model = importModel(folder.write("quad.obj", quad), {});
    EXPECT_TRUE(model.images.empty());
    EXPECT_TRUE(model.surfaces[0].coordinates.empty());
    EXPECT_EQ(model.warnings,
              std::vector<std::string>{"texture 'red.tga': a picture format that is not read"});
}

TEST(AssimpReader, TurnsLinesIntoCurves)
{
    TestFolder const folder;
    Model const model =
        importModel(folder.write("line.obj", "v 0 0 0\nv 1 0 0\nv 1 1 0\nl 1 2\nl 2 3\nl 3 1\n"), {});
    ASSERT_EQ(model.curves.size(), 1U);
    EXPECT_TRUE(model.curves[0].closed);
    EXPECT_TRUE(model.surfaces.empty());
}

TEST(AssimpReader, TellsPointsFromNothing)
{
    TestFolder const folder;
    auto const failureOf = [&](std::string_view content) {
        try {
            (void)importModel(folder.write("a.obj", content), {});
        } catch (ImportError const& error) {
            return error.failure();
        }
        return ImportFailure::crashed;
    };
    EXPECT_EQ(failureOf("v 0 0 0\nv 1 0 0\nv 0 1 0\n"), ImportFailure::pointCloud);
    EXPECT_EQ(failureOf("# nothing here\n\n"), ImportFailure::nothingToDraw);
    EXPECT_EQ(failureOf("v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 9\n"), ImportFailure::broken);
}

TEST(AssimpReader, ReadsUtf16)
{
    TestFolder const folder;
    std::string wide = "\xFF\xFE";
    for (char const c : std::string("v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n"))
        wide += std::string{c, '\0'};
    EXPECT_EQ(importModel(folder.write("wide.obj", wide), {}).surfaces.size(), 1U);
}

TEST(AssimpReader, KnowsAFormatByItsContent)
{
    TestFolder const folder;
    Model const model =
        importModel(folder.write("nameless", "OFF\n3 1 0\n0 0 0\n1 0 0\n0 1 0\n3 0 1 2\n"), {});
    EXPECT_EQ(model.format, "OFF");
    EXPECT_EQ(model.surfaces[0].facets.size(), 3U);
}

} // namespace sgview
