#include "Utilities/PrefsFile.h"

#include "Tests/Unit/Utilities/CapturedLog.h"
#include "Tests/Unit/Utilities/ChildProcess.h"
#include "Tests/Unit/Utilities/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <functional>
#include <random>

namespace {

namespace fs = std::filesystem;

constexpr std::size_t mebibyte = std::size_t{1} << 20;

std::string padded(std::string text, std::size_t size)
{
    text += '#';
    text.resize(size - 1, 'x');
    return text + '\n';
}

std::string randomBytes(std::size_t size)
{
    std::mt19937 random(11);
    std::string bytes(size, ' ');
    for (char& c : bytes)
        c = static_cast<char>(random());
    return bytes;
}

struct Hostile {
    char const* name;
    std::function<void(fs::path const&)> make;
    bool writable; ///< it may be replaced by a good file
};

Hostile const hostileFiles[] = {
    {"OneByteTooLong", [](fs::path const& file) { writeFile(file, padded("key = value\n", mebibyte + 1)); },
     true},
    {"Binary", [](fs::path const& file) { writeFile(file, randomBytes(10000)); }, true},
    {"Zeroes", [](fs::path const& file) { writeFile(file, std::string(5000, '\0')); }, true},
    {"Truncated", [](fs::path const& file) { writeFile(file, "key = val"); }, true},
    {"Empty", [](fs::path const& file) { writeFile(file, ""); }, true},
    {"Folder", [](fs::path const& file) { fs::create_directory(file); }, false},
    {"Pipe", [](fs::path const& file) { ASSERT_EQ(mkfifo(file.c_str(), 0600), 0); }, false},
    {"LinkToAPipe",
     [](fs::path const& file) {
         ASSERT_EQ(mkfifo((file.parent_path() / "pipe").c_str(), 0600), 0);
         fs::create_symlink("pipe", file);
     },
     false},
    {"LinkToItself", [](fs::path const& file) { fs::create_symlink(file, file); }, false},
    {"LinkToAMissingFolder", [](fs::path const& file) { fs::create_symlink("none/settings", file); }, false},
};

void PrintTo(Hostile const& hostile, std::ostream* out)
{
    *out << hostile.name;
}

class PrefsFileHostileTest : public testing::TestWithParam<Hostile> {
protected:
    TemporaryFolder folder;
    fs::path file = folder / "preferences";
    CapturedLog log;
};

} // namespace

TEST_P(PrefsFileHostileTest, ReadsAsEmptyAndIsReplacedOnlyIfRegular)
{
    GetParam().make(file);
    fs::file_type const before = fs::symlink_status(file).type();
    PrefsFile prefs(folder.path());
    EXPECT_EQ(prefs.getString("key"), "");
    prefs.setString("key", "new");
    EXPECT_EQ(prefs.getString("key"), "new");
    EXPECT_EQ(PrefsFile(folder.path()).getString("key"), GetParam().writable ? "new" : "");
    EXPECT_EQ(fs::symlink_status(file).type(), before);
    EXPECT_EQ(log.text().empty(), GetParam().writable) << log.text();
}

INSTANTIATE_TEST_SUITE_P(All, PrefsFileHostileTest, testing::ValuesIn(hostileFiles),
                         [](auto const& test) { return test.param.name; });

TEST(PrefsFileLimits, ReadsAFileOfExactlyOneMebibyte)
{
    TemporaryFolder const folder;
    writeFile(folder / "preferences", padded("key = value\n", mebibyte));
    EXPECT_EQ(PrefsFile(folder.path()).getString("key"), "value");
}

TEST(PrefsFileLimits, DoesNotWriteWhatItWouldNotRead)
{
    TemporaryFolder const folder;
    CapturedLog const log;
    PrefsFile prefs(folder.path());
    prefs.setString("small", "kept");
    prefs.setString("large", std::string(mebibyte, 'x'));
    EXPECT_EQ(prefs.getString("large").size(), mebibyte) << "it lasts in memory";
    EXPECT_EQ(PrefsFile(folder.path()).getString("small"), "kept");
    EXPECT_EQ(log.text(),
              "error: Preferences not saved: " + (folder / "preferences").string() + ": File too large\n");
}

TEST(PrefsFileLimits, WaitsForALockOnlySoLong)
{
    TemporaryFolder const folder;
    CapturedLog const log;
    fs::create_directory(folder / "preferences.lock");
    PrefsFile prefs(folder.path());
    prefs.setString("a", "1");
    EXPECT_EQ(prefs.getString("a"), "1");
    EXPECT_EQ(log.text(), "error: Preferences not saved: " + (folder / "preferences.lock").string() +
                              ": Is a directory\n");
}

/// What root may do anyway is tried as somebody else.
class PrefsFilePermissionTest : public testing::Test {
protected:
    static constexpr int cannotTry = 77;

    PrefsFilePermissionTest()
    {
        PrefsFile(folder.path()).setString("a", "old");
        if (geteuid() == 0) {
            for (fs::path const& path : {folder.path(), file, folder / "preferences.lock"})
                EXPECT_EQ(chown(path.c_str(), 65534, 65534), 0);
        }
    }

    /// Sets "a" in a process without privileges; 0 if it then stands there in memory, after one line in the
    /// log.
    [[nodiscard]] int setWithoutPrivileges(std::string const& expectedBefore) const
    {
        return ChildProcess::run([&] {
            if (!ChildProcess::becomeOrdinaryUser())
                return cannotTry;
            CapturedLog const log;
            PrefsFile prefs(folder.path());
            bool const readAsExpected = prefs.getString("a") == expectedBefore;
            prefs.setString("a", "new");
            std::string const text = log.text();
            bool const oneLine =
                text.starts_with("error: Preferences not saved: ") && text.find('\n') + 1 == text.size();
            return readAsExpected && oneLine && prefs.getString("a") == "new" ? 0 : 1;
        });
    }

    TemporaryFolder folder;
    fs::path file = folder / "preferences";
};

TEST_F(PrefsFilePermissionTest, AFolderThatCannotBeWrittenKeepsItsFile)
{
    std::string const before = readFile(file);
    fs::permissions(folder.path(), fs::perms{0500});
    int const result = setWithoutPrivileges("old");
    fs::permissions(folder.path(), fs::perms{0700});
    if (result == cannotTry)
        GTEST_SKIP() << "root cannot become an ordinary user here";
    EXPECT_EQ(result, 0);
    EXPECT_EQ(readFile(file), before);
}

TEST_F(PrefsFilePermissionTest, AFileThatCannotBeReadIsNotWrittenOver)
{
    fs::permissions(file, fs::perms{0});
    int const result = setWithoutPrivileges("");
    fs::permissions(file, fs::perms{0600});
    if (result == cannotTry)
        GTEST_SKIP() << "root cannot become an ordinary user here";
    EXPECT_EQ(result, 0);
    EXPECT_EQ(PrefsFile(folder.path()).getString("a"), "old");
}
