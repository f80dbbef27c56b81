#include "OpenGLRenderer/Strategist.h"
#include "SceneGraph/SGCombinationVisitor.h"
#include "SceneGraph/SGTraverser.h"
#include "Tests/Unit/OpenGLRenderer/DiagnosticLog.h"
#include "Tests/Unit/OpenGLRenderer/ScriptedCard.h"
#include "Tests/Unit/OpenGLRenderer/StoredPrefs.h"
#include "Utilities/PrefsFile.h"

#include <map>
#include <typeinfo>

// What the graphics diagnostic makes of bad drivers and bad stores. A new fault is a new row.

using namespace RendererTesting;
using namespace RendererTesting::DiagnosticLog;

namespace {

using Entries = std::map<std::string, std::string>;

enum class Store {
    memory,
    forgetful,  ///< keeps nothing
    unwritable, ///< a file in a folder that cannot be made
};

struct Fault {
    std::string name;
    /// What is wrong with the card, in other respects a good one.
    std::function<void(ScriptedCard&)> spoil;
    /// Up to the total time.
    Lines log;
    Capabilities verdict;
    std::string identity = "Vendor / Card / 2.1 Driver 7";
    Entries stored{};
    bool neededBefore = true;
    bool neededAfter = false;
    Store store = Store::memory;
};

void PrintTo(Fault const& fault, std::ostream* stream)
{
    *stream << fault.name;
}

using Card = ScriptedCard;

Capabilities const nothing{};
Capabilities const buffersOnly{true, false, false};
Capabilities const programOnly{false, true, false};
Capabilities const both{true, true, false};

// Parts of logs.
Lines const bothKept = claimsAll + buffers() + base() + program() + right + programWins;
Lines const untilProgram = claimsAll + buffers() + base();
Lines const offersNothing = scene() + claims(nothing);
Lines const buffersAlone = scene() + claims(buffersOnly) + buffers();
Lines const programRefused = scene() + limits() +
                             Lines{"possibly lying ATI card detected--disabling vertex program"} +
                             claims(buffersOnly) + buffers();
Lines const reverted{"VBO is slower -- reverting"};
Lines const programSlow{"Bad vertex program performance--disabling"};
Lines const programWrong{"Images differ--disabling vertex program"};
Lines const programWrongBent{"Second images differ--disabling vertex program"};
Lines const unreadable{"Could not read image correctly--disabling vertex program and VBO"};
Lines const checkingBuffers{"Checking VBO performance", rateLine("50")};
Lines const checkingProgram{"Checking vertex program performance"};

void leaveGood(Card&) {}

/// Both the plain path and the program draw such pictures.
void draw(Card& card, Picture const& rest, Picture const& bent)
{
    for (Card::Path* const path : {&card.processor, &card.program}) {
        path->rest = rest;
        path->bent = bent;
    }
}

void withoutPrograms(Card& card)
{
    card.claim("GL_ARB_vertex_buffer_object ");
}

Picture oneBitOff(Picture picture)
{
    for (unsigned char& byte : picture)
        byte ^= 1U;
    return picture;
}

Picture inCorner(Picture const& picture, std::size_t side)
{
    Picture result(picture.size());
    for (std::size_t pixel = 0; pixel < picturePixels; ++pixel)
        if (pixel / pictureSide < side && pixel % pictureSide < side)
            std::copy_n(&picture[4 * pixel], 4, &result[4 * pixel]);
    return result;
}

/// The first bytes of a picture; a driver that writes no more leaves the rest black.
Picture cut(Picture picture, std::size_t bytes)
{
    picture.resize(bytes);
    return picture;
}

Entries entries(std::string const& vbo, std::string const& program, std::string const& shader = "False",
                std::string const& card = "Vendor / Card / 2.1 Driver 7")
{
    return {{"GL_CARD", card}, {"GL_VBO", vbo}, {"GL_VertexProgram", program}, {"GL_VertexShader", shader}};
}

std::vector<Fault> claimFaults()
{
    Lines const withoutBuffers =
        scene() + limits() + claims(programOnly) + base() + program() + right + programWins;
    std::vector<Fault> rows{
        {"NoBufferObjects", [](Card& card) { card.claim("GL_ARB_vertex_program "); }, withoutBuffers,
         programOnly},
        {"NoPrograms", withoutPrograms, buffersAlone, buffersOnly},
        {"NoExtensions", [](Card& card) { card.claim(""); }, offersNothing, nothing},
        {"ExtensionsNull", [](Card& card) { card.gl.setString(GL_EXTENSIONS, std::nullopt); }, offersNothing,
         nothing},
        {"ShaderAlone", [](Card& card) { card.claim("GL_ARB_vertex_shader "); }, offersNothing, nothing},
        {"BuffersListedLastWithoutABlank",
         [](Card& card) { card.claim("GL_ARB_vertex_program GL_ARB_vertex_buffer_object"); }, withoutBuffers,
         programOnly},
        {"ProgramsListedLastWithoutABlank",
         [](Card& card) { card.claim("GL_ARB_vertex_buffer_object GL_ARB_vertex_program"); }, buffersAlone,
         buffersOnly},
        {"TailsOfLongerNames",
         [](Card& card) { card.claim("GL_NOT_ARB_vertex_buffer_object GL_OLDARB_vertex_program "); },
         bothKept, both},
        {"HeadsOfLongerNames",
         [](Card& card) { card.claim("GL_ARB_vertex_buffer_object_range GL_ARB_vertex_program1 "); },
         offersNothing, nothing},
        {"NoNativeInstructions",
         [](Card& card) { card.gl.setProgramLimit(GL_MAX_PROGRAM_NATIVE_INSTRUCTIONS_ARB, 0); },
         scene() + limits("0") + claims(buffersOnly) + buffers(), buffersOnly},
        {"OneNativeInstruction",
         [](Card& card) { card.gl.setProgramLimit(GL_MAX_PROGRAM_NATIVE_INSTRUCTIONS_ARB, 1); },
         scene() + limits("1") + claims(both) + buffers() + base() + program() + right + programWins, both},
        {"FewerThanNoNativeInstructions",
         [](Card& card) { card.gl.setProgramLimit(GL_MAX_PROGRAM_NATIVE_INSTRUCTIONS_ARB, -1); },
         scene() + limits("-1") + claims(both) + buffers() + base() + program() + right + programWins, both},
        {"RefusedCardWithoutNativeInstructions",
         [](Card& card) {
             card.gl.setString(GL_RENDERER, "Radeon 9200");
             card.gl.setProgramLimit(GL_MAX_PROGRAM_NATIVE_INSTRUCTIONS_ARB, 0);
         },
         scene() + limits("0") + claims(buffersOnly) + buffers(), buffersOnly,
         "Vendor / Radeon 9200 / 2.1 Driver 7"},
        {"RendererNull", [](Card& card) { card.gl.setString(GL_RENDERER, std::nullopt); }, bothKept, both,
         "Vendor /  / 2.1 Driver 7"},
        {"RendererEmpty", [](Card& card) { card.gl.setString(GL_RENDERER, ""); }, bothKept, both,
         "Vendor /  / 2.1 Driver 7"},
        {"NoNameAtAll",
         [](Card& card) {
             for (GLenum const name : {GL_VENDOR, GL_RENDERER, GL_VERSION})
                 card.gl.setString(name, std::nullopt);
         },
         bothKept, both, " /  / "}};

    auto const addCard = [&](std::string const& name, std::string const& renderer, bool refused) {
        rows.push_back({name, [=](Card& card) { card.gl.setString(GL_RENDERER, renderer); },
                        refused ? programRefused : bothKept, refused ? buffersOnly : both,
                        "Vendor / " + renderer + " / 2.1 Driver 7"});
    };
    addCard("Refused8500", "ATI Radeon 8500 DDR", true);
    addCard("Refused9000", "RADEON 9000 Series", true);
    addCard("Refused9100", "radeon 9100 igp", true);
    addCard("Refused9200", "ATI Radeon 9200 OpenGL Engine", true);
    addCard("Refused9250", "Radeon 9250", true);
    addCard("RefusedAllInWonder", "ALL-IN-WONDER 9000", true);
    addCard("RefusedFireMV", "ATI FireMV 2400 OpenGL Engine", true);
    addCard("Accepted9600", "ATI Radeon 9600 XT OpenGL Engine", false);
    addCard("Accepted9550", "Radeon 9550", false);
    addCard("AcceptedFireMV2200", "ATI FireMV 2200", false);
    addCard("AcceptedFireGL", "FireGL 8500", false);
    addCard("AcceptedGeForce", "NVIDIA GeForce 9200", false);
    return rows;
}

std::vector<Fault> speedFaults()
{
    return {
        {"BuffersSlower", [](Card& card) { card.buffers.frame = 20'001; },
         claimsAll + buffers("49.9975") + reverted + base() + program() + right + programWins, programOnly},
        {"BuffersAsFast", [](Card& card) { card.buffers.frame = 20'000; },
         claimsAll + buffers("50") + base() + program() + right + programWins, both},
        {"BuffersFasterByLittle", [](Card& card) { card.buffers.frame = 19'999; },
         claimsAll + buffers("50.0025") + base() + program() + right + programWins, both},
        {"BuffersStartInASecond", [](Card& card) { card.buffers.first = 1'000'000; }, bothKept, both},
        {"BuffersStartInMoreThanASecond", [](Card& card) { card.buffers.first = 1'000'001; },
         claimsAll + checkingBuffers + Lines{bailing} + reverted + base() + program() + right + programWins,
         programOnly},
        {"ProgramSlower", [](Card& card) { card.program.frame = 40'001; },
         untilProgram + program("24.9994") + programSlow, buffersOnly},
        {"ProgramAsFast", [](Card& card) { card.program.frame = 40'000; },
         untilProgram + program("25") + right + programWins, both},
        {"ProgramSlowerThanWithoutAPose", [](Card& card) { card.program.frame = 30'000; },
         untilProgram + program("33.3333") + right + programWins, both},
        {"ProgramStartsInASecond", [](Card& card) { card.program.first = 1'000'000; }, bothKept, both},
        {"ProgramStartsInMoreThanASecond", [](Card& card) { card.program.first = 1'000'001; },
         untilProgram + checkingProgram + Lines{bailing} + programSlow, buffersOnly},
        {"PlainStartsInAMinute", [](Card& card) { card.plain.first = 60'000'000; }, bothKept, both},
        {"EverythingAtOneRate",
         [](Card& card) {
             for (Card::Path* const path : {&card.buffers, &card.processor, &card.program})
                 path->frame = 20'000;
         },
         claimsAll + buffers("50") + base("50") + program("50") + right + programWins, both},
        {"EveryFrameTakesTwoSeconds",
         [](Card& card) {
             for (Card::Path* const path : {&card.plain, &card.buffers, &card.processor, &card.program})
                 path->frame = 2'000'000;
         },
         scene("0.5") + limits() + claims(both) +
             Lines{"Checking VBO performance", rateLine("0.5"), bailing} + reverted + base("0.5") +
             checkingProgram + Lines{bailing} + programSlow,
         nothing},
        {"ClockStandsStillOnceTheSceneStands",
         [](Card& card) {
             for (Card::Path* const path : {&card.buffers, &card.processor, &card.program})
                 path->frame = 0;
         },
         claimsAll + buffers("3e+06") + base("3e+06") + program("3e+06") + right + programWins, both},
        {"ClockNeverMoves",
         [](Card& card) {
             withoutPrograms(card);
             card.plain.frame = 0;
             card.buffers.frame = 0;
         },
         Lines{"Running graphics diagnostics"} + Lines(9, rateLine("3e+06")) +
             Lines{"Done creating test scene -- number of surfaces = 256"} + claims(buffersOnly) +
             buffers("3e+06", "3e+06"),
         buffersOnly},
        {"ClockGoesBackFromTheStart",
         [](Card& card) {
             for (Card::Path* const path : {&card.plain, &card.buffers, &card.processor, &card.program})
                 path->frame = -1'000;
         },
         scene("0") + limits() + claims(both) + buffers("0", "0") + base("0") + program("0") + right, both},
        {"ClockGoesBackUnderBuffers", [](Card& card) { card.buffers.frame = -1; },
         claimsAll + buffers("0") + reverted + base() + program() + right + programWins, programOnly},
        {"ClockGoesBackUnderThePlainPath", [](Card& card) { card.processor.frame = -1; },
         claimsAll + buffers() + base("0") + program() + right + programWins, both},
        {"ClockGoesBackUnderTheProgram", [](Card& card) { card.program.frame = -1; },
         untilProgram + program("0") + programSlow, buffersOnly},
        {"ClockGoesBackUnderBothPaths",
         [](Card& card) {
             card.processor.frame = -1;
             card.program.frame = -1;
         },
         claimsAll + buffers() + base("0") + program("0") + right, both},
    };
}

std::vector<Fault> referenceFaults()
{
    auto const plausible = [](std::string const& white, std::string const& nonWhite,
                              std::string const& change) {
        return claimsAll + buffers() + base("25", white, nonWhite) + program() + compared("0") +
               compared(change) + compared("0") + programWins;
    };
    auto const implausible = [](std::string const& white, std::string const& nonWhite) {
        return claimsAll + buffers() + base("25", white, nonWhite) + unreadable;
    };
    return {
        {"AllBlack", [](Card& card) { card.processor.rest = Picture(pictureBytes, 0); },
         implausible("0", "262144"), nothing},
        {"AllWhite", [](Card& card) { card.processor.rest = Picture(pictureBytes, 255); },
         implausible("262144", "0"), nothing},
        {"NothingReadBack", [](Card& card) { draw(card, {}, {}); }, implausible("0", "262144"), nothing},
        {"TooLittleWhite", [](Card& card) { draw(card, pictureWithWhite(2'621), bentPicture()); },
         implausible("2621", "259523"), nothing},
        {"WhiteEnough", [](Card& card) { draw(card, pictureWithWhite(2'622), bentPicture()); },
         plausible("2622", "259522", "0.499763"), both},
        {"TooLittleDrawn",
         [](Card& card) { draw(card, pictureWithWhite(picturePixels - 2'621), bentPicture()); },
         implausible("259523", "2621"), nothing},
        {"DrawnEnough",
         [](Card& card) { draw(card, pictureWithWhite(picturePixels - 2'622), bentPicture()); },
         plausible("259522", "2622", "0.499763"), both},
        {"HalfReadBack",
         [](Card& card) {
             draw(card, cut(restPicture(), pictureBytes / 2), cut(bentPicture(), pictureBytes / 2));
         },
         plausible("131072", "131072", "0.25"), both},
        {"DrawableTooSmall",
         [](Card& card) { draw(card, inCorner(bentPicture(), 384), inCorner(restPicture(), 384)); },
         plausible("98304", "163840", "0.25"), both},
        {"UnreadableAfterBuffersWereReverted",
         [](Card& card) {
             card.buffers.frame = 30'000;
             card.processor.rest = Picture();
         },
         claimsAll + buffers("33.3333") + reverted + base("25", "0", "262144") + unreadable, nothing},
        {"UnreadableWithoutPrograms",
         [](Card& card) {
             withoutPrograms(card);
             card.processor.rest = Picture();
         },
         buffersAlone, buffersOnly},
    };
}

std::vector<Fault> programPictureFaults()
{
    Lines const tried = untilProgram + program();
    auto const wrong = [=](std::string const& share) { return tried + compared(share) + programWrong; };
    auto const wrongBent = [=](std::string const& share) {
        return tried + compared("0") + compared("0.5") + compared(share) + programWrongBent;
    };
    return {
        {"ProgramDrawsNothing",
         [](Card& card) {
             card.program.rest = Picture(pictureBytes, 255);
             card.program.bent = Picture(pictureBytes, 255);
         },
         wrong("0.5"), buffersOnly},
        {"ProgramReadsBackNothing", [](Card& card) { card.program.rest = Picture(); }, wrong("1"),
         buffersOnly},
        {"WrongInOnePercentLess", [](Card& card) { card.program.rest = changed(restPicture(), 2'621, 11); },
         tried + compared("0.00999832") + compared("0.5") + compared("0") + programWins, both},
        {"WrongInOnePercentMore", [](Card& card) { card.program.rest = changed(restPicture(), 2'622, 11); },
         wrong("0.0100021"), buffersOnly},
        {"OffByTenEverywhere",
         [](Card& card) {
             card.program.rest = changed(restPicture(), picturePixels, 10);
             card.program.bent = changed(bentPicture(), picturePixels, 10);
         },
         bothKept, both},
        {"OffByElevenEverywhere",
         [](Card& card) { card.program.rest = changed(restPicture(), picturePixels, 11); }, wrong("1"),
         buffersOnly},
        {"OneBitOffEverywhere",
         [](Card& card) {
             card.program.rest = oneBitOff(restPicture());
             card.program.bent = oneBitOff(bentPicture());
         },
         bothKept, both},
        {"AlphaOffByTen",
         [](Card& card) { card.program.rest = changed(restPicture(), picturePixels, 10, 3); }, bothKept,
         both},
        {"AlphaMissing",
         [](Card& card) { card.program.rest = changed(restPicture(), picturePixels, 255, 3); }, wrong("1"),
         buffersOnly},
        {"AlphaMissingWhenBent",
         [](Card& card) { card.program.bent = changed(bentPicture(), picturePixels, 255, 3); },
         tried + compared("0") + compared("1") + compared("1") + programWrongBent, buffersOnly},
        {"ProgramDrawsTheRestPoseAlways", [](Card& card) { card.program.bent = card.program.rest; },
         tried + compared("0") + compared("0") + nothingTrusted, nothing},
        {"NeitherPathBends", [](Card& card) { draw(card, restPicture(), restPicture()); },
         tried + compared("0") + compared("0") + nothingTrusted, nothing},
        {"BendingShowsInOnePercentLess",
         [](Card& card) { draw(card, restPicture(), changed(restPicture(), 2'621, 11)); },
         tried + compared("0") + compared("0.00999832") + nothingTrusted, nothing},
        {"BendingShowsInOnePercentMore",
         [](Card& card) { draw(card, restPicture(), changed(restPicture(), 2'622, 11)); },
         tried + compared("0") + compared("0.0100021") + compared("0") + programWins, both},
        {"BendingShowsFaintly",
         [](Card& card) { draw(card, restPicture(), changed(restPicture(), picturePixels, 10)); },
         tried + compared("0") + compared("0") + nothingTrusted, nothing},
        {"ProgramBendsAnotherWay",
         [](Card& card) {
             card.program.bent = pictureWhere([](std::size_t pixel) { return pixel % 2 == 0; });
         },
         wrongBent("0.5"), buffersOnly},
        {"ProgramDrawsNothingWhenBent", [](Card& card) { card.program.bent = Picture(pictureBytes, 255); },
         wrongBent("0.5"), buffersOnly},
        {"WrongInOnePercentLessWhenBent",
         [](Card& card) { card.processor.bent = changed(bentPicture(), 2'621, 11); },
         tried + compared("0") + compared("0.5") + compared("0.00999832") + programWins, both},
        {"WrongInOnePercentMoreWhenBent",
         [](Card& card) { card.processor.bent = changed(bentPicture(), 2'622, 11); }, wrongBent("0.0100021"),
         buffersOnly},
        {"PlainPathDoesNotBend", [](Card& card) { card.processor.bent = restPicture(); }, wrongBent("0.5"),
         buffersOnly},
        {"PlainPathReadsBackNothingWhenBent", [](Card& card) { card.processor.bent = Picture(); },
         wrongBent("1"), buffersOnly},
        {"WrongPictureAfterRevertedBuffers",
         [](Card& card) {
             card.buffers.frame = 30'000;
             card.program.rest = bentPicture();
         },
         claimsAll + buffers("33.3333") + reverted + base() + program() + compared("0.5") + programWrong,
         nothing},
        {"SlowProgramIsNotLookedAt",
         [](Card& card) {
             card.program.frame = 50'000;
             card.program.rest = bentPicture();
         },
         untilProgram + program("20") + programSlow, buffersOnly},
    };
}

std::vector<Fault> storeFaults()
{
    std::string const me = "Vendor / Card / 2.1 Driver 7";
    std::vector<Fault> rows{
        {"EmptyStore", leaveGood, bothKept, both},
        {"GoodVerdict", leaveGood, bothKept, both, me, entries("True", "True"), false},
        {"NothingSaidOfTheShader", leaveGood, bothKept, both, me, entries("True", "True", ""), false},
        {"NothingSaidOfBuffers", leaveGood, bothKept, both, me, entries("", "True")},
        {"NothingSaidOfPrograms", leaveGood, bothKept, both, me, entries("True", "")},
        {"AnotherCard", leaveGood, bothKept, both, me,
         entries("False", "False", "False", "Vendor / Other / 2.1 Driver 7")},
        {"NewDriver", leaveGood, bothKept, both, me,
         entries("False", "False", "False", "Vendor / Card / 2.1 Driver 6")},
        {"CardInOtherLetters", leaveGood, bothKept, both, me,
         entries("True", "True", "False", "vendor / card / 2.1 driver 7")},
        {"BuffersStoredButLacking", [](Card& card) { card.claim(""); }, offersNothing, nothing, me,
         entries("True", "False")},
        {"ProgramStoredButLacking", withoutPrograms, buffersAlone, buffersOnly, me, entries("True", "TRUE")},
        {"WordStoredForWhatIsLacking", withoutPrograms, buffersAlone, buffersOnly, me, entries("True", "yes"),
         false},
        {"ShaderStored", leaveGood, bothKept, both, me, entries("True", "True", "True")},
        {"ShaderStoredOnACardThatClaimsIt", [](Card& card) { card.claim("GL_ARB_vertex_shader "); },
         offersNothing, nothing, me, entries("False", "False", "true")},
        {"ForgetfulStore", leaveGood, bothKept, both, me, {}, true, true, Store::forgetful},
        {"UnwritableStore", leaveGood, bothKept, both, me, {}, true, true, Store::unwritable},
    };
    auto const addSpelling = [&](std::string const& name, Entries const& stored, bool needed) {
        rows.push_back({name, leaveGood, bothKept, both, me, stored, needed});
    };
    for (std::string const spelling : {"true", "TRUE", "False", "false", "FALSE"}) {
        addSpelling("BuffersStoredAs_" + spelling, entries(spelling, "True"), false);
        addSpelling("ProgramStoredAs_" + spelling, entries("True", spelling), false);
    }
    int number = 0;
    for (std::string const word : {"yes", "1", "0", " True", "True ", "tRUE", "Falsehood"}) {
        std::string const name = "OtherWord" + std::to_string(++number);
        addSpelling(name + "ForBuffers", entries(word, "True"), true);
        addSpelling(name + "ForPrograms", entries("True", word), true);
    }
    return rows;
}

std::vector<Fault> catalogue()
{
    std::vector<Fault> rows{{"None", leaveGood, bothKept, both}};
    for (auto const& part :
         {claimFaults(), speedFaults(), referenceFaults(), programPictureFaults(), storeFaults()})
        rows.insert(rows.end(), part.begin(), part.end());
    return rows;
}

class ForgetfulPrefs : public Prefs {
public:
    [[nodiscard]] std::string getString(std::string const&) const override { return {}; }
    void setString(std::string const&, std::string const&) override {}
};

smart_ptr<Prefs> freshStore(Store kind)
{
    switch (kind) {
    case Store::forgetful:
        return make_smart<ForgetfulPrefs>();
    case Store::unwritable:
        return make_smart<PrefsFile>("/dev/null/preferences");
    default:
        return make_smart<MemoryPrefs>();
    }
}

/// The kinds of the passes, those within walks included.
std::vector<std::string> kindsOf(std::vector<smart_ptr<SGNodeVisitor>> const& passes)
{
    std::vector<std::string> kinds;
    for (smart_ptr<SGNodeVisitor> const& pass : passes) {
        SGNodeVisitor const& visitor = *pass;
        kinds.emplace_back(typeid(visitor).name());
        std::vector<std::string> inner;
        if (auto const* const walk = dynamic_cast<SGTraverser const*>(&visitor))
            inner = kindsOf({walk->getVisitor()});
        else if (auto const* const group = dynamic_cast<SGCombinationVisitor const*>(&visitor))
            inner = kindsOf(group->getVisitors());
        kinds.insert(kinds.end(), inner.begin(), inner.end());
    }
    return kinds;
}

class DiagnosticFault : public RendererTest, public testing::WithParamInterface<Fault> {
protected:
    DiagnosticFault()
    {
        LogCapture const quiet;
        PrefsFactory::setMaker([this] { return store; });
        RogueSingleton<Prefs, PrefsFactory>::reset();
        for (auto const& [key, value] : GetParam().stored)
            store->setString(key, value);
        GetParam().spoil(card);
    }
    ~DiagnosticFault() override
    {
        PrefsFactory::setMaker({});
        RogueSingleton<Prefs, PrefsFactory>::reset();
    }

    /// As a host asks at its start.
    static bool isNeeded()
    {
        LogCapture const quiet;
        return GLRenderer::renderer->isDiagnosticNeeded();
    }

    /// Starts the next process, as far as the store can tell.
    void restart()
    {
        if (GetParam().store != Store::memory)
            store = freshStore(GetParam().store);
        RogueSingleton<Prefs, PrefsFactory>::reset();
    }

    void expectStored(Capabilities const& verdict) const
    {
        bool const kept = GetParam().store == Store::memory;
        auto const flag = [=](bool value) { return kept ? std::string(value ? "True" : "False") : ""; };
        EXPECT_EQ(store->getString("GL_VBO"), flag(verdict.vbo));
        EXPECT_EQ(store->getString("GL_VertexProgram"), flag(verdict.vertexProgram));
        EXPECT_EQ(store->getString("GL_VertexShader"), flag(verdict.vertexShader));
        EXPECT_EQ(store->getString("GL_CARD"), kept ? GetParam().identity : "");
    }

    ScriptedCard card{gl};
    smart_ptr<Prefs> store = freshStore(GetParam().store);
};

} // namespace

TEST_P(DiagnosticFault, GetsTheRightVerdict)
{
    Fault const& fault = GetParam();
    EXPECT_EQ(isNeeded(), fault.neededBefore);

    LogCapture log;
    GLRenderer::renderer->runDiagnostic();
    EXPECT_EQ(openglText(log.text()), textOf(fault.log + completed(fault.verdict, card.clock.time)));
    EXPECT_EQ(kindsOf(GLRenderer::renderer->strategy), kindsOf(Strategist::computeStrategy(fault.verdict)));
    EXPECT_EQ(card.sceneObjectsLeft(), 0U);

    restart();
    expectStored(fault.verdict);
    EXPECT_EQ(isNeeded(), fault.neededAfter);
}

INSTANTIATE_TEST_SUITE_P(Catalogue, DiagnosticFault, testing::ValuesIn(catalogue()),
                         [](auto const& row) { return row.param.name; });
