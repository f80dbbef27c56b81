#include "Tests/Command/OptionNames.h"
#include "Tests/Window/WindowTesting.h"

#include <fstream>

namespace {

/// Uses every option of the window, which has to open, or what is asked for to be said.
class OptionUse : public WindowTest {
protected:
    using Arguments = std::vector<std::string>;

    void note(Arguments const& arguments)
    {
        for (std::string const& argument : arguments)
            if (argument.starts_with("--"))
                used.insert(argument);
    }

    void show(Arguments const& arguments)
    {
        note(arguments);
        Arguments all{CREATURE};
        all.insert(all.end(), arguments.begin(), arguments.end());
        ASSERT_NO_FATAL_FAILURE(open(all));
        ASSERT_TRUE(eventually([this] { return user->title() == "creature.glb - sgview"; })) << errors();
        quitWell();
    }

    std::string ask(Arguments arguments)
    {
        note(arguments);
        arguments.insert(arguments.begin(), SGVIEW);
        Process asked(arguments, {{"HOME", home.string()}, {"XDG_CONFIG_HOME", std::nullopt}},
                      (folder / "answer-errors").string());
        std::string answer = asked.readAll();
        EXPECT_TRUE(eventually([&] { return asked.status().has_value(); }));
        EXPECT_EQ(asked.status(), 0) << arguments.back();
        EXPECT_NE(answer, "") << arguments.back();
        return answer;
    }

    std::set<std::string> used;
};

TEST_F(OptionUse, EveryOptionOfTheWindow)
{
    std::ofstream(folder / "settings") << "unlit = false\n";
    show({"--size",
          "1000x640",
          "--screenshot-name",
          "{model}",
          "--animation",
          "swim",
          "--technique",
          "plain",
          "--module",
          SG_LIBRARIES,
          "--azimuth",
          "1",
          "--elevation",
          "2",
          "--zoom",
          "1.5",
          "--up",
          "z",
          "--orthographic",
          "--background",
          "#dbe0e6",
          "--colorize",
          "#ffffff,#000000",
          "--wireframe",
          "--unlit",
          "--mirror",
          "--texture-folder",
          folder.string(),
          "--memory-limit",
          "900",
          "--time-limit",
          "9",
          "--ui-scale",
          "1",
          "--quiet",
          "--config",
          (folder / "settings").string()});
    show({"--log", "error", "--no-config"});
    for (Arguments const& question :
         {Arguments{"--list-keys"}, Arguments{"--print-config"}, Arguments{"--print-completion", "fish"},
          Arguments{"--print-man"}, Arguments{"--version"}})
        ask(question);
    std::set<std::string> const all = optionsIn(ask({"--help"}));
    EXPECT_EQ(used, all);
}

} // namespace
