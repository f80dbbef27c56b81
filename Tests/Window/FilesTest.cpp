#include "Tests/Window/WindowTesting.h"
#include "Viewer/Platform/PngWriter.h"

#include <X11/keysym.h>

#include <array>
#include <chrono>
#include <fstream>
#include <iterator>
#include <thread>

namespace {

namespace fs = std::filesystem;

class Files : public WindowTest {
protected:
    static constexpr Region notices{12, windowSize.height - 160, 600, 90};

    Files()
    {
        fs::create_directory(folder / "models");
        fs::copy_file(CREATURE, folder / "models/a2.glb");
        fs::copy_file(TEST_MODELS "/skin8bit.gltf", folder / "models/a10.gltf");
        fs::copy_file(TEST_MODELS "/mirrored.gltf", folder / "models/b.gltf");
        std::ofstream(folder / "models/notes.txt") << "no model";
    }

    [[nodiscard]] fs::path model(std::string const& name) const { return folder / "models" / name; }

    /// Puts a file's content in another's place, all at once.
    void replace(fs::path const& file, fs::path const& by) const
    {
        fs::path const beside = file.string() + ".new";
        fs::copy_file(by, beside, fs::copy_options::overwrite_existing);
        fs::last_write_time(beside, fs::file_time_type::clock::now());
        fs::rename(beside, file);
    }
};

TEST_F(Files, NextAndPreviousOfTheFolder)
{
    ASSERT_NO_FATAL_FAILURE(openModel(model("a2.glb")));
    for (char const* next : {"a10.gltf", "b.gltf", "a2.glb"}) {
        user->type(XK_Page_Down);
        ASSERT_NO_FATAL_FAILURE(awaitFile(next));
    }
    user->type(XK_Page_Up);
    ASSERT_NO_FATAL_FAILURE(awaitFile("b.gltf"));
    quitWell();
}

TEST_F(Files, TheFirstOfAFolder)
{
    ASSERT_NO_FATAL_FAILURE(open({(folder / "models").string()}));
    ASSERT_NO_FATAL_FAILURE(awaitFile("a2.glb"));
    user->type(XK_Page_Down);
    ASSERT_NO_FATAL_FAILURE(awaitFile("a10.gltf"));
    ASSERT_TRUE(user->drop({folder / "models"}));
    ASSERT_NO_FATAL_FAILURE(awaitFile("a2.glb"));
    quitWell();
}

TEST_F(Files, KeepTheAxisThatIsUp)
{
    ASSERT_NO_FATAL_FAILURE(openModel(model("a2.glb")));
    user->type(XK_Page_Down);
    ASSERT_NO_FATAL_FAILURE(awaitFile("a10.gltf"));
    sgview::Picture const usual = still(scene);
    user->type(XK_u);
    sgview::Picture const turned = changed(scene, usual);
    for (unsigned long const key : {XK_Page_Down, XK_F5, XK_Page_Up}) {
        user->type(key);
        ASSERT_NO_FATAL_FAILURE(awaitFile(key == XK_Page_Up ? "a10.gltf" : "b.gltf"));
    }
    EXPECT_TRUE(returnsTo(scene, turned));
    user->type(XK_Home);
    EXPECT_TRUE(returnsTo(scene, usual));
    quitWell();
}

TEST_F(Files, SeveralOnTheCommandLine)
{
    ASSERT_NO_FATAL_FAILURE(openModel(model("b.gltf"), {model("a2.glb")}));
    user->type(XK_Page_Down);
    ASSERT_NO_FATAL_FAILURE(awaitFile("a2.glb"));
    user->type(XK_Page_Down);
    ASSERT_NO_FATAL_FAILURE(awaitFile("b.gltf"));
}

TEST_F(Files, AreDropped)
{
    ASSERT_NO_FATAL_FAILURE(open({}));
    ASSERT_TRUE(user->drop({model("a10.gltf")}));
    ASSERT_NO_FATAL_FAILURE(awaitFile("a10.gltf"));
    ASSERT_TRUE(user->drop({model("b.gltf"), model("a2.glb")}));
    ASSERT_NO_FATAL_FAILURE(awaitFile("b.gltf"));
    user->type(XK_Page_Down);
    ASSERT_NO_FATAL_FAILURE(awaitFile("a2.glb"));
    user->type(XK_Page_Down); // the dropped ones alone
    ASSERT_NO_FATAL_FAILURE(awaitFile("b.gltf"));
    quitWell();
}

TEST_F(Files, AreReadAgainWhenTheyChange)
{
    ASSERT_NO_FATAL_FAILURE(openModel(model("a2.glb")));
    sgview::Picture const first = still(scene);
    replace(model("a2.glb"), TEST_MODELS "/skin8bit.gltf");
    sgview::Picture const second = changed(scene, first);
    EXPECT_GT(difference(second, first), 0.05);
    replace(model("a2.glb"), CREATURE);
    EXPECT_TRUE(returnsTo(scene, first));
    quitWell();
}

TEST_F(Files, AreReadAgainWhenWhatTheyReferToChanges)
{
    auto const paint = [this](std::uint8_t red, std::uint8_t green) {
        sgview::Picture picture({4, 4});
        for (std::size_t i = 0; i < picture.pixels.size(); i += 4) {
            picture.pixels[i] = red;
            picture.pixels[i + 1] = green;
        }
        sgview::writePng(model("paint.png"), picture);
    };
    auto const shows = [this](int red, int green, int blue) {
        return eventually([&] { return shareOtherThan(look(scene), red, green, blue) < 0.8; });
    };
    std::ofstream(model("crate.obj"))
        << "mtllib crate.mtl\nv 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nvt 0 0\nvn 0 0 1\n"
           "usemtl m\nf 1/1/1 2/1/1 3/1/1 4/1/1\n";
    std::ofstream(model("crate.mtl")) << "newmtl m\nKd 1 1 1\nmap_Kd paint.png\n";
    ASSERT_NO_FATAL_FAILURE(openModel(model("crate.obj"), {"--unlit", "--azimuth", "0"}));
    EXPECT_TRUE(shows(255, 255, 255)) << "there is no picture yet";
    paint(255, 0);
    EXPECT_TRUE(shows(255, 0, 0)) << "now there is";
    paint(0, 255);
    EXPECT_TRUE(shows(0, 255, 0)) << "now there is another";
    std::ofstream(model("crate.mtl"), std::ios::trunc) << "newmtl m\nKd 0.5 0.5 1\n";
    EXPECT_TRUE(shows(128, 128, 255)) << "now there is none";
    quitWell();
}

TEST_F(Files, WaitForAMissingPart)
{
    std::ofstream(model("apart.gltf"))
        << R"({"asset":{"version":"2.0"},"nodes":[{"mesh":0}],"scenes":[{"nodes":[0]}],"scene":0,
               "meshes":[{"primitives":[{"attributes":{"POSITION":0}}]}],
               "accessors":[{"bufferView":0,"componentType":5126,"count":3,"type":"VEC3",
                             "min":[0,0,0],"max":[1,1,0]}],
               "bufferViews":[{"buffer":0,"byteLength":36}],
               "buffers":[{"uri":"apart.bin","byteLength":36}]})";
    ASSERT_NO_FATAL_FAILURE(open({model("apart.gltf")}));
    constexpr Region complaint{12, windowSize.height - 60, 600, 50};
    ASSERT_TRUE(eventually([&] { return shareOtherThan(look(complaint), 219, 224, 230) > 0.05; }));
    EXPECT_EQ(user->title(), "sgview");
    constexpr std::array<float, 9> corners{0, 0, 0, 1, 0, 0, 0, 1, 0};
    std::ofstream(model("apart.bin"), std::ios::binary)
        .write(reinterpret_cast<char const*>(corners.data()), sizeof corners);
    ASSERT_NO_FATAL_FAILURE(awaitFile("apart.gltf"));
    quitWell();
}

TEST_F(Files, ABrokenOneLeavesTheLastGoodPicture)
{
    ASSERT_NO_FATAL_FAILURE(openModel(model("a2.glb")));
    user->drag(1, 300, 300, 350, 300); // a view of one's own
    static_cast<void>(still(notices));
    sgview::Picture const good = still(scene);
    sgview::Picture const silence = still(notices);
    std::ofstream(model("a2.glb"), std::ios::trunc) << "glTF, but broken off";
    sgview::Picture const complaint = changed(notices, silence);
    EXPECT_GT(difference(complaint, silence), 0.05);
    EXPECT_TRUE(returnsTo(scene, good));
    user->drag(1, 350, 300, 300, 300); // it can still be looked at
    static_cast<void>(changed(scene, good));
    user->drag(1, 300, 300, 350, 300);
    EXPECT_TRUE(returnsTo(scene, good));

    replace(model("a2.glb"), TEST_MODELS "/skin8bit.gltf"); // and mended
    EXPECT_GT(difference(changed(scene, good), good), 0.05);
    quitWell();
}

TEST_F(Files, ThatGoOrComeInPartsAreWaitedFor)
{
    ASSERT_NO_FATAL_FAILURE(openModel(model("a2.glb")));
    sgview::Picture const good = still(scene);
    sgview::Picture const silence = still(notices);
    auto const letItLook = [] { std::this_thread::sleep_for(std::chrono::seconds(1)); };
    fs::remove(model("a2.glb"));
    letItLook();
    fs::create_directory(model("a2.glb"));
    letItLook();
    EXPECT_EQ(difference(look(scene), good), 0.0);
    EXPECT_EQ(difference(look(notices), silence), 0.0);
    fs::remove(model("a2.glb"));

    std::ifstream source(TEST_MODELS "/skin8bit.gltf", std::ios::binary);
    std::string const content{std::istreambuf_iterator<char>(source), {}};
    std::ofstream(model("a2.glb"), std::ios::binary) << content.substr(0, content.size() / 2);
    EXPECT_GT(difference(changed(notices, silence), silence), 0.05) << "half of a file is told of";
    EXPECT_EQ(difference(look(scene), good), 0.0);
    std::ofstream(model("a2.glb"), std::ios::binary | std::ios::app) << content.substr(content.size() / 2);
    EXPECT_GT(difference(changed(scene, good), good), 0.05);
    quitWell();
}

TEST_F(Files, ThatCannotBeReadAreSkippedOver)
{
    std::ofstream(folder / "models/a3.obj") << "not a model at all";
    ASSERT_NO_FATAL_FAILURE(openModel(model("a2.glb")));
    sgview::Picture const silence = still(notices);
    user->type(XK_Page_Down);
    static_cast<void>(changed(notices, silence));
    EXPECT_EQ(user->title(), "a2.glb - sgview");
    user->type(XK_Page_Down);
    ASSERT_NO_FATAL_FAILURE(awaitFile("a10.gltf"));
    quitWell();
}

TEST_F(Files, LoadingIsCancelled)
{
    {
        std::ofstream big(model("a1.obj")); // takes seconds
        for (int i = 0; i < 1'200'000; ++i)
            big << "v " << i % 1000 << ' ' << i / 1000 << " 0\n";
        for (int i = 1; i + 2 < 1'200'000; ++i)
            big << "f " << i << ' ' << i + 1 << ' ' << i + 2 << '\n';
    }
    ASSERT_NO_FATAL_FAILURE(openModel(model("a2.glb")));
    sgview::Picture const good = still(scene);
    user->type(XK_Page_Up);
    sgview::Picture const progress = [&] {
        EXPECT_TRUE(eventually([&] { return look(scene).pixels != good.pixels; }));
        return look(scene);
    }();
    EXPECT_TRUE(eventually([&] { return look(scene).pixels != progress.pixels; })); // the bar moves
    user->type(XK_Escape);
    EXPECT_TRUE(returnsTo(scene, good));
    EXPECT_EQ(user->title(), "a2.glb - sgview");
    user->type(XK_Page_Up); // and one can leave in the middle
    EXPECT_TRUE(eventually([&] { return look(scene).pixels != good.pixels; }));
    quitWell();
}

} // namespace
