#include "Tests/Command/OptionNames.h"
#include "Tests/Command/Sgview.h"

#include <gmock/gmock.h>

#include <map>
#include <regex>
#include <set>

namespace {

using Arguments = std::vector<std::string>;

/// Uses every option of a command, in as few runs as go together. All of them have to end well.
class OptionUse : public SgviewTest {
protected:
    OptionUse() { writeFile("settings", "[bench]\nquiet = false\n"); }

    void use(std::string const& command, Arguments arguments, Circumstances const& circumstances = {})
    {
        for (std::string const& argument : arguments)
            if (argument.starts_with("--"))
                used_[command].insert(argument);
        arguments.insert(arguments.begin(), command);
        Outcome const outcome = run(arguments, circumstances);
        EXPECT_EQ(outcome.status, 0) << testing::PrintToString(arguments) << "\n" << outcome.errors;
    }

    /// Uses what every command has, on top of what its other runs use.
    void expectAllUsed(std::string const& command, std::set<std::string> const& elsewhere = {})
    {
        for (char const* const question : {"--help", "--version"})
            use(command, {question});
        std::set<std::string> used = used_[command];
        used.insert(elsewhere.begin(), elsewhere.end());
        EXPECT_EQ(used, optionsIn(runWell({command, "--help"})));
    }

    /// What goes with any model, and with anything.
    static Arguments with(Arguments arguments, Arguments const& further)
    {
        arguments.insert(arguments.end(), further.begin(), further.end());
        return arguments;
    }

    Arguments const import{"--texture-folder", ".", "--memory-limit", "900", "--time-limit", "9"};
    Arguments const view{"--azimuth", "1", "--elevation",   "2", "--zoom", "1.5",
                         "--up",      "z", "--orthographic"};
    Arguments const scene{"--background", "#102030", "--colorize", "#ffffff,#000000",
                          "--wireframe",  "--unlit", "--mirror"};
    Arguments const general{"--quiet", "--config", "settings", "--module", SG_LIBRARIES};
    Arguments const otherwise{"--log", "error", "--no-config"};

private:
    std::map<std::string, std::set<std::string>> used_;
};

TEST_F(OptionUse, Render)
{
    Arguments film{creature(),    "--output",   "a.webp",      "--format", "webp",          "--quality",
                   "50",          "--size",     "32x24",       "--frames", "0-1",           "--fps",
                   "2",           "--max-size", "16",          "--json",   "--device",      "0",
                   "--animation", "swim",       "--technique", "plain",    "--supersample", "2"};
    for (Arguments const& further : {import, view, scene, general})
        film = with(film, further);
    use("render", film);
    use("render",
        with({creature(), "--output", "a.png", "--animation", "0", "--time", "0.1", "--size", "8x8"},
             otherwise));
    use("render", {creature(), "--output", "a{frame}.png", "--size", "8x8", "--turntable", "2"});
    expectAllUsed("render");
}

TEST_F(OptionUse, Info)
{
    use("info", with({creature(), "--animation", "swim", "--time", "0.1", "--json"}, import));
    use("info", with({"--gpu", "--device", "0"}, general));
    use("info", with({creature()}, otherwise));
    expectAllUsed("info");
}

TEST_F(OptionUse, Demo)
{
    use("demo",
        with({"--output", "a.png", "--time", "1", "--size", "8x8", "--technique", "plain", "--device", "0"},
             general));
    use("demo", with({"--output", "a.png", "--size", "8x8"}, otherwise));
    expectAllUsed("demo", {"--window"}); // which is used where there is a display
}

TEST_F(OptionUse, Compare)
{
    Arguments sheet{creature(), "--animation", "swim",  "--times",  "1", "--output",
                    "a.png",    "--size",      "64x48", "--device", "0"};
    for (Arguments const& further : {import, view, scene, general})
        sheet = with(sheet, further);
    use("compare", sheet);
    use("compare", with({"--demo", "--json", "--times", "1", "--size", "16x16"}, otherwise));
    expectAllUsed("compare");
}

TEST_F(OptionUse, Diagnose)
{
    Circumstances const user = asNewUser();
    Arguments const faulty{"--module", FAULTY_MODULE};
    use("diagnose",
        with({"--force", "--report", "a.html", "--json", "--quiet", "--config", "settings"}, faulty), user);
    use("diagnose", with(with({"--why", "--device", "0"}, otherwise), faulty), user);
    use("diagnose",
        with(with({"--model", creature(), "--animation", "swim", "--times", "1"}, import), faulty), user);
    expectAllUsed("diagnose");
}

TEST_F(OptionUse, Bench)
{
    Arguments crowd{"--scene",  creature(), "--count", "1",           "--frames", "1",
                    "--output", "a.png",    "--json",  "--device",    "0",        "--animation",
                    "swim",     "--size",   "8x8",     "--technique", "plain"};
    for (Arguments const& further : {import, general})
        crowd = with(crowd, further);
    use("bench", crowd);
    use("bench", with({"--moving", "--count", "4", "--frames", "1", "--size", "8x8"}, otherwise));
    expectAllUsed("bench");
}

TEST_F(OptionUse, NoCommandIsForgotten)
{
    std::string const help = runWell({"--help"});
    std::string const list = help.substr(0, help.find("\n  FILE..."));
    std::regex const entry("\n  ([a-z]+) ");
    std::vector<std::string> names;
    for (std::sregex_iterator i(list.begin(), list.end(), entry), end; i != end; ++i)
        names.push_back((*i)[1]);
    EXPECT_THAT(names, testing::UnorderedElementsAre("render", "info", "demo", "compare", "diagnose", "bench",
                                                     "help"));
    EXPECT_EQ(optionsIn(runWell({"help", "--help"})), std::set<std::string>{"--help"});
}

} // namespace
