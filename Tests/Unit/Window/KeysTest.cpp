#include "Viewer/Window/Keys.h"

#include <gmock/gmock.h>

#include <set>
#include <vector>

namespace sgview {
namespace {

using testing::HasSubstr;

SDL_KeyboardEvent pressed(SDL_Keycode key, int modifiers = KMOD_NONE)
{
    SDL_KeyboardEvent press{};
    press.keysym.sym = key;
    press.keysym.mod = static_cast<Uint16>(modifiers);
    return press;
}

SDL_KeyboardEvent held(SDL_Keycode key)
{
    SDL_KeyboardEvent press = pressed(key);
    press.repeat = 1;
    return press;
}

std::vector<KeyBinding> allBindings()
{
    std::vector<KeyBinding> all;
    for (KeyGroup const& group : keyGroups())
        all.insert(all.end(), group.bindings.begin(), group.bindings.end());
    return all;
}

std::vector<Stroke> strokes(KeyBinding const& binding)
{
    std::vector<Stroke> both{binding.stroke};
    if (binding.alternative.key != SDLK_UNKNOWN)
        both.push_back(binding.alternative);
    return both;
}

TEST(Keys, EveryKeyOfTheTableIsObeyed)
{
    for (KeyBinding const& binding : allBindings())
        for (Stroke const& stroke : strokes(binding))
            EXPECT_EQ(actionOf(pressed(stroke.key, stroke.shift ? KMOD_LSHIFT : KMOD_NONE)), binding.action)
                << stroke.name();
}

TEST(Keys, NoKeyAndNoActionStandsTwice)
{
    std::set<std::string> names;
    std::set<Action> actions;
    for (KeyBinding const& binding : allBindings()) {
        for (Stroke const& stroke : strokes(binding))
            EXPECT_TRUE(names.insert(stroke.name()).second) << stroke.name();
        EXPECT_TRUE(actions.insert(binding.action).second) << binding.text;
    }
    EXPECT_EQ(actions.size(), static_cast<std::size_t>(Action::leave) + 1); // none is out of reach
}

TEST(Keys, ShiftTellsTwoActionsApart)
{
    EXPECT_EQ(actionOf(pressed(SDLK_t)), Action::nextTechnique);
    EXPECT_EQ(actionOf(pressed(SDLK_t, KMOD_RSHIFT)), Action::previousTechnique);
    EXPECT_EQ(actionOf(pressed(SDLK_q, KMOD_LSHIFT)), std::nullopt);
}

TEST(Keys, AHeldKeyMovesOnButSwitchesOnce)
{
    EXPECT_EQ(actionOf(held(SDLK_LEFT)), Action::orbitLeft);
    EXPECT_EQ(actionOf(held(SDLK_MINUS)), Action::zoomOut);
    EXPECT_EQ(actionOf(held(SDLK_PERIOD)), Action::stepForward);
    for (SDL_Keycode const key : {SDLK_p, SDLK_w, SDLK_TAB, SDLK_SPACE, SDLK_t, SDLK_PAGEDOWN, SDLK_q})
        EXPECT_EQ(actionOf(held(key)), std::nullopt) << SDL_GetKeyName(key);
}

TEST(Keys, APlusIsAPlusOnEveryKeyboard)
{
    EXPECT_EQ(actionOf(pressed(SDLK_PLUS)), Action::zoomIn);
    EXPECT_EQ(actionOf(pressed(SDLK_EQUALS, KMOD_LSHIFT)), Action::zoomIn);
    EXPECT_EQ(actionOf(pressed(SDLK_KP_PLUS)), Action::zoomIn);
    EXPECT_EQ(actionOf(pressed(SDLK_KP_MINUS)), Action::zoomOut);
}

TEST(Keys, LocksDoNotMatterAndSystemCombinationsAreLeftAlone)
{
    EXPECT_EQ(actionOf(pressed(SDLK_q, KMOD_CAPS | KMOD_NUM)), Action::quit);
    for (int const modifier : {KMOD_LCTRL, KMOD_RALT, KMOD_LGUI})
        EXPECT_EQ(actionOf(pressed(SDLK_q, modifier)), std::nullopt);
    EXPECT_EQ(actionOf(pressed(SDLK_UNKNOWN)), std::nullopt);
}

TEST(Keys, TheListHasEveryLine)
{
    std::string const list = keyList();
    for (KeyGroup const& group : keyGroups()) {
        EXPECT_THAT(list, HasSubstr(std::string(group.title) + "\n"));
        for (KeyBinding const& binding : group.bindings)
            EXPECT_THAT(list, HasSubstr("  " + strokesOf(binding) + " "));
    }
    for (PointerGesture const& gesture : pointerGestures())
        EXPECT_THAT(list, HasSubstr(gesture.text));
    EXPECT_THAT(list, HasSubstr("  F5 or R             read the file again\n"));
    EXPECT_EQ(keyFor(Action::previousTechnique), "Shift+T");
}

} // namespace
} // namespace sgview
