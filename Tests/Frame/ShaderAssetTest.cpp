#include "Utilities/AssetManager.h"
#include "Viewer/Platform/OpenGLErrors.h"
#include "Viewer/Platform/TechniqueChoice.h"

#include <epoxy/gl.h>
#include <gtest/gtest.h>

#include <array>
#include <iterator>
#include <map>
#include <regex>
#include <set>

namespace {

constexpr int bones = 56;

std::string textOf(std::string const& asset)
{
    auto const stream = AssetManager::getInstance().getFileStream(asset, true);
    return std::string(std::istreambuf_iterator<char>(*stream), {});
}

/// The number before `what` in the sentence on a card's limits, "Needs of a card: 120 instructions".
int stated(std::string const& text, std::string const& what)
{
    std::smatch match;
    std::regex const sentence("Needs of a card:[^.]*?([0-9,]+)[\\s#/]+" + what);
    if (!std::regex_search(text, match, sentence))
        return -1;
    std::string number = match[1];
    std::erase(number, ',');
    return std::stoi(number);
}

int countOf(std::string const& text, std::string const& pattern)
{
    std::regex const expression(pattern);
    return static_cast<int>(
        std::distance(std::sregex_iterator(text.begin(), text.end(), expression), std::sregex_iterator()));
}

void skipWithout(sgview::Technique technique)
{
    if (std::string const extension = sgview::lackingFor(technique); !extension.empty())
        GTEST_SKIP() << "the driver lacks " << extension;
}

/// A program of the card for as long as the object lives, bound.
class BoundProgram {
public:
    explicit BoundProgram(std::string const& text)
    {
        glGenProgramsARB(1, &name_);
        glBindProgramARB(GL_VERTEX_PROGRAM_ARB, name_);
        glProgramStringARB(GL_VERTEX_PROGRAM_ARB, GL_PROGRAM_FORMAT_ASCII_ARB,
                           static_cast<GLsizei>(text.size()), text.data());
    }
    ~BoundProgram() { glDeleteProgramsARB(1, &name_); }
    BoundProgram(BoundProgram const&) = delete;
    BoundProgram& operator=(BoundProgram const&) = delete;

    [[nodiscard]] static int get(GLenum what)
    {
        GLint value = -1;
        glGetProgramivARB(GL_VERTEX_PROGRAM_ARB, what, &value);
        return value;
    }

private:
    GLuint name_ = 0;
};

class VertexProgramAsset : public testing::TestWithParam<std::string> {
protected:
    void SetUp() override { skipWithout(sgview::Technique::program); }

    std::string const text = textOf("Shaders/" + GetParam() + ".txt");
};

TEST_P(VertexProgramAsset, IsAccepted)
{
    BoundProgram const program(text);
    EXPECT_STREQ(reinterpret_cast<char const*>(glGetString(GL_PROGRAM_ERROR_STRING_ARB)), "");
    EXPECT_TRUE(sgview::takeOpenGLErrors().empty());
    EXPECT_EQ(BoundProgram::get(GL_PROGRAM_UNDER_NATIVE_LIMITS_ARB), 1);
}

/// Of a card: 128 instructions, 12 temporaries, 256 parameters, 16 attributes.
TEST_P(VertexProgramAsset, NeedsWhatItSaysAndNoMoreThanACardHas)
{
    BoundProgram const program(text);
    EXPECT_EQ(BoundProgram::get(GL_PROGRAM_INSTRUCTIONS_ARB), stated(text, "instructions"));
    EXPECT_EQ(BoundProgram::get(GL_PROGRAM_TEMPORARIES_ARB), stated(text, "temporaries"));
    EXPECT_EQ(BoundProgram::get(GL_PROGRAM_PARAMETERS_ARB), stated(text, "parameters"));
    EXPECT_EQ(BoundProgram::get(GL_PROGRAM_ATTRIBS_ARB), stated(text, "attributes"));

    int const crossProducts = countOf(text, "\nXPD ");
    EXPECT_LE(stated(text, "instructions") + crossProducts, 128);
    EXPECT_LE(BoundProgram::get(GL_PROGRAM_NATIVE_INSTRUCTIONS_ARB) + crossProducts, 128);
    EXPECT_LE(stated(text, "temporaries"), 12);
    EXPECT_LE(BoundProgram::get(GL_PROGRAM_NATIVE_TEMPORARIES_ARB), 12);
    EXPECT_LE(stated(text, "parameters"), 256);
    EXPECT_LE(BoundProgram::get(GL_PROGRAM_NATIVE_PARAMETERS_ARB), 256);
    EXPECT_LE(stated(text, "attributes"), 16);
    EXPECT_LE(BoundProgram::get(GL_PROGRAM_ADDRESS_REGISTERS_ARB), 1);
}

INSTANTIATE_TEST_SUITE_P(Texts, VertexProgramAsset,
                         testing::Values("animationVertexProgram", "defaultVertexProgram"),
                         [](auto const& asset) { return asset.param; });

TEST(VertexProgramAsset, HoldsThreeParametersABone)
{
    std::string const text = textOf("Shaders/animationVertexProgram.txt");
    EXPECT_NE(text.find("bones[168] = { program.local[0..167] }"), std::string::npos);
    EXPECT_EQ(3 * bones, 168);
    EXPECT_NE(text.find("of " + std::to_string(bones) + " bones"), std::string::npos);
}

/// Components of a value where each row and each smaller value takes four.
int paddedComponents(GLenum type)
{
    constexpr int row = 4;
    return type == GL_FLOAT_MAT3_ARB ? 3 * row : row;
}

class VertexShaderAsset : public testing::Test {
protected:
    void SetUp() override
    {
        skipWithout(sgview::Technique::shader);
        if (IsSkipped())
            return;
        shader = glCreateShaderObjectARB(GL_VERTEX_SHADER_ARB);
        char const* start = text.data();
        auto const length = static_cast<GLint>(text.size());
        glShaderSourceARB(shader, 1, &start, &length);
        glCompileShaderARB(shader);
        program = glCreateProgramObjectARB();
        glAttachObjectARB(program, shader);
        glLinkProgramARB(program);
    }

    void TearDown() override
    {
        if (IsSkipped())
            return;
        glDeleteObjectARB(shader);
        glDeleteObjectARB(program);
        EXPECT_TRUE(sgview::takeOpenGLErrors().empty());
    }

    struct Uniform {
        GLint size = 0;
        GLenum type = 0;
    };

    /// The shader's own, by name.
    [[nodiscard]] std::map<std::string, Uniform> uniforms() const
    {
        std::map<std::string, Uniform> found;
        GLint count = 0;
        glGetObjectParameterivARB(program, GL_OBJECT_ACTIVE_UNIFORMS_ARB, &count);
        for (GLint i = 0; i < count; ++i) {
            std::array<char, 128> name{};
            Uniform uniform;
            glGetActiveUniformARB(program, static_cast<GLuint>(i), static_cast<GLsizei>(name.size()), nullptr,
                                  &uniform.size, &uniform.type, name.data());
            std::string const whole = name.data();
            std::string const plain = whole.substr(0, whole.find('['));
            if (!plain.starts_with("gl_"))
                found[plain] = uniform;
        }
        return found;
    }

    std::string const text = textOf("Shaders/animationVertexShader.txt");
    GLhandleARB shader = 0;
    GLhandleARB program = 0;
};

TEST_F(VertexShaderAsset, IsAccepted)
{
    for (auto const& [object, status] :
         {std::pair(shader, GL_OBJECT_COMPILE_STATUS_ARB), std::pair(program, GL_OBJECT_LINK_STATUS_ARB)}) {
        GLint succeeded = 0;
        glGetObjectParameterivARB(object, static_cast<GLenum>(status), &succeeded);
        EXPECT_EQ(succeeded, 1);
        std::array<char, 1024> log{};
        glGetInfoLogARB(object, static_cast<GLsizei>(log.size()), nullptr, log.data());
        EXPECT_STREQ(log.data(), "");
    }
    EXPECT_EQ(text.find("#version"), std::string::npos) << "the oldest is meant";
}

TEST_F(VertexShaderAsset, HasTheRenderersUniforms)
{
    auto const found = uniforms();
    EXPECT_EQ(found.size(), 4U);
    EXPECT_EQ(found.at("boneTransforms").size, bones);
    EXPECT_EQ(found.at("boneTransforms").type, static_cast<GLenum>(GL_FLOAT_MAT3_ARB));
    EXPECT_EQ(found.at("boneTranslations").size, bones);
    EXPECT_EQ(found.at("boneTranslations").type, static_cast<GLenum>(GL_FLOAT_VEC3_ARB));
    EXPECT_EQ(found.at("viewRotation").type, static_cast<GLenum>(GL_FLOAT_MAT3_ARB));
    EXPECT_EQ(found.at("unlit").type, static_cast<GLenum>(GL_FLOAT));
    for (char const* const attribute : {"boneIndices", "boneWeights"})
        EXPECT_GE(glGetAttribLocationARB(program, attribute), 0) << attribute;
}

/// OpenGL's own state counts by what the text reads of it.
TEST_F(VertexShaderAsset, NeedsWhatItSaysAndNoMoreThanACardHas)
{
    int components = 0;
    for (auto const& [name, uniform] : uniforms())
        components += uniform.size * paddedComponents(uniform.type);
    std::regex const state("gl_(LightSource\\[[0-9]\\]|FrontMaterial|BackMaterial)\\.[a-z]+");
    std::set<std::string> read;
    for (std::sregex_iterator at(text.begin(), text.end(), state), end; at != end; ++at)
        read.insert(at->str());
    components += 4 * static_cast<int>(read.size());
    components += 16 * std::min(countOf(text, "gl_ModelViewProjectionMatrix"), 1);
    EXPECT_EQ(components, stated(text, "uniform components"));
    EXPECT_LE(components, 1024);
}

} // namespace
