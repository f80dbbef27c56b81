#include "Viewer/Import/FileAccess.h"

#include "Tests/Import/TestFolder.h"
#include "Viewer/Import/ImportError.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace sgview {

namespace {

namespace fs = std::filesystem;

class FileAccessTest : public ::testing::Test {
protected:
    FileAccessTest()
    {
        model_ = folder_.write("model/file.obj", "v");
        folder_.write("model/a.png", "inside");
        folder_.write("model/Textures/B.PNG", "case");
        folder_.write("outside.png", "outside");
        folder_.write("other/c.png", "other");
    }

    std::optional<std::string> read(std::string_view name, std::vector<fs::path> const& folders = {})
    {
        FileAccess access(model_, folders, warnings_);
        std::optional<Bytes> const bytes = access.read(name);
        return bytes ? std::optional(std::string(bytes->begin(), bytes->end())) : std::nullopt;
    }

    std::string absenceOf(std::string_view name, std::vector<fs::path> const& folders = {})
    {
        return FileAccess(model_, folders, warnings_).absenceOf(name);
    }

    TestFolder folder_;
    fs::path model_;
    Warnings warnings_;
};

ImportFailure failureOfReading(fs::path const& file)
{
    try {
        (void)readModelFile(file);
    } catch (ImportError const& error) {
        EXPECT_TRUE(std::string(error.what()).starts_with(file.string() + ": ")) << error.what();
        return error.failure();
    }
    ADD_FAILURE() << "read: " << file;
    return ImportFailure::broken;
}

} // namespace

TEST_F(FileAccessTest, ReadsInsideTheModelsFolder)
{
    EXPECT_EQ(read("a.png"), "inside");
    EXPECT_EQ(read("./a.png"), "inside");
    EXPECT_EQ(read(".\\a.png"), "inside");
    EXPECT_EQ(read("Textures/B.PNG"), "case");
    EXPECT_TRUE(warnings_.take().empty());
}

TEST_F(FileAccessTest, TriesOtherCaseAndTheBareName)
{
    EXPECT_EQ(read("A.PNG"), "inside");
    EXPECT_EQ(read("textures\\b.png"), "case");
    EXPECT_EQ(read("elsewhere/a.png"), "inside");
    EXPECT_EQ(read("missing.png"), std::nullopt);
}

TEST_F(FileAccessTest, RefusesByNameAndFallsBackToTheBareName)
{
    std::string const outside = (folder_.path() / "outside.png").string();
    std::vector<std::string> const names{"../outside.png",
                                         "..\\outside.png",
                                         outside,
                                         "file://" + outside,
                                         "Textures/../../outside.png",
                                         "/etc/passwd",
                                         "\\\\host\\share\\outside.png",
                                         "//host/outside.png",
                                         "http://host/outside.png",
                                         "C:\\outside.png",
                                         "~/outside.png",
                                         ".."};
    for (std::string const& name : names) {
        EXPECT_EQ(read(name), std::nullopt) << name;
        EXPECT_TRUE(FileAccess::isRefused(name)) << name;
    }
    EXPECT_EQ(read("C:\\art\\a.png"), "inside");
    EXPECT_TRUE(warnings_.take().empty()) << "what it is needed for tells of its absence";
}

TEST_F(FileAccessTest, TellsWhyThereIsNoFile)
{
    EXPECT_EQ(absenceOf("missing.png"), "not found");
    EXPECT_EQ(absenceOf("C:\\art\\b.png"), "an absolute path, refused; no 'b.png' in the model's folder");
    EXPECT_EQ(absenceOf("../b.png", {folder_.path() / "other"}),
              "a path through a parent folder, refused; no 'b.png' in the model's folder or those named");
    fs::create_symlink(folder_.path() / "outside.png", folder_.path() / "model/out.png");
    EXPECT_EQ(absenceOf("tex/out.png"), "a link out of the model's folder, refused");
}

TEST_F(FileAccessTest, FollowsLinksOnlyWithinTheFolder)
{
    fs::create_symlink(folder_.path() / "outside.png", folder_.path() / "model/out.png");
    fs::create_symlink("a.png", folder_.path() / "model/in.png");
    fs::create_directory_symlink(folder_.path() / "other", folder_.path() / "model/linked");
    EXPECT_EQ(read("in.png"), "inside");
    EXPECT_EQ(read("out.png"), std::nullopt);
    EXPECT_EQ(read("linked/c.png"), std::nullopt);
    EXPECT_EQ(read("linked/c.png", {folder_.path() / "other"}), "other");
    fs::create_symlink(folder_.path() / "outside.png", folder_.path() / "other/out.png");
    EXPECT_EQ(read("C:\\art\\out.png", {folder_.path() / "other"}), std::nullopt);
}

TEST_F(FileAccessTest, ReadsInFoldersThatTheUserNames)
{
    EXPECT_EQ(read("c.png"), std::nullopt);
    EXPECT_EQ(read("c.png", {folder_.path() / "other"}), "other");
    EXPECT_EQ(read("c.png", {folder_.path() / "absent"}), std::nullopt);
}

TEST_F(FileAccessTest, LooksInAllFoldersByTheLastPartsOfAPath)
{
    folder_.write("other/textures/d.png", "below");
    folder_.write("other/d.png", "beside");
    folder_.write("other/a.png", "other's");
    std::vector<fs::path> const other{folder_.path() / "other"};
    for (char const* const name :
         {"D:\\art\\textures\\d.png", "/art/Textures/d.png", "../textures/d.png", "//host/textures/d.png",
          "here/textures/d.png", "file:///art/textures/d.png", "x/../../textures/d.png", "~/textures/d.png"})
        EXPECT_EQ(read(name, other), "below") << name;
    for (char const* const name : {"D:\\art\\d.png", "D:d.png", "/art/c/../d.png", "skins/d.png"})
        EXPECT_EQ(read(name, other), "beside") << name;
    folder_.write("other/~e.png", "backup");
    EXPECT_EQ(read("D:\\art\\~e.png", other), "backup");
    EXPECT_EQ(read("D:\\art\\a.png", other), "inside") << "the model's own folder comes first";
    EXPECT_TRUE(warnings_.take().empty());
}

TEST_F(FileAccessTest, TakesNoteOfWhatItComesUponAndOfWhatItMisses)
{
    fs::create_symlink("a.png", folder_.path() / "model/in.png");
    fs::path const own = fs::canonical(folder_.path() / "model");
    std::optional<FileStamp> const before = stampOf(own / "a.png");
    SourceFiles sources;
    FileAccess access(model_, {}, warnings_, &sources);
    static_cast<void>(access.read("textures\\b.png"));
    static_cast<void>(access.read("in.png"));
    folder_.write("model/a.png", "inside, later");
    static_cast<void>(access.read("in.png"));
    static_cast<void>(access.resolve("elsewhere/missing.png"));
    std::vector<fs::path> files;
    for (SourceFile const& source : sources)
        files.push_back(source.file);
    EXPECT_EQ(files, (std::vector<fs::path>{own / "Textures/B.PNG", own / "in.png",
                                            own / "elsewhere/missing.png", own / "missing.png"}));
    EXPECT_TRUE(sources.at(0).stamp);
    EXPECT_EQ(sources.at(1).stamp, before); // the first reading counts
    EXPECT_NE(stampOf(own / "a.png"), before);
    EXPECT_FALSE(sources.at(2).stamp);

    for (std::size_t i = 0; i < 2 * mostSourceFiles; ++i)
        static_cast<void>(access.resolve(std::to_string(i)));
    EXPECT_EQ(sources.size(), mostSourceFiles);
}

TEST_F(FileAccessTest, ReadsRegularFilesOnly)
{
    ASSERT_EQ(::mkfifo((folder_.path() / "model/pipe.png").c_str(), 0600), 0);
    fs::create_directory(folder_.path() / "model/folder.png");
    EXPECT_EQ(read("pipe.png"), std::nullopt);
    EXPECT_EQ(read("folder.png"), std::nullopt);
    EXPECT_EQ(read(std::string_view("a.png\0", 6)), std::nullopt);
}

TEST_F(FileAccessTest, TellsWhyAModelCannotBeRead)
{
    ASSERT_EQ(::mkfifo((folder_.path() / "pipe.obj").c_str(), 0600), 0);
    EXPECT_EQ(failureOfReading(folder_.path() / "absent.obj"), ImportFailure::notFound);
    EXPECT_EQ(failureOfReading(folder_.path() / "outside.png/absent.obj"), ImportFailure::notFound);
    EXPECT_EQ(failureOfReading(folder_.path()), ImportFailure::notReadable);
    EXPECT_EQ(failureOfReading(folder_.path() / "pipe.obj"), ImportFailure::notReadable);
    EXPECT_EQ(failureOfReading("/dev/null"), ImportFailure::notReadable);
    EXPECT_EQ(failureOfReading(folder_.write("empty.obj", std::string_view())), ImportFailure::emptyFile);
    fs::path const huge = folder_.write("huge.obj", "x");
    fs::resize_file(huge, std::uintmax_t{600} << 20);
    EXPECT_EQ(failureOfReading(huge), ImportFailure::tooBig);
}

} // namespace sgview
