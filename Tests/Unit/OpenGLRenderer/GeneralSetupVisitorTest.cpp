#include "OpenGLRenderer/GeneralSetupVisitor.h"

#include "OpenGLRenderer/ManualClearVisitor.h"
#include "SceneGraph/SGQuadNode.h"
#include "SceneGraph/SGRootNode.h"
#include "SceneGraph/SGTransformNode.h"
#include "SceneGraph/SGZTransformNode.h"
#include "Tests/Unit/OpenGLRenderer/RendererTesting.h"

using namespace RendererTesting;

namespace {

class GeneralSetup : public RendererTest {
protected:
    GeneralSetup() { root.color = {0.25F, 0.5F, 0.75F, 1.0F}; }

    Calls entered(bool clearColor, bool clearDepth)
    {
        root.clearColor = clearColor;
        root.clearDepth = clearDepth;
        return entering(pass, root);
    }

    /// All but the clearing, with the version read on the way.
    static Calls whole(Calls const& clearing, std::string const& normals = "GL_RESCALE_NORMAL")
    {
        return Calls{"glGetError()", "glShadeModel(GL_SMOOTH)"} + clearing +
               Calls{"glEnable(GL_DEPTH_TEST)",
                     "glDepthFunc(GL_LEQUAL)",
                     "glDepthRange(0, 1)",
                     "glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)",
                     "glHint(GL_PERSPECTIVE_CORRECTION_HINT, GL_NICEST)",
                     "glGetString(GL_VERSION)",
                     "glEnable(" + normals + ")",
                     "glAlphaFunc(GL_GREATER, 0)",
                     "glDisable(GL_ALPHA_TEST)",
                     "glDisable(GL_BLEND)",
                     "glDisable(GL_POLYGON_OFFSET_FILL)",
                     "glDisable(GL_TEXTURE_2D)",
                     "glDisableClientState(GL_VERTEX_ARRAY)",
                     "glDisableClientState(GL_NORMAL_ARRAY)",
                     "glDisableClientState(GL_TEXTURE_COORD_ARRAY)"};
    }

    SGRootNode root;
    GeneralSetupVisitor pass;
};

} // namespace

TEST_F(GeneralSetup, ClearsColourAndDepthTogether)
{
    EXPECT_EQ(entered(true, true), whole({"glClearColor(0.25, 0.5, 0.75, 1)", "glClearDepth(1)",
                                          "glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT)"}));
}

TEST_F(GeneralSetup, ClearsColourAlone)
{
    EXPECT_EQ(entered(true, false),
              whole({"glClearColor(0.25, 0.5, 0.75, 1)", "glClear(GL_COLOR_BUFFER_BIT)"}));
}

TEST_F(GeneralSetup, ClearsDepthAlone)
{
    EXPECT_EQ(entered(false, true), whole({"glClearDepth(1)", "glClear(GL_DEPTH_BUFFER_BIT)"}));
}

TEST_F(GeneralSetup, ClearsNothingAndSetsAllElse)
{
    EXPECT_EQ(entered(false, false), whole({}));
}

TEST_F(GeneralSetup, NormalizesBeforeOneDotTwo)
{
    gl.setString(GL_VERSION, "1.1");
    EXPECT_EQ(entered(false, false), whole({}, "GL_NORMALIZE"));
}

TEST_F(GeneralSetup, NormalizesWhereTheVersionSaysNothing)
{
    gl.setString(GL_VERSION, "1");
    EXPECT_EQ(entered(false, false), whole({}, "GL_NORMALIZE"));
    gl.setString(GL_VERSION, "1.2");
    EXPECT_EQ(entered(false, false), whole({}));
}

TEST_F(GeneralSetup, LogsItsOwnErrorAndNotTheHosts)
{
    LogCapture const log;
    gl.queueError(GL_OUT_OF_MEMORY);
    static_cast<void>(entered(true, true));
    EXPECT_EQ(leaving(pass, root), Calls{"glGetError()"});
    EXPECT_EQ(log.text(), "");
    static_cast<void>(entered(true, true));
    gl.queueError(GL_INVALID_VALUE);
    static_cast<void>(leaving(pass, root));
    EXPECT_EQ(log.text(), "error: GeneralSetupVisitor GL Error: Invalid value.\n");
}

class ManualClear : public RendererTest {
protected:
    smart_ptr<SGRootNode> root = make_smart<SGRootNode>();
    smart_ptr<SGTransformNode> scene = make_smart<SGTransformNode>(root);
    ManualClearVisitor clear;
    ManualUnClearVisitor unclear;
};

TEST_F(ManualClear, PutsAQuadOfTheClearColourBeforeTheScene)
{
    root->color = {0.25F, 0.5F, 0.75F, 0.5F};
    EXPECT_EQ(entering(clear, *root), Calls());
    auto const* const z = dynamic_cast<SGZTransformNode*>(root->getFirstChild());
    ASSERT_TRUE(z);
    EXPECT_FALSE(z->clearDepth);
    EXPECT_FALSE(z->depthTest);
    EXPECT_FALSE(z->depthWrite);
    EXPECT_EQ(z->getNextSibling(), scene.get());
    auto const* const quad = dynamic_cast<SGQuadNode*>(z->getFirstChild());
    ASSERT_TRUE(quad);
    EXPECT_EQ(quad->getNextSibling(), nullptr);
    EXPECT_THAT(quad->corners, testing::ElementsAre(Vector3(-2.0, -2.0, 0.0), Vector3(-2.0, 2.0, 0.0),
                                                    Vector3(2.0, 2.0, 0.0), Vector3(2.0, -2.0, 0.0)));
    EXPECT_TRUE(quad->material.ambdiff);
    EXPECT_EQ(quad->material.ambient, root->color);
    EXPECT_EQ(quad->material.diffuse, root->color);
}

TEST_F(ManualClear, TakesTheQuadOutAgain)
{
    root->acceptEnter(&clear);
    auto const inserted = smart_ptr<SGNode>(root->getFirstChild());
    root->acceptEnter(&unclear);
    EXPECT_EQ(root->getFirstChild(), scene.get());
    EXPECT_EQ(scene->getNextSibling(), nullptr);
    EXPECT_EQ(inserted->referenceCount(), 1);
}

TEST_F(ManualClear, TakesNothingOutOfAnEmptyRoot)
{
    scene->deparent();
    root->acceptEnter(&unclear);
    EXPECT_EQ(root->getFirstChild(), nullptr);
}

TEST_F(ManualClear, DoesNothingWhereTheColourIsNotCleared)
{
    root->clearColor = false;
    root->acceptEnter(&clear);
    EXPECT_EQ(root->getFirstChild(), scene.get());
    root->acceptEnter(&unclear);
    EXPECT_EQ(root->getFirstChild(), scene.get());
}
