#include "Viewer/Diagnosis/Diagnosis.h"

#include <algorithm>

namespace sgview {

bool Diagnosis::Comparison::passed() const
{
    constexpr double toleratedShare = 0.01;
    return (mismatch >= toleratedShare) == mustDiffer;
}

Diagnosis::TimeTest const* Diagnosis::timeTest(Step step) const
{
    auto const found = std::find_if(timeTests.rbegin(), timeTests.rend(),
                                    [step](TimeTest const& test) { return test.step == step; });
    return found == timeTests.rend() ? nullptr : &*found;
}

Picture const* Diagnosis::image(View view) const
{
    auto const found = std::ranges::find(images, view, &Image::view);
    return found == images.end() ? nullptr : &found->picture;
}

std::string_view nameOf(Diagnosis::Step step)
{
    switch (step) {
    case Diagnosis::Step::scene:
        return "test scene, growing";
    case Diagnosis::Step::plain:
        return "plain";
    case Diagnosis::Step::vbo:
        return "buffer objects";
    case Diagnosis::Step::base:
        return "skinned on the processor";
    case Diagnosis::Step::program:
        return "skinned by the vertex program";
    case Diagnosis::Step::shader:
        return "skinned by the vertex shader";
    }
    return "unknown";
}

std::string_view nameOf(Diagnosis::View view)
{
    switch (view) {
    case Diagnosis::View::reference:
        return "plain, at rest";
    case Diagnosis::View::programAtRest:
        return "vertex program, at rest";
    case Diagnosis::View::programBent:
        return "vertex program, bent";
    case Diagnosis::View::shaderAtRest:
        return "vertex shader, at rest";
    case Diagnosis::View::shaderBent:
        return "vertex shader, bent";
    case Diagnosis::View::programCheck:
    case Diagnosis::View::shaderCheck:
        return "plain, bent";
    }
    return "unknown";
}

std::string_view nameOf(Diagnosis::Flag flag)
{
    switch (flag) {
    case Diagnosis::Flag::vbo:
        return "buffer objects";
    case Diagnosis::Flag::vertexProgram:
        return "vertex program";
    case Diagnosis::Flag::vertexShader:
        return "vertex shader";
    }
    return "unknown";
}

} // namespace sgview
