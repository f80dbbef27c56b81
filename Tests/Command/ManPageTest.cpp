#include "Tests/Command/Sgview.h"
#include "Tests/Command/ShellCommand.h"

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;

class ManPage : public SgviewTest {
protected:
    ManPage() { writeFile("sgview.1", runWell({"--print-man"})); }

    [[nodiscard]] std::string runOnIt(std::string const& command) const
    {
        return runInShell(command + " '" + (folder / "sgview.1").string() + "'").output;
    }
};

TEST_F(ManPage, IsCleanForGroff)
{
    if (!isInstalled("man"))
        GTEST_SKIP() << "man is not installed";
    EXPECT_EQ(runOnIt("LC_ALL=C.UTF-8 man --warnings -l -Tutf8 -Z"),
              runOnIt("LC_ALL=C.UTF-8 man -l -Tutf8 -Z"));
}

TEST_F(ManPage, IsCleanForMandoc)
{
    if (!isInstalled("mandoc"))
        GTEST_SKIP() << "mandoc is not installed";
    EXPECT_EQ(runOnIt("mandoc -Tlint"), "");
}

TEST_F(ManPage, HasEverySection)
{
    std::string const page = contentOf("sgview.1");
    std::size_t last = 0;
    for (char const* section : {"NAME", "SYNOPSIS", "DESCRIPTION", "COMMANDS", "OPTIONS", "CONFIGURATION",
                                "FILES", "ENVIRONMENT", "EXIT STATUS", "EXAMPLES", "SEE ALSO"}) {
        std::size_t const at = page.find(std::string("\n.SH ") + section + "\n");
        EXPECT_LT(last, at) << section;
        ASSERT_NE(at, std::string::npos) << section;
        last = at;
    }
}

TEST_F(ManPage, ReadsWell)
{
    if (!isInstalled("mandoc"))
        GTEST_SKIP() << "mandoc is not installed";
    std::string const page = runOnIt("mandoc -Tascii -O width=100");
    std::string plain;
    for (char const c : page) {
        if (c == '\b')
            plain.pop_back();
        else
            plain += c;
    }
    for (char const* text : {"     sgview render [OPTIONS] [FILE...]\n", "-T, --technique TECHNIQUE\n",
                             "     parallel sgview render walker.glb --turntable 240 --frames {1} --output "
                             "'turn-{frame:04}.png' \\\n",
                             "--screenshot-name TEMPLATE\n", "$XDG_CONFIG_HOME/sgview/config\n"})
        EXPECT_THAT(plain, HasSubstr(text));
}

} // namespace
