#include "Viewer/Import/FileKind.h"

#include "Viewer/Import/ImportError.h"

#include <gtest/gtest.h>

namespace sgview {

namespace {

Bytes bytesOf(std::string_view text)
{
    return {text.begin(), text.end()};
}

std::string png()
{
    std::string header = "\x89PNG\r\n\x1A\n";
    return header + std::string(40, '\1');
}

} // namespace

TEST(FileKind, KnowsModels)
{
    struct Case {
        char const* name;
        std::string_view content;
        char const* extension;
        FileKind::Reader reader;
    };
    for (Case const& c : {
             Case{"a.obj", "v 0 0 0\n", "obj", FileKind::Reader::assimp},
             Case{"a.OBJ", "v 0 0 0\n", "obj", FileKind::Reader::assimp},
             Case{"a.glb", std::string_view("glTF\2\0\0\0", 8), "glb", FileKind::Reader::gltf2},
             Case{"a.glb", std::string_view("glTF\1\0\0\0", 8), "glb", FileKind::Reader::assimp},
             Case{"a", std::string_view("glTF\2\0\0\0", 8), "glb", FileKind::Reader::gltf2},
             Case{"a.gltf", R"({"asset": {"version": "2.0"}})", "gltf", FileKind::Reader::gltf2},
             Case{"a.gltf", R"({"asset": {"version": "1.0"}})", "gltf", FileKind::Reader::assimp},
             Case{"a.json", R"({"asset": {"version": "2.0"}})", "gltf", FileKind::Reader::gltf2},
             Case{"a", "OFF\n8 6 0\n", "off", FileKind::Reader::assimp},
             Case{"a.xml", "<?xml version=\"1.0\"?>\n<COLLADA>", "dae", FileKind::Reader::assimp},
             Case{"a.xml", "<!-- x --><mesh xmlns=\"http://irrlicht.sourceforge.net\">", "irrmesh",
                  FileKind::Reader::assimp},
             Case{"a.mesh.xml", "<mesh>", "mesh.xml", FileKind::Reader::assimp},
         }) {
        FileKind const kind = classify(c.name, bytesOf(c.content));
        EXPECT_EQ(kind.extension, c.extension) << c.name << ' ' << c.content;
        EXPECT_EQ(kind.reader, c.reader) << c.name << ' ' << c.content;
    }
}

TEST(FileKind, RefusesWhatIsNoModel)
{
    struct Case {
        char const* name;
        std::string content;
        ImportFailure failure;
    };
    for (Case const& c : {
             Case{"a.png", png(), ImportFailure::picture},
             Case{"a.obj", png(), ImportFailure::picture},
             Case{"a.3ds", "\xFF\xD8\xFF\xE0", ImportFailure::picture},
             Case{"a.tga", "v 0 0 0", ImportFailure::picture},
             Case{"a.txt", "v 0 0 0\n", ImportFailure::textFile},
             Case{"README.md", "# OFF\n", ImportFailure::textFile},
             Case{"README", "Models for a test.\n", ImportFailure::textFile},
             Case{"a.xml", "<html></html>", ImportFailure::textFile},
             Case{"a.json", "{}", ImportFailure::textFile},
             Case{"a.bin", "xxxx", ImportFailure::sideFile},
             Case{"a.mtl", "newmtl a", ImportFailure::sideFile},
             Case{"a.md5anim", "MD5Version 10", ImportFailure::sideFile},
             Case{"a.skeleton.xml", "<skeleton>", ImportFailure::sideFile},
             Case{"a01.mdl", "IDSQ....", ImportFailure::sideFile},
             Case{"a.mdl", "IDST" + std::string(300, '\0'), ImportFailure::sideFile},
             Case{"a.obj", " \r\n\t", ImportFailure::emptyFile},
             Case{"a.max", std::string("\xD0\xCF\x11\xE0", 4), ImportFailure::formatNotRead},
             Case{"a", std::string("\x01\x02\x03\x00", 4), ImportFailure::formatNotRead},
         }) {
        try {
            FileKind const kind = classify(c.name, bytesOf(c.content));
            ADD_FAILURE() << c.name << " taken for " << kind.extension;
        } catch (ImportError const& error) {
            EXPECT_EQ(error.failure(), c.failure) << error.what();
            EXPECT_TRUE(std::string(error.what()).starts_with(std::string(c.name) + ": ")) << error.what();
        }
    }
}

TEST(HasModelName, GoesByTheNameAlone)
{
    for (char const* name : {"a.glb", "/x/A.OBJ", "b.mesh.xml", "c.3DS", "d.dae"})
        EXPECT_TRUE(hasModelName(name)) << name;
    for (char const* name : {"a.png", "README", "a.xml", "a.mtl", "glb", "", "a.glb.txt"})
        EXPECT_FALSE(hasModelName(name)) << name;
}

} // namespace sgview
