#include "Utilities/AssetManager.h"

#include "Tests/Unit/Utilities/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

std::string messageOf(std::string const& path)
{
    try {
        return "found: " + AssetManager::getInstance().findFile(path).string();
    } catch (AssetError const& error) {
        return error.what();
    }
}

/// What a command prints.
std::string outputOf(std::string const& command)
{
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> const pipe(popen(command.c_str(), "r"), pclose);
    std::string output;
    std::array<char, 1024> part{};
    while (pipe && std::fgets(part.data(), part.size(), pipe.get()))
        output += part.data();
    return output;
}

class AssetManagerTest : public testing::Test {
protected:
    AssetManagerTest()
    {
        unsetenv("SG_ASSET_PATH");
        renew();
    }
    ~AssetManagerTest() override
    {
        unsetenv("SG_ASSET_PATH");
        renew();
    }

    static void renew() { RogueSingleton<AssetManager, AssetManagerFactory>::reset(); }

    TemporaryFolder folder;
};

} // namespace

TEST_F(AssetManagerTest, FindsTheSourceTreeFromTheBuildTree)
{
    fs::path const found = AssetManager::getInstance().findFile("Utilities/AssetManager.h");
    EXPECT_TRUE(found.is_absolute());
    EXPECT_THAT(readFile(found), HasSubstr("class AssetManager"));
}

TEST_F(AssetManagerTest, FindsAnInstalledTreeWhereverItIsMoved)
{
    fs::path const library = folder / LIBRARY_FOLDER;
    fs::path const assets = fs::path(folder / DATA_FOLDER) / "OpenGLRenderer";
    fs::create_directories(folder / "bin");
    fs::create_directories(library);
    fs::create_directories(assets / "Shaders");
    fs::copy_file(ASSET_PROBE, folder / "bin/AssetProbe");
    fs::copy_file(UTILITIES_LIBRARY, library / UTILITIES_SONAME);
    writeFile(assets / "Shaders/some.txt", "text");

    std::string const output = outputOf((folder / "bin/AssetProbe").string() + " Shaders/some.txt none.txt");
    EXPECT_EQ(output, (assets / "Shaders/some.txt").string() +
                          "\nAsset \"none.txt\" not found; tried: " + (assets / "none.txt").string() + '\n')
        << "and looks nowhere else: the source tree is the build tree's affair";
}

TEST_F(AssetManagerTest, LooksInTheFoldersOfTheEnvironmentInOrder)
{
    fs::create_directory(folder / "a");
    fs::create_directory(folder / "b");
    writeFile(folder / "a/both.txt", "a");
    writeFile(folder / "b/both.txt", "b");
    writeFile(folder / "b/one.txt", "b");
    setenv("SG_ASSET_PATH", (":" + (folder / "a").string() + "::" + (folder / "b").string()).c_str(), 1);
    renew();
    EXPECT_EQ(AssetManager::getInstance().findFile("both.txt"), folder / "a/both.txt");
    EXPECT_EQ(AssetManager::getInstance().findFile("one.txt"), folder / "b/one.txt");
}

TEST_F(AssetManagerTest, LooksInTheFolderThatWasAddedLastFirst)
{
    fs::create_directory(folder / "a");
    fs::create_directory(folder / "b");
    writeFile(folder / "a/both.txt", "a");
    writeFile(folder / "b/both.txt", "b");
    AssetManager::getInstance().addFolder(folder / "a");
    EXPECT_EQ(AssetManager::getInstance().findFile("both.txt"), folder / "a/both.txt");
    AssetManager::getInstance().addFolder(folder / "b");
    EXPECT_EQ(AssetManager::getInstance().findFile("both.txt"), folder / "b/both.txt");
}

TEST_F(AssetManagerTest, NamesThePlacesTried)
{
    setenv("SG_ASSET_PATH", (folder / "environment").c_str(), 1);
    renew();
    AssetManager::getInstance().addFolder(folder / "added");
    std::string const message = messageOf("Shaders/none.txt");
    EXPECT_EQ(message.find("Asset \"Shaders/none.txt\" not found; tried: " +
                           (folder / "added/Shaders/none.txt").string() + ", " +
                           (folder / "environment/Shaders/none.txt").string() + ", "),
              0U)
        << message;
    EXPECT_THAT(message, HasSubstr("/OpenGLRenderer/Shaders/none.txt"));
}

TEST_F(AssetManagerTest, RefusesPathsThatLeadOutOfAnAssetFolder)
{
    fs::create_directory(folder / "assets");
    writeFile(folder / "secret.txt", "secret");
    AssetManager::getInstance().addFolder(folder / "assets");
    for (std::string const& path : {std::string("../secret.txt"), std::string("x/../../secret.txt"),
                                    std::string(".."), (folder / "secret.txt").string(), std::string()}) {
        SCOPED_TRACE(path);
        EXPECT_EQ(messageOf(path), "Asset \"" + path + "\": the path must lead down from an asset folder");
        EXPECT_THROW(static_cast<void>(AssetManager::getInstance().getFileStream(path, true)), AssetError);
    }
    EXPECT_EQ(messageOf(std::string("a\0b", 3)),
              "Asset \"a?b\": the path must lead down from an asset folder");
    writeFile(folder / "assets/..odd", "a name like any other");
    EXPECT_EQ(AssetManager::getInstance().findFile("..odd"), folder / "assets/..odd");
}

TEST_F(AssetManagerTest, PassesOverFolders)
{
    fs::create_directories(folder / "assets/thing");
    AssetManager::getInstance().addFolder(folder / "assets");
    EXPECT_THAT(messageOf("thing"), HasSubstr("not found"));
}

TEST_F(AssetManagerTest, OpensAnAsset)
{
    std::string const bytes("line\r\n\0\xff end", 12);
    writeFile(folder / "bytes", bytes);
    AssetManager::getInstance().addFolder(folder.path());
    for (bool const binary : {true, false}) {
        auto const stream = AssetManager::getInstance().getFileStream("bytes", binary);
        EXPECT_EQ(std::string(std::istreambuf_iterator<char>(*stream), {}), bytes);
    }
}
