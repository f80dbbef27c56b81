#include "Viewer/Platform/TechniqueChoice.h"

#include "SceneGraph/SGTransformNode.h"
#include "Utilities/MemoryPrefs.h"
#include "Viewer/Platform/HeadlessContext.h"

#include <gtest/gtest.h>

#include <map>

namespace {

using sgview::Technique;
using Preferences = RogueSingleton<Prefs, PrefsFactory>;

/// Remembers what was stored when it was told to read.
class ReadingRenderer : public SGRenderer {
public:
    bool diagnosticNeeded = false;
    std::map<std::string, std::string> read;

    void render(smart_ptr<SGRootNode>) override {}
    void readPixels(int, int, int, int, PixelFormat, unsigned char*) override {}
    [[nodiscard]] bool isDiagnosticNeeded() const override { return diagnosticNeeded; }
    void readDiagnosticResults() override
    {
        for (char const* key : {"GL_CARD", "GL_VBO", "GL_VertexProgram", "GL_VertexShader"})
            read[key] = Preferences::getInstance().getString(key);
    }
};

class Tag : public SGExtraData {};

class TechniqueChoice : public testing::Test {
protected:
    TechniqueChoice()
    {
        PrefsFactory::setMaker([] { return smart_ptr<Prefs>(make_smart<MemoryPrefs>()); });
        Preferences::reset();
    }
    ~TechniqueChoice() override
    {
        PrefsFactory::setMaker({});
        Preferences::reset();
    }

    sgview::HeadlessContext context{{8, 8}};
    smart_ptr<ReadingRenderer> renderer = make_smart<ReadingRenderer>();
};

TEST_F(TechniqueChoice, StoresAllFourKeysForTheSession)
{
    Preferences::getInstance().setString("GL_VBO", "the user's own");
    sgview::choose(*renderer, Technique::programAndVBO);
    EXPECT_EQ(renderer->read["GL_VBO"], "True");
    EXPECT_EQ(renderer->read["GL_VertexProgram"], "True");
    EXPECT_EQ(renderer->read["GL_VertexShader"], "False");
    EXPECT_NE(renderer->read["GL_CARD"].find(" / "), std::string::npos);
    sgview::choose(*renderer, Technique::shader);
    EXPECT_EQ(renderer->read["GL_VBO"], "False");
    EXPECT_EQ(renderer->read["GL_VertexProgram"], "False");
    EXPECT_EQ(renderer->read["GL_VertexShader"], "True");
}

TEST_F(TechniqueChoice, LivingScenesStartAfresh)
{
    auto root = make_smart<SGRootNode>();
    auto node = make_smart<SGTransformNode>(root);
    node->setExtraData("GLNoVBO", make_smart<Tag>());
    root->setExtraData("Host's own", make_smart<Tag>());
    sgview::choose(*renderer, Technique::vbo);
    EXPECT_FALSE(node->privateGetExtraData("GLNoVBO"));
    EXPECT_TRUE(root->privateGetExtraData("Host's own"));
}

TEST_F(TechniqueChoice, StoredTechniqueIsThatOfTheFlags)
{
    for (Technique const technique : sgview::allTechniques) {
        sgview::choose(*renderer, technique);
        EXPECT_EQ(sgview::storedTechnique(*renderer), technique) << nameOf(technique);
    }
    Preferences::getInstance().setString("GL_VertexProgram", "TRUE");
    EXPECT_EQ(sgview::storedTechnique(*renderer), Technique::programAndVBO) << "the program goes before";
    renderer->diagnosticNeeded = true;
    EXPECT_EQ(sgview::storedTechnique(*renderer), Technique::plain);
}

} // namespace
