#include "Utilities/Prefs.h"

#include "Utilities/MemoryPrefs.h"
#include "Utilities/PrefsFile.h"

#include "Tests/Unit/Utilities/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

using Store = RogueSingleton<Prefs, PrefsFactory>;

/// Puts an environment variable back as it was.
class SavedVariable {
public:
    explicit SavedVariable(char const* name) : name_(name)
    {
        if (char const* const value = std::getenv(name))
            value_ = value;
    }
    ~SavedVariable()
    {
        if (value_)
            setenv(name_, value_->c_str(), 1);
        else
            unsetenv(name_);
    }
    SavedVariable(SavedVariable const&) = delete;
    SavedVariable& operator=(SavedVariable const&) = delete;

private:
    char const* name_;
    std::optional<std::string> value_;
};

class PrefsTest : public testing::Test {
protected:
    PrefsTest() { Store::reset(); }
    ~PrefsTest() override
    {
        PrefsFactory::setMaker({});
        Store::reset();
    }

    static void setEnvironment(char const* configuration, char const* home)
    {
        configuration ? setenv("XDG_CONFIG_HOME", configuration, 1) : unsetenv("XDG_CONFIG_HOME");
        home ? setenv("HOME", home, 1) : unsetenv("HOME");
    }

    SavedVariable configuration{"XDG_CONFIG_HOME"};
    SavedVariable home{"HOME"};
};

} // namespace

TEST_F(PrefsTest, UsualFolderFollowsTheEnvironment)
{
    setEnvironment("/configuration", "/home/somebody");
    EXPECT_EQ(PrefsFile::usualFolder(), "/configuration/OpenGLRenderer");
    setEnvironment(nullptr, "/home/somebody");
    EXPECT_EQ(PrefsFile::usualFolder(), "/home/somebody/.config/OpenGLRenderer");
    setEnvironment("", "/home/somebody");
    EXPECT_EQ(PrefsFile::usualFolder(), "/home/somebody/.config/OpenGLRenderer");
    setEnvironment("relative", "/home/somebody");
    EXPECT_EQ(PrefsFile::usualFolder(), "/home/somebody/.config/OpenGLRenderer");
    for (char const* const nowhere : {static_cast<char const*>(nullptr), "", "relative"}) {
        setEnvironment(nowhere, nowhere);
        EXPECT_FALSE(PrefsFile::usualFolder());
    }
}

TEST_F(PrefsTest, FactoryMakesAFileAtItsUsualPlace)
{
    TemporaryFolder const folder;
    setEnvironment(folder.path().c_str(), nullptr);
    Store::getInstance().setString("GL_VBO", "True");
    EXPECT_TRUE(std::filesystem::is_regular_file(folder / "OpenGLRenderer/preferences"));
    Store::reset();
    EXPECT_EQ(Store::getInstance().getString("GL_VBO"), "True");
}

TEST_F(PrefsTest, FactoryKeepsToMemoryWhereThereIsNoUsualPlace)
{
    setEnvironment(nullptr, nullptr);
    EXPECT_TRUE(dynamic_cast<MemoryPrefs*>(&Store::getInstance()));
}

TEST_F(PrefsTest, MakerCanBeReplacedAndBroughtBack)
{
    auto const own = make_smart<MemoryPrefs>();
    PrefsFactory::setMaker([own] { return own; });
    EXPECT_EQ(&Store::getInstance(), own.get());
    setEnvironment("/configuration", nullptr);
    PrefsFactory::setMaker({});
    EXPECT_EQ(&Store::getInstance(), own.get()) << "takes effect with the next instance";
    Store::reset();
    EXPECT_TRUE(dynamic_cast<PrefsFile*>(&Store::getInstance()));
}
