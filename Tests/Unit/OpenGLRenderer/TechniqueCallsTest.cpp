#include "SceneGraph/SGCameraNode.h"
#include "SceneGraph/SGLightsNode.h"
#include "SceneGraph/SGRootNode.h"
#include "Tests/Unit/OpenGLRenderer/BoneAttributeCalls.h"
#include "Tests/Unit/OpenGLRenderer/Technique.h"

#include <algorithm>

using namespace RendererTesting;

namespace {

/// What a technique decides: arrays, buffers, programs and the draw call itself.
bool isTechnical(std::string const& call)
{
    static char const* const marks[]{"Attrib",  "Buffer",  "DrawElements", "InfoLog", "Object",
                                     "PROGRAM", "Pointer", "Program",      "Shader",  "Uniform"};
    return std::ranges::any_of(marks, [&](char const* mark) { return call.find(mark) != std::string::npos; });
}

Calls making(int name, std::string const& target, std::string const& size, std::string const& content)
{
    std::string const text = std::to_string(name);
    return {"glGenBuffersARB(1, {" + text + "})", "glBindBufferARB(" + target + ", " + text + ")",
            "glBufferDataARB(" + target + ", " + size + ", " + content + ", GL_DYNAMIC_DRAW_ARB)"};
}

Calls makingTriangle(int first)
{
    return making(first, "GL_ARRAY_BUFFER_ARB", "36", "{0, 0, 0, 1, 0, 0, 0, 1, 0}") +
           making(first + 1, "GL_ARRAY_BUFFER_ARB", "36", "{0, 0, 1, 0, 0, 1, 0, 0, 1}") +
           making(first + 2, "GL_ELEMENT_ARRAY_BUFFER_ARB", "12", "{0, 1, 2}");
}

Calls const makingBones = making(1, "GL_ARRAY_BUFFER_ARB", "48", "{1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0}") +
                          making(2, "GL_ARRAY_BUFFER_ARB", "48", "{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}");
Calls const unbound{"glBindBufferARB(GL_ARRAY_BUFFER_ARB, 0)"};

Calls const drawn{"glVertexPointer(3, GL_FLOAT, 0, array)", "glNormalPointer(GL_FLOAT, 0, array)",
                  "glDrawElements(GL_TRIANGLES, 3, GL_UNSIGNED_INT, {0, 1, 2})"};

Calls drawnFrom(int positions)
{
    auto const binding = [&](char const* target, int offset) {
        return "glBindBufferARB(" + std::string(target) + ", " + std::to_string(positions + offset) + ')';
    };
    return {binding("GL_ARRAY_BUFFER_ARB", 0),
            "glVertexPointer(3, GL_FLOAT, 0, offset 0)",
            binding("GL_ARRAY_BUFFER_ARB", 1),
            "glNormalPointer(GL_FLOAT, 0, offset 0)",
            binding("GL_ELEMENT_ARRAY_BUFFER_ARB", 2),
            "glDrawElements(GL_TRIANGLES, 3, GL_UNSIGNED_INT, offset 0)",
            "glBindBufferARB(GL_ARRAY_BUFFER_ARB, 0)",
            "glBindBufferARB(GL_ELEMENT_ARRAY_BUFFER_ARB, 0)"};
}

Calls const drawnByFallback = Calls{"glBindBufferARB(GL_ELEMENT_ARRAY_BUFFER_ARB, 0)"} + drawn;

Calls const twoSided{"glEnable(GL_VERTEX_PROGRAM_TWO_SIDE_ARB)"};

Calls bindingProgram(int program)
{
    return {"glBindProgramARB(GL_VERTEX_PROGRAM_ARB, " + std::to_string(program) + ')'};
}

Calls makingProgram(int program, std::string const& lengthAndText)
{
    return Calls{"glGenProgramsARB(1, {" + std::to_string(program) + "})"} + bindingProgram(program) +
           Calls{"glProgramStringARB(GL_VERTEX_PROGRAM_ARB, GL_PROGRAM_FORMAT_ASCII_ARB, " + lengthAndText +
                     ")",
                 "glGetString(GL_PROGRAM_ERROR_STRING_ARB)"};
}

Calls const makingPrograms = makingProgram(1, "7, \"default\"") + makingProgram(2, "9, \"animation\"");
Calls const halfVector{"glProgramEnvParameter4dARB(GL_VERTEX_PROGRAM_ARB, 0, 0, 0, 1, 1)"};
Calls const programOn = Calls{"glEnable(GL_VERTEX_PROGRAM_ARB)",
                              "glProgramEnvParameter4dARB(GL_VERTEX_PROGRAM_ARB, 1, 1, 0, 0, 0)",
                              "glProgramEnvParameter4dARB(GL_VERTEX_PROGRAM_ARB, 2, 0, 1, 0, 0)",
                              "glProgramEnvParameter4dARB(GL_VERTEX_PROGRAM_ARB, 3, 0, 0, 1, 0)"} +
                        bindingProgram(2) +
                        Calls{"glProgramLocalParameter4dARB(GL_VERTEX_PROGRAM_ARB, 0, 1, 0, 0, 2)",
                              "glProgramLocalParameter4dARB(GL_VERTEX_PROGRAM_ARB, 1, 0, 1, 0, 3)",
                              "glProgramLocalParameter4dARB(GL_VERTEX_PROGRAM_ARB, 2, 0, 0, 1, 4)"};
Calls const programOff = bonesOff + Calls{"glDisable(GL_VERTEX_PROGRAM_ARB)"} + bindingProgram(0);

Calls const makingShader{"glCreateShaderObjectARB(GL_VERTEX_SHADER_ARB)",
                         "glShaderSourceARB(1, 1, {\"shader\"})",
                         "glCompileShaderARB(1)",
                         "glGetInfoLogARB(1, 39998, null, array)",
                         "glCreateProgramObjectARB()",
                         "glAttachObjectARB(2, 1)",
                         "glBindAttribLocationARB(2, 14, \"boneIndices\")",
                         "glBindAttribLocationARB(2, 15, \"boneWeights\")",
                         "glLinkProgramARB(2)",
                         "glGetInfoLogARB(2, 39998, null, array)",
                         "glValidateProgramARB(2)",
                         "glGetInfoLogARB(2, 39998, null, array)"};
Calls const shaderOn{"glUseProgramObjectARB(2)",
                     "glGetUniformLocationARB(2, \"viewRotation\")",
                     "glUniformMatrix3fvARB(-1, 1, GL_TRUE, {1, 0, 0, 0, 1, 0, 0, 0, 1})",
                     "glGetUniformLocationARB(2, \"boneTransforms\")",
                     "glUniformMatrix3fvARB(-1, 1, GL_TRUE, {1, 0, 0, 0, 1, 0, 0, 0, 1})",
                     "glGetUniformLocationARB(2, \"boneTranslations\")",
                     "glUniform3fvARB(-1, 1, {2, 3, 4})"};
Calls const shaderOff = bonesOff + Calls{"glUseProgramObjectARB(0)"};

/// In a light a skinned triangle and a plain one.
class TechniqueCalls : public TechniqueTest {
protected:
    TechniqueCalls()
    {
        auto const camera = make_smart<SGCameraNode>(root);
        camera->camera = make_smart<CameraBase>(Matrix(), Matrix(), quarl::Rect<int>{0, 0, 640, 480});
        auto const lights = make_smart<SGLightsNode>(camera);
        lights->lights.resize(1);
        auto const skinned = triangle(lights);
        skinned->setBoneWeights(sharedWeights({{{0, 1.0}}, {{0, 1.0}}, {{0, 1.0}}}));
        skinned->setBoneTransforms(sharedPose({BoneTransform{Matrix3(), {2.0, 3.0, 4.0}}}));
        static_cast<void>(triangle(lights));
    }

    void expectFrames(Capabilities const& caps, Calls const& first, Calls const& further)
    {
        choose({"", caps});
        EXPECT_EQ(technicalCalls(), first);
        EXPECT_EQ(technicalCalls(), further);
        EXPECT_EQ(technicalCalls(), further);
    }

    Calls technicalCalls()
    {
        Calls calls = render(root);
        std::erase_if(calls, [](std::string const& call) { return !isTechnical(call); });
        return calls;
    }

    smart_ptr<SGRootNode> root = make_smart<SGRootNode>();
};

} // namespace

TEST_F(TechniqueCalls, OfThePlainPipeline)
{
    expectFrames({false, false, false}, drawn + drawn, drawn + drawn);
}

TEST_F(TechniqueCalls, OfBuffers)
{
    expectFrames({true, false, false}, makingTriangle(1) + unbound + drawnByFallback + drawnFrom(1),
                 unbound + drawnByFallback + drawnFrom(1));
}

TEST_F(TechniqueCalls, OfAVertexProgram)
{
    Calls const drawing =
        halfVector + programOn + bonesFrom("array", "array") + drawn + programOff + bindingProgram(1) + drawn;
    expectFrames({false, true, false}, twoSided + makingPrograms + drawing, twoSided + drawing);
}

TEST_F(TechniqueCalls, OfAVertexProgramAndBuffers)
{
    Calls const surfaces = halfVector + programOn + bonesFromBuffers + drawnFrom(3) + programOff +
                           bindingProgram(1) + drawnFrom(6);
    expectFrames({true, true, false},
                 makingBones + makingTriangle(3) + makingTriangle(6) + unbound + twoSided + makingPrograms +
                     surfaces,
                 unbound + twoSided + surfaces);
}

TEST_F(TechniqueCalls, OfAVertexShader)
{
    Calls const drawing = shaderOn + bonesFrom("array", "array") + drawn + shaderOff + drawn;
    expectFrames({false, false, true}, twoSided + makingShader + drawing, twoSided + drawing);
}

TEST_F(TechniqueCalls, OfAVertexShaderAndBuffers)
{
    Calls const surfaces = shaderOn + bonesFromBuffers + drawnFrom(3) + shaderOff + drawnFrom(6);
    expectFrames({true, false, true},
                 makingBones + makingTriangle(3) + makingTriangle(6) + unbound + twoSided + makingShader +
                     surfaces,
                 unbound + twoSided + surfaces);
}
