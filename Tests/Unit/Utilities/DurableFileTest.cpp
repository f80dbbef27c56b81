#include "Utilities/DurableFile.h"

#include "Tests/Unit/Utilities/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace fs = std::filesystem;

TEST(DurableFile, ReadsWhatItWrites)
{
    TemporaryFolder const folder;
    std::string const bytes("line\n\0\xff", 7);
    DurableFile::write(folder / "file", bytes);
    EXPECT_EQ(DurableFile::read(folder / "file", 100), bytes);
    DurableFile::write(folder / "file", "");
    EXPECT_EQ(DurableFile::read(folder / "file", 100), "");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 1) << "nothing else is left behind";
}

TEST(DurableFile, ReadsNothingWhereThereIsNothing)
{
    TemporaryFolder const folder;
    EXPECT_EQ(DurableFile::read(folder / "none", 100), "");
    EXPECT_EQ(DurableFile::read(folder / "none/none", 100), "");
}

TEST(DurableFile, ReadsUpToItsLimit)
{
    TemporaryFolder const folder;
    writeFile(folder / "file", "12345");
    EXPECT_EQ(DurableFile::read(folder / "file", 5), "12345");
    EXPECT_EQ(DurableFile::read(folder / "file", 4), "");
    EXPECT_EQ(DurableFile::read("/proc/self/status", 4), "") << "a file may be longer than it says";
}

TEST(DurableFile, WritesForItsOwnerAlone)
{
    TemporaryFolder const folder;
    mode_t const before = umask(0);
    DurableFile::write(folder / "file", "text");
    DurableFile::makeFolder(folder / "a/b");
    umask(before);
    EXPECT_EQ(fs::status(folder / "file").permissions(), fs::perms{0600});
    EXPECT_EQ(fs::status(folder / "a").permissions(), fs::perms{0700});
    EXPECT_EQ(fs::status(folder / "a/b").permissions(), fs::perms{0700});
}

TEST(DurableFile, MakingAFolderThatIsThereLeavesItAlone)
{
    TemporaryFolder const folder;
    fs::create_directory(folder / "there");
    fs::permissions(folder / "there", fs::perms{0755});
    EXPECT_NO_THROW(DurableFile::makeFolder(folder / "there"));
    EXPECT_EQ(fs::status(folder / "there").permissions(), fs::perms{0755});
    EXPECT_NO_THROW(DurableFile::makeFolder("/"));
    writeFile(folder / "file", "");
    EXPECT_THROW(DurableFile::makeFolder(folder / "file/a"), std::system_error);
}

TEST(DurableFile, WritesOverWhatAStoppedProcessLeft)
{
    TemporaryFolder const folder;
    writeFile(folder / "file.new", "half of someth");
    DurableFile::write(folder / "file", "text");
    EXPECT_EQ(readFile(folder / "file"), "text");
    EXPECT_FALSE(fs::exists(folder / "file.new"));
}

TEST(DurableFile, DoesNotWriteThroughALinkInPlaceOfTheTemporaryFile)
{
    TemporaryFolder const folder;
    writeFile(folder / "precious", "precious");
    fs::create_symlink(folder / "precious", folder / "file.new");
    DurableFile::write(folder / "file", "text");
    EXPECT_EQ(readFile(folder / "precious"), "precious");
    EXPECT_EQ(readFile(folder / "file"), "text");
}

TEST(DurableFile, ReplacesRegularFilesOnly)
{
    TemporaryFolder const folder;
    fs::create_directory(folder / "folder");
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    fs::create_symlink(folder / "elsewhere", folder / "link");
    for (std::string const name : {"folder", "pipe", "link"}) {
        fs::file_status const before = fs::symlink_status(folder / name);
        try {
            DurableFile::write(folder / name, "text");
            ADD_FAILURE() << name;
        } catch (std::system_error const& error) {
            EXPECT_EQ(error.what(), (folder / name).string() + ": not a regular file: Invalid argument");
        }
        EXPECT_EQ(fs::symlink_status(folder / name).type(), before.type());
    }
    EXPECT_THROW(static_cast<void>(DurableFile::read(folder / "folder", 100)), std::system_error);
    EXPECT_THROW(static_cast<void>(DurableFile::read(folder / "pipe", 100)), std::system_error);
}

TEST(DurableFile, FollowsLinksToTheirEnd)
{
    TemporaryFolder const folder;
    EXPECT_EQ(DurableFile::followLinks(folder / "none"), folder / "none");
    fs::create_directory(folder / "sub");
    fs::create_symlink("sub/second", folder / "first");
    fs::create_symlink(folder / "third", folder / "sub/second");
    EXPECT_EQ(DurableFile::followLinks(folder / "first"), folder / "third") << "there or not";
    fs::create_symlink("loop", folder / "loop");
    EXPECT_THROW(static_cast<void>(DurableFile::followLinks(folder / "loop")), std::system_error);
}
