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
    EXPECT_TRUE(model.warnings.empty()) << model.warnings[0];
}

TEST(AssimpReader, FindsTexturesInFoldersThatTheUserNames)
{
    TestFolder const folder;
    TestFolder const other;
    folder.write("paint.mtl", "newmtl paint\nKd 1 1 1\nmap_Kd C:\\work\\red.tga\n");
    other.write("red.tga", redAboveBlue);
    ImportOptions options;
    EXPECT_EQ(importModel(folder.write("quad.obj", quad), options).warnings,
              std::vector<std::string>{"texture 'C:\\work\\red.tga': an absolute path, refused; no 'red.tga' "
                                       "in the model's folder"});
    options.folders = {other.path()};
    Model const model = importModel(folder.path() / "quad.obj", options);
    EXPECT_EQ(model.images.size(), 1U);
    EXPECT_TRUE(model.warnings.empty()) << model.warnings[0];
}

TEST(AssimpReader, NamesASideFileThatIsMissing)
{
    TestFolder const folder;
    EXPECT_EQ(importModel(folder.write("quad.obj", quad), {}).warnings,
              std::vector<std::string>{"file 'paint.mtl': not found"});
}

TEST(AssimpReader, TurnsNormalsThatOpposeTheirFacets)
{
    TestFolder const folder;
    auto const modelWith = [&](std::string const& normal, std::string const& order) {
        return importModel(folder.write("a.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nvn " + normal + "\nf " + order),
                           {});
    };
    for (char const* const order : {"1//1 2//1 3//1\n", "3//1 2//1 1//1\n"})
        for (char const* const normal : {"0 0 1", "0 0 -1"}) {
            Model const model = modelWith(normal, order);
            double const facing = order[0] == '1' ? 1.0 : -1.0;
            EXPECT_EQ(model.surfaces.at(0).normals, std::vector<Vector3>(3, {0, 0, facing}));
            EXPECT_EQ(model.warnings.size(), (normal[4] == '1') == (order[0] == '1') ? 0U : 1U);
        }
}

TEST(AssimpReader, TakesAnAmbientColourFarBelowTheDiffuseOneForNone)
{
    TestFolder const folder;
    auto const ambientOf = [&](std::string const& colours) {
        folder.write("paint.mtl", "newmtl paint\n" + colours);
        Model const model = importModel(folder.write("quad.obj", quad), {});
        return model.materials[static_cast<std::size_t>(model.surfaces.at(0).material)].ambient[0];
    };
    EXPECT_FLOAT_EQ(ambientOf("Kd 0.6 0.6 0.6\nKa 0.05 0.05 0.05\n"), 0.6F);
    EXPECT_FLOAT_EQ(ambientOf("Kd 0.8 0.8 0.8\nKa 0.1 0.1 0.1\n"), 0.1F);
    EXPECT_FLOAT_EQ(ambientOf("Kd 0.3 0.3 0.3\nKa 0.05 0.05 0.05\n"), 0.05F);
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
