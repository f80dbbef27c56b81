#include "Viewer/Platform/ScreenshotName.h"

#include "Tests/Unit/Utilities/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

namespace sgview {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

constexpr std::chrono::local_seconds moment{std::chrono::local_days{std::chrono::year{2031} / 3 / 7} + 9h +
                                            5min + 2s};

class ScreenshotNameTest : public testing::Test {
protected:
    [[nodiscard]] std::string nameOf(std::string const& pattern, std::string const& model = "duck") const
    {
        return screenshotFile(folder.path(), pattern, model, moment)
            .lexically_relative(folder.path())
            .string();
    }
    void take(std::string const& name) const { std::ofstream(folder.path() / name) << name; }

    TemporaryFolder folder;
};

TEST_F(ScreenshotNameTest, FillsInThePlaces)
{
    EXPECT_EQ(nameOf("{model}-{date}-{time}"), "duck-2031-03-07-09-05-02.png");
    EXPECT_EQ(nameOf("{date} {date}.png"), "2031-03-07 2031-03-07.png");
    EXPECT_EQ(nameOf("shots/{model}"), "shots/duck.png");
    EXPECT_EQ(screenshotFile(folder.path(), "/elsewhere/{model}", "duck", moment), "/elsewhere/duck.png");
}

TEST_F(ScreenshotNameTest, OtherFilesHaveOtherExtensions)
{
    auto const nameOfPage = [this] {
        return screenshotFile(folder.path(), "{date}", "", moment, ".html").filename().string();
    };
    EXPECT_EQ(nameOfPage(), "2031-03-07.html");
    take("2031-03-07.html");
    EXPECT_EQ(nameOfPage(), "2031-03-07-2.html");
}

TEST_F(ScreenshotNameTest, NumbersAreTheFirstThatAreNew)
{
    EXPECT_EQ(nameOf("{model}{number}"), "duck1.png");
    take("duck1.png");
    take("duck2.png");
    EXPECT_EQ(nameOf("{model}{number}"), "duck3.png");
}

TEST_F(ScreenshotNameTest, NothingIsOverwritten)
{
    take("duck.png");
    EXPECT_EQ(nameOf("{model}"), "duck-2.png");
    take("duck-2.png");
    EXPECT_EQ(nameOf("{model}"), "duck-3.png");
    fs::create_symlink("nowhere", folder.path() / "duck-3.png"); // a link to nowhere is a name taken
    EXPECT_EQ(nameOf("{model}"), "duck-4.png");
}

TEST_F(ScreenshotNameTest, AModelsNameStaysOneName)
{
    EXPECT_EQ(nameOf("{model}", "../../etc/passwd"), "_.._.._etc_passwd.png");
    EXPECT_EQ(nameOf("{model}", ".hidden"), "_.hidden.png");
    EXPECT_EQ(nameOf("a{model}", ""), "a_.png");
    EXPECT_EQ(nameOf("{model}", "{number}{date}"), "{number}{date}.png"); // no places in it
}

TEST(ScreenshotTemplate, KnowsItsPlaces)
{
    for (char const* good : {"a", "{model}", "{model}-{date}-{time}-{number}", "x{number}.png", "a}b"})
        EXPECT_TRUE(isScreenshotTemplate(good)) << good;
    for (char const* bad : {"", "{", "{modell}", "{frame:04}", "{model}{", "{{model}}"})
        EXPECT_FALSE(isScreenshotTemplate(bad)) << bad;
}

TEST(PicturesFolder, IsReadAsTheDesktopWritesIt)
{
    EXPECT_EQ(
        picturesFolderIn("# comment\nXDG_MUSIC_DIR=\"$HOME/Musik\"\nXDG_PICTURES_DIR=\"$HOME/Bilder\"\n",
                         "/home/ada"),
        "/home/ada/Bilder");
    EXPECT_EQ(picturesFolderIn("XDG_PICTURES_DIR=\"/data/pictures\"", "/home/ada"), "/data/pictures");
    EXPECT_EQ(picturesFolderIn("XDG_PICTURES_DIR=\"$HOME\"", "/home/ada"), "/home/ada");
    for (char const* nothing :
         {"", "XDG_PICTURES_DIR=", "XDG_PICTURES_DIR=\"", "XDG_PICTURES_DIR=\"relative\"",
          "#XDG_PICTURES_DIR=\"/x\"", "XDG_PICTURES_DIR=\"$HOMELESS/x\""})
        EXPECT_EQ(picturesFolderIn(nothing, "/home/ada"), "") << nothing;
}

class PicturesFolderTest : public testing::Test {
protected:
    PicturesFolderTest()
    {
        ::setenv("HOME", folder.path().c_str(), 1);
        ::unsetenv("XDG_PICTURES_DIR");
        ::unsetenv("XDG_CONFIG_HOME");
    }

    TemporaryFolder folder;
};

TEST_F(PicturesFolderTest, EnvironmentThenConfigurationThenPictures)
{
    EXPECT_EQ(picturesFolder(), folder.path() / "Pictures");
    fs::create_directory(folder.path() / ".config");
    std::ofstream(folder.path() / ".config/user-dirs.dirs") << "XDG_PICTURES_DIR=\"$HOME/Bilder\"\n";
    EXPECT_EQ(picturesFolder(), folder.path() / "Bilder");
    fs::create_directory(folder.path() / "conf");
    std::ofstream(folder.path() / "conf/user-dirs.dirs") << "XDG_PICTURES_DIR=\"$HOME/Images\"\n";
    ::setenv("XDG_CONFIG_HOME", (folder.path() / "conf").c_str(), 1);
    EXPECT_EQ(picturesFolder(), folder.path() / "Images");
    ::setenv("XDG_PICTURES_DIR", "/data/pictures", 1);
    EXPECT_EQ(picturesFolder(), "/data/pictures");
}

} // namespace
} // namespace sgview
