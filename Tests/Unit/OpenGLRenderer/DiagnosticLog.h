#pragma once

#include "OpenGLRenderer/Capabilities.h"
#include "Tests/Unit/OpenGLRenderer/RendererTesting.h"
#include "Utilities/Strings.h"

/// The lines that the graphics diagnostic logs, without the channel, as a good ScriptedCard gets them unless
/// said otherwise.
namespace RendererTesting::DiagnosticLog {

using Lines = Calls;

inline std::string capsLine(std::string const& title, Capabilities const& caps)
{
    auto const word = [](bool flag) { return flag ? "Yes" : "No"; };
    return title + ": VBO = " + word(caps.vbo) + ", vertex program = " + word(caps.vertexProgram) +
           ", vertex shader = " + word(caps.vertexShader);
}

inline std::string rateLine(std::string const& rate)
{
    return "Ran time test, got " + rate;
}

inline std::string const bailing = "Ran time test, but first render took too long, so bailing out";

inline Lines scene(std::string const& rate = "50")
{
    return {"Running graphics diagnostics", rateLine(rate),
            "Done creating test scene -- number of surfaces = 1"};
}

inline Lines limits(std::string const& nativeInstructions = "128")
{
    return {"GL_MAX_PROGRAM_INSTRUCTIONS_ARB = 128",
            "GL_MAX_PROGRAM_NATIVE_INSTRUCTIONS_ARB = " + nativeInstructions,
            "GL_MAX_PROGRAM_TEMPORARIES_ARB = 128",
            "GL_MAX_PROGRAM_NATIVE_TEMPORARIES_ARB = 128",
            "GL_MAX_PROGRAM_PARAMETERS_ARB = 128",
            "GL_MAX_PROGRAM_NATIVE_PARAMETERS_ARB = 128",
            "GL_MAX_PROGRAM_ATTRIBS_ARB = 128",
            "GL_MAX_PROGRAM_NATIVE_ATTRIBS_ARB = 128",
            "GL_MAX_PROGRAM_ADDRESS_REGISTERS_ARB = 128",
            "GL_MAX_PROGRAM_NATIVE_ADDRESS_REGISTERS_ARB = 128",
            "GL_MAX_PROGRAM_ENV_PARAMETERS_ARB = 128",
            "GL_MAX_PROGRAM_LOCAL_PARAMETERS_ARB = 128"};
}

inline Lines claims(Capabilities const& caps)
{
    return {capsLine("Card caps", caps)};
}

inline Lines buffers(std::string const& rate = "100", std::string const& rateWithout = "50")
{
    return {"Checking VBO performance", rateLine(rateWithout), rateLine(rate)};
}

inline Lines base(std::string const& rate = "25", std::string const& white = "131072",
                  std::string const& nonWhite = "131072")
{
    return {"Checking base animation performance", rateLine(rate),
            "Checking test image: white = " + white + ", nonWhite = " + nonWhite};
}

inline Lines program(std::string const& rate = "80")
{
    return {"Checking vertex program performance", rateLine(rate)};
}

inline Lines shader(std::string const& rate = "64")
{
    return {"Checking vertex shader performance", "Compiled shader: fine", "Linked program: fine",
            "Validated program: fine", rateLine(rate)};
}

inline Lines compared(std::string const& share)
{
    return {"Compared images.  Mismatch = " + share};
}

/// The three comparisons of a skinning path that is right.
inline Lines const right = compared("0") + compared("0.5") + compared("0");

/// Everything up to the first trial of a card that claims all.
inline Lines const claimsAll = scene() + limits() + claims({true, true, false});

inline Lines const programWins{"vertex program is faster: enabling"};
inline Lines const shaderWins{"vertex shader is faster: enabling"};
inline Lines const nothingTrusted{"Images that should differ are the same--disabling everything"};

inline Lines completed(Capabilities const& verdict, std::int64_t microseconds)
{
    return {"Completed graphics diagnostics -- total time = " +
                stringize(static_cast<double>(microseconds) / 1e6),
            capsLine("Final caps", verdict)};
}

inline std::string textOf(Lines const& lines)
{
    std::string text;
    for (std::string const& line : lines)
        text += line + '\n';
    return text;
}

/// What the "opengl" channel has of a log, without its name.
inline std::string openglText(std::string const& log)
{
    std::string const start = "opengl: ";
    Lines lines;
    for (std::string const& line : string_split(log, '\n'))
        if (line.starts_with(start))
            lines.push_back(line.substr(start.size()));
    return textOf(lines);
}

} // namespace RendererTesting::DiagnosticLog
