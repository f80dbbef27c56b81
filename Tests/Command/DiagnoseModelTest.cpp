#include "Tests/Command/Sgview.h"
#include "Viewer/Platform/PngWriter.h"

#include <gmock/gmock.h>

namespace {

using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;

class DiagnoseModel : public SgviewTest {
protected:
    [[nodiscard]] Outcome diagnose(std::vector<std::string> const& options,
                                   std::string const& faults = {}) const
    {
        std::vector<std::string> arguments{"diagnose", "--module", FAULTY_MODULE, "--model"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        Circumstances circumstances = asNewUser();
        circumstances.environment["SG_FAULTS"] = faults;
        if (wrongAssets)
            circumstances.environment["SG_ASSET_PATH"] = (folder / "wrong").string();
        return run(arguments, circumstances);
    }

    /// A shader asset that draws nothing at all.
    void spoilShader()
    {
        std::filesystem::create_directories(folder / "wrong" / "Shaders");
        writeFile("wrong/Shaders/animationVertexShader.txt",
                  "void main()\n{\n    gl_Position = vec4(9.0, 9.0, 9.0, 1.0);\n}\n");
        wrongAssets = true;
    }

    bool wrongAssets = false;
};

TEST_F(DiagnoseModel, GoodModelOnAGoodDriver)
{
    Outcome const outcome = diagnose({creature()});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_THAT(outcome.output, AllOf(HasSubstr("animation         swim\n"),
                                      ContainsRegex("\nplain +- +- +[0-9][0-9.]+%  reference\n"),
                                      ContainsRegex("\nvbo +0% +0% +[0-9][0-9.]+%  same\n"),
                                      HasSubstr("drawn right by the vertex program"),
                                      HasSubstr("Every technique draws the model as the plain one does")));
}

TEST_F(DiagnoseModel, ModelThatDoesNotMove)
{
    Outcome const outcome = diagnose({testModel("unlit.gltf")});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.output,
                AllOf(HasSubstr("animation         none\n"), ContainsRegex("\nvbo +0% +- +-  same\n")));
}

TEST_F(DiagnoseModel, TexturesInNamedFolders)
{
    writeFile("crate.obj", "mtllib crate.mtl\nv 0 0 0\nv 1 0 0\nv 1 1 0\nvt 0 0\nusemtl m\nf 1/1 2/1 3/1\n");
    writeFile("crate.mtl", "newmtl m\nmap_Kd icon.png\n");
    std::filesystem::create_directory(folder / "pictures");
    sgview::writePng(folder / "pictures/icon.png", sgview::Picture({4, 2}));
    EXPECT_THAT(diagnose({"crate.obj"}).errors, HasSubstr("icon.png"));
    EXPECT_EQ(diagnose({"crate.obj", "--texture-folder", "pictures"}).errors, "");
}

TEST_F(DiagnoseModel, AnimationAndMoments)
{
    Outcome const outcome = diagnose({creature(), "--animation", "look", "--times", "0.0"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.output,
                AllOf(HasSubstr("animation         look\n"), HasSubstr("hardly moves what is seen")));
    EXPECT_EQ(diagnose({creature(), "--animation", "fly"}).status, 2);
    EXPECT_EQ(diagnose({"missing.glb"}).errors, "sgview: missing.glb: there is no such file\n");
    EXPECT_EQ(diagnose({creature(), "--memory-limit", "1"}).status, 1);
}

TEST_F(DiagnoseModel, DriverThatIsWrongEverywhere)
{
    // The own run reads four pictures. In the process that draws the model, the fourth is plain too.
    Outcome const outcome = diagnose({creature()}, "shift@read:4");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.errors,
                HasSubstr("sgview: 1% of the picture or more differs from the plain one: vbo, program"));
    EXPECT_THAT(outcome.output,
                AllOf(HasSubstr("drawn wrong by the vertex program"), HasSubstr("Likely the driver:")));
}

TEST_F(DiagnoseModel, DriverThatIsWrongOnItsOwnSceneOnly)
{
    Outcome const outcome = diagnose({testModel("unlit.gltf")}, "shift@read:3,slow@buffers,kill@read:99");
    EXPECT_THAT(outcome.output, HasSubstr("drawn wrong by the vertex program"));
}

TEST_F(DiagnoseModel, ModelThatIsWrongAlone)
{
    // The own run reads no fifth picture; the model's program pictures begin with the ninth.
    Outcome const outcome = diagnose({creature()}, "white@read:9");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors, "sgview: 1% of the picture or more differs from the plain one: program\n");
    EXPECT_THAT(outcome.output, AllOf(HasSubstr("drawn right by the vertex program"),
                                      HasSubstr("Likely the file, or how it is drawn, and not the driver")));
}

TEST_F(DiagnoseModel, WhatTheOwnSceneDoesNotTry)
{
    spoilShader();
    Outcome const outcome = diagnose({creature()});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.output, AllOf(ContainsRegex("was not tried by shader,\\s+shader.vbo"),
                                      HasSubstr("sgview compare --demo")));
}

TEST_F(DiagnoseModel, OwnRunThatDies)
{
    Outcome const outcome = diagnose({creature()}, "crash@finish:3");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "");
    EXPECT_THAT(outcome.errors, HasSubstr("sgview: the driver is at fault, whatever the model: the "
                                          "diagnostic's own run was ended by signal 11"));
}

} // namespace
