#include "OpenGLRenderer/DiagnosticRun.h"

#include "OpenGLRenderer/DiagnosticCard.h"
#include "OpenGLRenderer/DiagnosticImage.h"
#include "OpenGLRenderer/DiagnosticPrefs.h"
#include "OpenGLRenderer/DiagnosticScene.h"
#include "OpenGLRenderer/DiagnosticTiming.h"
#include "OpenGLRenderer/Renderer.h"
#include "OpenGLRenderer/Strategist.h"
#include "Utilities/Log.h"
#include "Utilities/Strings.h"
#include "Utilities/Timer.h"

#include <numbers>

namespace {

template <typename... Parts>
void writeLine(Parts const&... parts)
{
    static LogChannel const channel("opengl");
    channel.write(parts...);
}

Timestamp now()
{
    return RogueSingleton<Timer, TimerFactory>::getInstance().now();
}

} // namespace

struct DiagnosticRun::SkinningTechnique {
    bool Capabilities::*flag;
    char const* name; ///< in the log
};

constexpr DiagnosticRun::SkinningTechnique DiagnosticRun::vertexProgram{&Capabilities::vertexProgram,
                                                                        "vertex program"};
constexpr DiagnosticRun::SkinningTechnique DiagnosticRun::vertexShader{&Capabilities::vertexShader,
                                                                       "vertex shader"};

void Diagnostic::applyCaps(Capabilities const& caps)
{
    smart_ptr<GLRenderer> const renderer = GLRenderer::renderer;
    renderer->strategy = Strategist::computeStrategy(caps);
}

DiagnosticRun::DiagnosticRun() : DiagnosticRun(Diagnostic::getCardCaps) {}

DiagnosticRun::DiagnosticRun(std::function<Capabilities()> getCardCaps) : getCardCaps_(std::move(getCardCaps))
{
}

void DiagnosticRun::carryOut()
{
    Timestamp const start = now();
    writeLine("Running graphics diagnostics");
    Diagnostic::applyCaps(verdict_);
    root_ = Diagnostic::createTestSceneGraph();
    card_ = getCardCaps_();
    Diagnostic::logCaps(card_, "Card caps");
    if (card_.vbo)
        judgeBuffers();
    if (card_.vertexProgram || card_.vertexShader)
        judgeSkinning();
    chooseSkinning();
    Diagnostic::applyCaps(verdict_);
    Diagnostic::writePrefs(verdict_);
    constexpr double microsecondsPerSecond = 1e6;
    writeLine("Completed graphics diagnostics -- total time = ",
              stringize(static_cast<double>(now().diffInMicrosec(start)) / microsecondsPerSecond));
    Diagnostic::logCaps(verdict_, "Final caps");
}

void DiagnosticRun::judgeBuffers()
{
    writeLine("Checking VBO performance");
    double const rateWithout = Diagnostic::testFPS(root_, false);
    verdict_.vbo = true;
    applyAfresh();
    double const rateWith = Diagnostic::testFPS(root_, true);
    if (rateWithout > rateWith) {
        writeLine("VBO is slower -- reverting");
        verdict_.vbo = false;
        applyAfresh();
    }
}

void DiagnosticRun::judgeSkinning()
{
    writeLine("Checking base animation performance");
    poseAtRest();
    baseRate_ = Diagnostic::testFPS(root_, false);
    reference_ = Diagnostic::readTestImage();
    if (!Diagnostic::isTestImageOK(reference_)) {
        writeLine("Could not read image correctly--disabling vertex program and VBO");
        distrustEverything();
        return;
    }
    if (card_.vertexProgram) {
        writeLine("Checking vertex program performance");
        verdict_.vertexProgram = true;
        programRate_ = rateIfRight(vertexProgram);
    }
    if (card_.vertexShader && !everythingDistrusted_) {
        writeLine("Checking vertex shader performance");
        poseAtRest();
        verdict_.vertexShader = true;
        verdict_.vertexProgram = false;
        shaderRate_ = rateIfRight(vertexShader);
    }
}

double DiagnosticRun::rateIfRight(SkinningTechnique const& technique)
{
    applyAfresh();
    double const rate = Diagnostic::testFPS(root_, true);
    if (baseRate_ > rate)
        return rejected(technique, std::string("Bad ") + technique.name + " performance--disabling");
    if (!Diagnostic::areTestImagesSame(reference_, Diagnostic::readTestImage()))
        return rejected(technique, std::string("Images differ--disabling ") + technique.name);
    poseBent();
    Image const bent = drawAndRead();
    if (Diagnostic::areTestImagesSame(reference_, bent)) {
        writeLine("Images that should differ are the same--disabling everything");
        distrustEverything();
        return 0.0;
    }
    verdict_.*technique.flag = false;
    applyAfresh();
    if (!Diagnostic::areTestImagesSame(bent, drawAndRead()))
        return rejected(technique, std::string("Second images differ--disabling ") + technique.name);
    verdict_.*technique.flag = true;
    return rate;
}

double DiagnosticRun::rejected(SkinningTechnique const& technique, std::string const& reason)
{
    writeLine(reason);
    verdict_.*technique.flag = false;
    return 0.0;
}

void DiagnosticRun::distrustEverything()
{
    verdict_ = Capabilities();
    // Or the choice at the end would bring back a technique that had passed.
    programRate_ = 0.0;
    everythingDistrusted_ = true;
}

void DiagnosticRun::chooseSkinning()
{
    if (programRate_ > shaderRate_) {
        writeLine("vertex program is faster: enabling");
        verdict_.vertexProgram = true;
        verdict_.vertexShader = false;
    } else if (shaderRate_ > programRate_) {
        writeLine("vertex shader is faster: enabling");
        verdict_.vertexProgram = false;
        verdict_.vertexShader = true;
    }
}

void DiagnosticRun::applyAfresh()
{
    Diagnostic::applyCaps(verdict_);
    Diagnostic::cleanSceneGraph(root_);
}

void DiagnosticRun::poseAtRest()
{
    pose(BoneTransform());
}

void DiagnosticRun::poseBent()
{
    BoneTransform bent;
    bent.rotation = Matrix3::rotationMatrix(UVector3(0.0, 1.0, 0.0), 0.9 * std::numbers::pi);
    pose(bent);
}

void DiagnosticRun::pose(BoneTransform const& bone)
{
    BoneTransformVector const bones({bone, bone});
    Diagnostic::animateSceneGraph(root_, make_smart<SharedBoneTransforms>(bones));
}

DiagnosticRun::Image DiagnosticRun::drawAndRead()
{
    GLRenderer::renderer->render(root_);
    return Diagnostic::readTestImage();
}
