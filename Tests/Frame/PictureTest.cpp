#include "Tests/Frame/PictureComparison.h"
#include "Tests/Frame/PngReader.h"

#include "Viewer/Platform/OutputFile.h"
#include "Viewer/Platform/PngWriter.h"

#include <cstdio>
#include <fstream>
#include <iterator>

#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using sgview::Picture;

/// A folder of its own for each test.
class PngWriter : public testing::Test {
protected:
    PngWriter()
    {
        fs::path pattern = fs::temp_directory_path() / "sgview-png-XXXXXX";
        std::string name = pattern.string();
        folder = ::mkdtemp(name.data());
    }
    ~PngWriter() override { fs::remove_all(folder); }

    [[nodiscard]] std::ptrdiff_t filesInFolder() const
    {
        return std::distance(fs::directory_iterator(folder), fs::directory_iterator());
    }

    fs::path folder;
};

Picture gradient(int width, int height)
{
    Picture picture({width, height});
    for (std::size_t i = 0; i < picture.pixels.size(); ++i)
        picture.pixels[i] = static_cast<std::uint8_t>(37 * i);
    return picture;
}

std::string contentOf(fs::path const& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::string messageFor(fs::path const& file)
{
    try {
        sgview::writePng(file, gradient(4, 4));
        return "no error";
    } catch (sgview::OutputError const& error) {
        return error.what();
    }
}

TEST_F(PngWriter, KeepsEveryColour)
{
    Picture const written = gradient(33, 7);
    sgview::writePng(folder / "a.png", written);
    Picture const read = readPng(folder / "a.png");
    ASSERT_EQ(read.size, written.size);
    for (int y = 0; y < 7; ++y)
        for (int x = 0; x < 33; ++x)
            ASSERT_EQ(pixelAt(read, x, y), pixelAt(written, x, y));
    EXPECT_EQ(filesInFolder(), 1);
}

TEST_F(PngWriter, EqualPicturesGiveEqualFiles)
{
    sgview::writePng(folder / "a.png", gradient(50, 50));
    sgview::writePng(folder / "b.png", gradient(50, 50));
    EXPECT_EQ(contentOf(folder / "a.png"), contentOf(folder / "b.png"));
}

TEST_F(PngWriter, ReplacesAFileAndFollowsALink)
{
    std::ofstream(folder / "target.png") << "old";
    fs::create_symlink("target.png", folder / "link.png");
    sgview::writePng(folder / "link.png", gradient(3, 3));
    EXPECT_TRUE(fs::is_symlink(folder / "link.png"));
    EXPECT_EQ(readPng(folder / "target.png").size, (sgview::PictureSize{3, 3}));
    EXPECT_EQ(filesInFolder(), 2);
}

TEST_F(PngWriter, FolderThatIsMissing)
{
    fs::path const file = folder / "no" / "a.png";
    EXPECT_EQ(messageFor(file), file.string() + ": there is no such folder");
}

TEST_F(PngWriter, NameThatIsAFolder)
{
    EXPECT_EQ(messageFor(folder), folder.string() + ": Is a directory");
}

TEST_F(PngWriter, FullDevice)
{
    EXPECT_EQ(messageFor("/dev/full"), "/dev/full: No space left on device");
    EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

TEST_F(PngWriter, FileThatIsNotCommittedLeavesNothing)
{
    std::ofstream(folder / "a.txt") << "old";
    {
        sgview::OutputFile file(folder / "a.txt");
        std::fputs("half", file.stream());
    }
    EXPECT_EQ(contentOf(folder / "a.txt"), "old");
    EXPECT_EQ(filesInFolder(), 1);
}

TEST_F(PngWriter, FileHasThePermissionsThatTheUserWants)
{
    mode_t const before = ::umask(027);
    sgview::writePng(folder / "a.png", gradient(2, 2));
    ::umask(before);
    EXPECT_EQ(fs::status(folder / "a.png").permissions(), fs::perms{0640});
}

Picture onePixel(int red)
{
    Picture picture({1, 1});
    picture.pixels = {static_cast<std::uint8_t>(red), 0, 0, 255};
    return picture;
}

TEST(PictureComparison, CountsPixelsFurtherApartThanTen)
{
    EXPECT_EQ(countMismatches(onePixel(50), onePixel(60)), 0U);
    EXPECT_EQ(countMismatches(onePixel(50), onePixel(61)), 1U);
}

TEST(PictureComparison, LeavesWhatIsWrongToBeLookedAt)
{
    testing::AssertionResult const result = looksLike(onePixel(0), onePixel(20), "comparisonTest");
    EXPECT_FALSE(result);
    std::string const message = result.message();
    EXPECT_NE(message.find("1 pixels differ"), std::string::npos);
    for (auto const& [name, red] : {std::pair("comparisonTest", 0), std::pair("comparisonTest-expected", 20),
                                    std::pair("comparisonTest-difference", 160)}) {
        fs::path const file = fs::path(FRAME_FAILURES) / (std::string(name) + ".png");
        EXPECT_NE(message.find(file.string()), std::string::npos) << message;
        EXPECT_EQ(pixelAt(readPng(file), 0, 0).r, red);
        fs::remove(file);
    }
}

} // namespace
