#include "Tests/Command/Sgview.h"
#include "Tests/Command/ShellCommand.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsSupersetOf;
using testing::Not;
using testing::UnorderedElementsAre;

class Completion : public SgviewTest {
protected:
    Completion()
    {
        for (char const* name : {"duck.glb", "CRATE.OBJ", "my duck.dae", "notes.txt"})
            writeFile(name, "");
        std::filesystem::create_directory(folder / "textures");
        std::filesystem::create_directory(folder / "config");
    }

    /// Runs a program on a script in the folder; skips the test where there is no such program.
    [[nodiscard]] ShellOutcome runScript(std::string const& program, std::string const& script) const
    {
        writeFile("config/script", script);
        return runInShell("cd '" + folder.string() + "' && XDG_CONFIG_HOME=$PWD/config " + program +
                          " config/script");
    }

    void writeCompletion(std::string const& shell) const
    {
        writeFile("config/completion", runWell({"--print-completion", shell}));
    }

    /// What bash offers for the last of the words, by the function that it calls for this.
    [[nodiscard]] std::vector<std::string> offeredByBash(std::string const& words) const
    {
        writeCompletion("bash");
        ShellOutcome const outcome =
            runScript("bash --norc",
                      "source config/completion\ncomplete -p sgview | grep -q -e '-F _sgview ' || exit 9\n"
                      "COMP_WORDS=(" +
                          words +
                          ")\nCOMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n_sgview\n"
                          "[ ${#COMPREPLY[@]} = 0 ] || printf '%s\\n' \"${COMPREPLY[@]}\"\n");
        EXPECT_EQ(outcome.status, 0) << outcome.output;
        return linesOf(outcome.output);
    }

    [[nodiscard]] std::vector<std::string> offeredByFish(std::string const& line) const
    {
        writeCompletion("fish");
        ShellOutcome const outcome =
            runScript("fish --no-config", "source config/completion\ncomplete -C '" + line + "'\n");
        EXPECT_EQ(outcome.status, 0) << outcome.output;
        std::vector<std::string> offered = linesOf(outcome.output);
        for (std::string& one : offered)
            one.resize(std::min(one.find('\t'), one.size()));
        return offered;
    }

    /// The specifications that zsh's _arguments gets for the last of the words.
    [[nodiscard]] std::vector<std::string> askedOfZsh(std::string const& words) const
    {
        writeCompletion("zsh");
        ShellOutcome const outcome = runScript(
            "zsh -f", "_arguments() { print -rl -- \"$@\" }\n_describe() { print -rl -- \"${(@P)4}\" }\n"
                      "words=(" +
                          words + ")\nCURRENT=${#words}\nsource config/completion\n");
        EXPECT_EQ(outcome.status, 0) << outcome.output;
        return linesOf(outcome.output);
    }
};

TEST_F(Completion, BashKnowsCommandsAndModels)
{
    EXPECT_THAT(offeredByBash("sgview ''"),
                UnorderedElementsAre("render", "info", "demo", "compare", "diagnose", "bench", "help",
                                     "duck.glb", "CRATE.OBJ", "my duck.dae", "config", "textures"));
    EXPECT_THAT(offeredByBash("sgview com"), ElementsAre("compare"));
    EXPECT_THAT(offeredByBash("sgview help in"), ElementsAre("info"));
    EXPECT_THAT(offeredByBash("sgview info CR"), ElementsAre("CRATE.OBJ"));
    EXPECT_THAT(offeredByBash("sgview render 'my'"), ElementsAre("my duck.dae"));
    EXPECT_THAT(offeredByBash("sgview demo ''"), ElementsAre());
}

TEST_F(Completion, BashKnowsOptionsAndValues)
{
    EXPECT_THAT(offeredByBash("sgview render --turn"), ElementsAre("--turntable"));
    EXPECT_THAT(offeredByBash("sgview info --turn"), ElementsAre());
    EXPECT_THAT(offeredByBash("sgview -"), IsSupersetOf({"-T", "--list-keys", "--print-man", "--help"}));
    EXPECT_THAT(offeredByBash("sgview demo --technique sh"), ElementsAre("shader", "shader+vbo"));
    EXPECT_THAT(offeredByBash("sgview -T pl"), ElementsAre("plain"));
    EXPECT_THAT(offeredByBash("sgview render --format = w"), ElementsAre("webp"));
    EXPECT_THAT(offeredByBash("sgview render --format ="), ElementsAre("png", "webp", "rgba", "y4m"));
    EXPECT_THAT(offeredByBash("sgview compare --log ''"), ElementsAre("opengl", "error", "opengl,error"));
    EXPECT_THAT(offeredByBash("sgview render --device ''"), ElementsAre("list"));
    EXPECT_THAT(offeredByBash("sgview render --background ''"), ElementsAre("transparent"));
    EXPECT_THAT(offeredByBash("sgview render --fps ''"), ElementsAre());
    EXPECT_THAT(offeredByBash("sgview render --texture-folder ''"),
                UnorderedElementsAre("config", "textures"));
    EXPECT_THAT(offeredByBash("sgview bench --scene sk"), ElementsAre("skinned", "skinned-varied"));
    EXPECT_THAT(offeredByBash("sgview bench --scene du"), ElementsAre("duck.glb"));
    EXPECT_THAT(offeredByBash("sgview render -o n"), ElementsAre("notes.txt"));
    EXPECT_THAT(offeredByBash("sgview --print-completion ''"), ElementsAre("bash", "zsh", "fish"));
}

TEST_F(Completion, Fish)
{
    if (!isInstalled("fish"))
        GTEST_SKIP() << "fish is not installed";
    EXPECT_THAT(offeredByFish("sgview "),
                IsSupersetOf({"render", "info", "demo", "compare", "diagnose", "bench", "help", "duck.glb"}));
    EXPECT_THAT(offeredByFish("sgview help co"), ElementsAre("compare"));
    EXPECT_THAT(offeredByFish("sgview render --turn"), ElementsAre("--turntable"));
    EXPECT_THAT(offeredByFish("sgview info --turn"), ElementsAre());
    EXPECT_THAT(offeredByFish("sgview render -T sh"), ElementsAre("shader", "shader+vbo"));
    EXPECT_THAT(offeredByFish("sgview render --format "), UnorderedElementsAre("png", "webp", "rgba", "y4m"));
    EXPECT_THAT(offeredByFish("sgview render --texture-folder te"), ElementsAre("textures/"));
    EXPECT_THAT(offeredByFish("sgview render --fps "), ElementsAre());
    EXPECT_THAT(offeredByFish("sgview bench --scene sk"), ElementsAre("skinned", "skinned-varied"));
    EXPECT_THAT(offeredByFish("sgview bench --scene du"), ElementsAre("duck.glb"));
    EXPECT_THAT(offeredByFish("sgview render -o n"), ElementsAre("notes.txt"));
}

TEST_F(Completion, Zsh)
{
    if (!isInstalled("zsh"))
        GTEST_SKIP() << "zsh is not installed";
    std::vector<std::string> const window = askedOfZsh("sgview ''");
    EXPECT_THAT(window,
                Contains("(--print-completion)--print-completion=[Print a script by which bash, zsh or "
                         "fish completes what you type, and exit]:SHELL:(bash zsh fish)"));
    EXPECT_THAT(window, Contains(HasSubstr("*:FILE:_files -g \"*.(#i)(3d|")));
    std::vector<std::string> const render = askedOfZsh("sgview render ''");
    EXPECT_THAT(render,
                Contains("(-T --technique)--technique=[How to draw]:TECHNIQUE:(auto plain vbo program "
                         "program+vbo shader shader+vbo)"));
    EXPECT_THAT(render, Contains("(-q --quiet)-q[No warnings, no log, no progress]"));
    EXPECT_THAT(render,
                Contains("*--texture-folder=[Also look here for textures and side files]:DIR:_files -/"));
    EXPECT_THAT(render, Not(Contains(HasSubstr("--list-keys"))));
    EXPECT_THAT(askedOfZsh("sgview bench ''"),
                Contains(HasSubstr(":SCENE|FILE:{compadd - many textured skinned skinned-varied deep; "
                                   "_files -g \"*.(#i)(3d|")));
    EXPECT_THAT(askedOfZsh("sgview help ''"),
                Contains("1:COMMAND:(render info demo compare diagnose bench help)"));
    EXPECT_EQ(runInShell("zsh -n '" + (folder / "config/completion").string() + "'").output, "");
}

TEST_F(Completion, UnknownShell)
{
    expectFailure({"--print-completion", "cmd"}, 2,
                  "--print-completion: 'cmd' is not a shell: bash, zsh or fish");
}

} // namespace
