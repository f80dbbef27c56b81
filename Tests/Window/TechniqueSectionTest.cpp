#include "Tests/Frame/NameCount.h"
#include "Tests/Window/PanelTesting.h"

#include <algorithm>
#include <array>

namespace {

class TechniqueSection : public PanelTest {};

TEST_F(TechniqueSection, ChoosesTheTechnique)
{
    using sgview::Technique;
    open(CREATURE);
    EXPECT_EQ(session.technique.reason(), "for a test");
    if (!sgview::lackingFor(Technique::vbo).empty())
        GTEST_SKIP() << "the driver lacks " << sgview::lackingFor(Technique::vbo);
    widgets.click({"panel", "Technique", "vbo"});
    EXPECT_EQ(session.technique.current(), Technique::vbo);
    EXPECT_EQ(session.technique.reason(), "chosen here");
    draw();
    EXPECT_TRUE(std::ranges::any_of(session.passes.passes(), [](auto const& pass) {
        return pass.name.find("VBO") != std::string::npos;
    }));
}

TEST_F(TechniqueSection, TellsEachPassOfTheTechnique)
{
    open(CREATURE);
    draw();
    draw();
    auto const& passes = session.passes.passes();
    ASSERT_GE(passes.size(), 9U);
    for (auto const& pass : passes) {
        EXPECT_GE(pass.milliseconds, 0.0) << pass.name;
        EXPECT_EQ(std::ranges::count(passes, pass.name, &sgview::PassTimes::Pass::name), 1) << pass.name;
    }
}

/// What a technique makes of a scene for its first two frames, and which passes it draws by.
struct Effort {
    std::array<long, 4> made;
    std::array<long, 4> left;
    std::vector<std::string> passes;

    bool operator==(Effort const&) const = default;
};

std::array<NameCount::Kind, 4> kinds(NameCount const& count)
{
    return {count.buffers(), count.textures(), count.programs(), count.shaderObjects()};
}

TEST_F(TechniqueSection, EachTechniqueDrawsAsAtFirstAfterAllOthers)
{
    open(CREATURE);
    NameCount const count;
    auto const goAround = [&] {
        std::vector<Effort> efforts;
        do {
            Effort effort;
            auto const before = kinds(count);
            draw();
            session.step(1);
            draw();
            auto const after = kinds(count);
            for (std::size_t i = 0; i < after.size(); ++i) {
                effort.made[i] = after[i].made - before[i].made;
                effort.left[i] = after[i].left;
                EXPECT_EQ(after[i].wrongFrees, 0);
            }
            for (auto const& pass : session.passes.passes())
                effort.passes.push_back(pass.name);
            efforts.push_back(effort);
            session.moveTechnique(1);
        } while (session.technique.current() != sgview::Technique::plain);
        return efforts;
    };
    std::vector<Effort> const first = goAround();
    if (first.size() == 1)
        GTEST_SKIP() << "the driver has but one technique";
    EXPECT_EQ(goAround(), first);
    EXPECT_EQ(goAround(), first);
}

} // namespace
