#include "OpenGLRenderer/DiagnosticPrefs.h"
#include "OpenGLRenderer/DiagnosticRun.h"
#include "Tests/Unit/OpenGLRenderer/DiagnosticLog.h"
#include "Tests/Unit/OpenGLRenderer/ScriptedCard.h"
#include "Tests/Unit/OpenGLRenderer/StoredPrefs.h"

// The step that no card's claims lead to: cards are not believed in vertex shaders.

using namespace RendererTesting;
using namespace RendererTesting::DiagnosticLog;

namespace {

class DiagnosticShaderStep : public RendererTest {
protected:
    /// Runs on a card of which all is believed that is said here, and holds the log against what is given
    /// between the claims and the total time.
    void run(Capabilities const& claimed, Capabilities const& verdict, Lines const& judgement)
    {
        DiagnosticRun([=] { return claimed; }).carryOut();
        EXPECT_EQ(openglText(log.text()),
                  textOf(scene() + claims(claimed) + judgement + completed(verdict, card.clock.time)));
        EXPECT_EQ(Diagnostic::readPrefs(), verdict);
    }

    ScriptedCard card{gl};
    StoredPrefs prefs;
    LogCapture log;
};

Capabilities const all{true, true, true};
Capabilities const buffersAndProgram{true, true, false};
Capabilities const buffersAndShader{true, false, true};
Capabilities const buffersOnly{true, false, false};

} // namespace

TEST_F(DiagnosticShaderStep, EnablesAShaderThatIsRight)
{
    run(buffersAndShader, buffersAndShader, buffers() + base() + shader() + right + shaderWins);
    EXPECT_EQ(gl.programs().generated, 0);
}

TEST_F(DiagnosticShaderStep, EnablesTheShaderWhereItIsFaster)
{
    card.shader.frame = 10'000;
    run(all, buffersAndShader, buffers() + base() + program() + right + shader("100") + right + shaderWins);
}

TEST_F(DiagnosticShaderStep, EnablesTheProgramWhereTheShaderIsSlower)
{
    run(all, buffersAndProgram, buffers() + base() + program() + right + shader() + right + programWins);
}

TEST_F(DiagnosticShaderStep, KeepsTheShaderWhereBothAreAsFast)
{
    card.shader.frame = card.program.frame;
    run(all, buffersAndShader, buffers() + base() + program() + right + shader("80") + right);
}

TEST_F(DiagnosticShaderStep, DisablesAShaderThatIsSlowerThanTheProcessor)
{
    card.shader.frame = 40'001;
    Lines const slow{"Bad vertex shader performance--disabling"};
    run(all, buffersAndProgram,
        buffers() + base() + program() + right + shader("24.9994") + slow + programWins);
}

TEST_F(DiagnosticShaderStep, KeepsAShaderThatIsAsFastAsTheProcessor)
{
    card.shader.frame = 40'000;
    run(buffersAndShader, buffersAndShader, buffers() + base() + shader("25") + right + shaderWins);
}

TEST_F(DiagnosticShaderStep, DisablesAShaderWhoseFirstFrameTakesTooLong)
{
    card.shader.first = 1'000'001;
    Lines trial = shader();
    trial.back() = bailing;
    Lines const slow{"Bad vertex shader performance--disabling"};
    run(buffersAndShader, buffersOnly, buffers() + base() + trial + slow);
}

TEST_F(DiagnosticShaderStep, DisablesAShaderThatIsWrongAtRest)
{
    card.shader.rest = changed(restPicture(), 2'622, 11);
    Lines const wrong{"Images differ--disabling vertex shader"};
    run(all, buffersAndProgram,
        buffers() + base() + program() + right + shader() + compared("0.0100021") + wrong + programWins);
}

TEST_F(DiagnosticShaderStep, DisablesAShaderThatIsWrongWhenBent)
{
    card.shader.bent = pictureWithWhite(0);
    Lines const wrong{"Second images differ--disabling vertex shader"};
    run(all, buffersAndProgram,
        buffers() + base() + program() + right + shader() + compared("0") + compared("0.5") +
            compared("0.5") + wrong + programWins);
}

TEST_F(DiagnosticShaderStep, DisablesEverythingWhereAShaderDoesNotBendThoughTheProgramHasPassed)
{
    card.shader.bent = restPicture();
    run(all, {},
        buffers() + base() + program() + right + shader() + compared("0") + compared("0") + nothingTrusted);
}

TEST_F(DiagnosticShaderStep, DisablesEverythingWhereAShaderAloneDoesNotBend)
{
    card.shader.bent = restPicture();
    run(buffersAndShader, {}, buffers() + base() + shader() + compared("0") + compared("0") + nothingTrusted);
}

TEST_F(DiagnosticShaderStep, DoesNotTryTheShaderOnceEverythingIsDisabled)
{
    card.program.bent = restPicture();
    run(all, {}, buffers() + base() + program() + compared("0") + compared("0") + nothingTrusted);
    EXPECT_EQ(gl.shaderObjects().generated, 0);
}

TEST_F(DiagnosticShaderStep, DoesNotTryTheShaderWhereNoPictureCanBeRead)
{
    card.processor.rest = Picture();
    Lines const unreadable{"Could not read image correctly--disabling vertex program and VBO"};
    run(all, {}, buffers() + base("25", "0", "262144") + unreadable);
    EXPECT_EQ(gl.count("glReadPixels"), 1);
}

TEST_F(DiagnosticShaderStep, TriesTheShaderAfterAProgramThatIsWrong)
{
    card.program.rest = bentPicture();
    Lines const wrong{"Images differ--disabling vertex program"};
    run(all, buffersAndShader,
        buffers() + base() + program() + compared("0.5") + wrong + shader() + right + shaderWins);
}

TEST_F(DiagnosticShaderStep, TriesTheShaderAfterAProgramThatIsSlow)
{
    card.program.frame = 50'000;
    Lines const slow{"Bad vertex program performance--disabling"};
    run(all, buffersAndShader, buffers() + base() + program("20") + slow + shader() + right + shaderWins);
}

TEST_F(DiagnosticShaderStep, DoesNotBringBackAProgramThatWasWrongWhenBent)
{
    card.program.bent = pictureWithWhite(0);
    card.shader.frame = 50'000;
    Lines const wrong{"Second images differ--disabling vertex program"};
    Lines const slow{"Bad vertex shader performance--disabling"};
    run(all, buffersOnly,
        buffers() + base() + program() + compared("0") + compared("0.5") + compared("0.5") + wrong +
            shader("20") + slow);
}
