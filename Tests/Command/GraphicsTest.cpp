#include "Tests/Command/Sgview.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::StartsWith;

class Graphics : public SgviewTest {
protected:
    [[nodiscard]] json card() const { return json::parse(runWell({"info", "--gpu", "--json"}, asNewUser())); }
};

TEST_F(Graphics, WhatTheDriverSays)
{
    json const graphics = card();
    for (char const* key : {"vendor", "renderer", "version", "shadingLanguage"})
        EXPECT_NE(graphics[key], "") << key;
    EXPECT_EQ(graphics["extensions"]["GL_ARB_vertex_buffer_object"], true);
    EXPECT_THAT(graphics["limits"]["viewport"].get<std::string>(), HasSubstr(" pixels"));
    EXPECT_GE(std::stoi(graphics["limits"]["program parameters"].get<std::string>()), 96)
        << "what the extension guarantees";
    EXPECT_EQ(graphics["verdict"], json::parse(R"({"stored": {}, "holds": false})"));
    EXPECT_EQ(graphics["technique"], "plain");

    std::string const text = runWell({"info", "--gpu"}, asNewUser());
    EXPECT_THAT(text, HasSubstr("renderer:    " + graphics["renderer"].get<std::string>() + "\n"));
    EXPECT_THAT(text, HasSubstr("verdict:     none stored\n"));
    EXPECT_THAT(text, HasSubstr("technique:   plain\n"));
}

TEST_F(Graphics, TheStoredVerdict)
{
    json const graphics = card();
    std::string const name = graphics["vendor"].get<std::string>() + " / " +
                             graphics["renderer"].get<std::string>() + " / " +
                             graphics["version"].get<std::string>();
    std::filesystem::create_directories(folder / "user/OpenGLRenderer");
    std::string const flags = "\nGL_VBO = True\nGL_VertexProgram = True\nGL_VertexShader = False\n";
    writeFile("user/OpenGLRenderer/preferences", "GL_CARD = " + name + flags);
    json const known = card();
    EXPECT_EQ(known["verdict"]["holds"], true);
    EXPECT_EQ(known["verdict"]["stored"]["GL_CARD"], name);
    EXPECT_EQ(known["technique"], "program+vbo");
    EXPECT_EQ(known["verdict"]["stored"]["GL_VBO"], "True") << "as it is stored";
    std::string const text = runWell({"info", "--gpu"}, asNewUser());
    EXPECT_THAT(text, HasSubstr("verdict:     stored, for this card\n"));
    EXPECT_THAT(text, HasSubstr("  GL_VBO            on\n"));
    EXPECT_THAT(text, HasSubstr("  GL_VertexShader   off\n"));

    writeFile("user/OpenGLRenderer/preferences", "GL_CARD = another" + flags);
    EXPECT_EQ(card()["verdict"]["holds"], false);
    EXPECT_THAT(runWell({"info", "--gpu"}, asNewUser()),
                HasSubstr("verdict:     stored, but not for this card\n"));
}

TEST_F(Graphics, DevicesHaveNumbers)
{
    std::string const list = runWell({"render", "--device", "list"});
    for (char const* command : {"info", "demo", "compare", "diagnose", "bench"})
        EXPECT_EQ(runWell({command, "--device", "list"}), list) << command;
    EXPECT_THAT(list, StartsWith("0  "));
    json const first = json::parse(runWell({"info", "--gpu", "--device", "0", "--json"}));
    EXPECT_THAT(list, StartsWith("0  " + first["renderer"].get<std::string>() + "  ("));

    EXPECT_EQ(render("a.png", {creature(), "--size", "64x48", "--device", "0"}),
              render("b.png", {creature(), "--size", "64x48"}));
}

TEST_F(Graphics, DevicesThatThereAreNot)
{
    for (std::vector<std::string> const& arguments :
         {std::vector<std::string>{"render", creature(), "--output", "a.png"},
          {"info", "--gpu"},
          {"demo", "--output", "a.png"},
          {"compare", creature()},
          {"diagnose", "--force"},
          {"bench"}}) {
        std::vector<std::string> command = arguments;
        command.insert(command.end(), {"--device", "63"});
        Outcome const outcome = run(command);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_THAT(outcome.errors, StartsWith("sgview: there is no graphics device 63: the system has "));
    }
    expectFailure({"render", creature(), "--output", "a.png", "--device", "first"}, 2,
                  "--device: 'first' is neither a number nor list, which says which devices there are");
    expectFailure({"info", creature(), "--gpu"}, 2, "FILE excludes --gpu");
    expectFailure({"info", creature(), "--device", "0"}, 2, "FILE excludes --device");
    expectFailure({"demo", "--window", "--device", "0"}, 2, "--window excludes --device");
    expectFailure({"info", creature(), "--module", "."}, 2, "--module requires --gpu");
}

TEST_F(Graphics, NoOpenGL)
{
    Circumstances bare;
    bare.environment = {{"__EGL_VENDOR_LIBRARY_FILENAMES", "/nowhere"},
                        {"DISPLAY", std::nullopt},
                        {"XDG_RUNTIME_DIR", std::nullopt}};
    expectFailure({"render", "--device", "list"}, 1,
                  "the system numbers no graphics devices (EGL_EXT_device_enumeration)", bare);
    Outcome const outcome = run({"info", "--gpu"}, bare);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.errors, StartsWith("sgview: no OpenGL context without a screen; tried offscreen: "));
}

TEST_F(Graphics, FullStandardOutput)
{
    Circumstances full;
    full.output = "/dev/full";
    expectFailure({"info", "--gpu"}, 1, "standard output cannot be written", full);
    expectFailure({"render", "--device", "list"}, 1, "standard output cannot be written", full);
}

} // namespace
