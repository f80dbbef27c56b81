#include "OpenGLRenderer/ExtraDataKeys.h"
#include "SceneGraph/SGCameraNode.h"
#include "SceneGraph/SGCurveGeometryReferenceNode.h"
#include "SceneGraph/SGLightsNode.h"
#include "SceneGraph/SGQuadNode.h"
#include "SceneGraph/SGRootNode.h"
#include "SceneGraph/SGTransformNode.h"
#include "Tests/Unit/OpenGLRenderer/RendererTesting.h"

#include <boost/lexical_cast.hpp>

using namespace RendererTesting;

namespace {

Matrix const view = Matrix::translationMatrix({0.0, 0.0, -5.0});
Matrix const projection = Matrix::frustum(-1.0, 1.0, -0.75, 0.75, 1.0, 10.0);
Transform const mirror(Matrix3(), {0.0, 1.0, 0.0}, -2.0);

/// What a frame may swap on a surface, to see that it is swapped back.
struct SurfaceReferences {
    explicit SurfaceReferences(SGSurfaceGeometryReferenceNode const& node)
        : geometry(node.getGeometry()),
          normals(node.getNormals()),
          facets(node.getFacets()),
          texture(node.textureLayers[0].texture),
          colorize(node.textureLayers[0].colorize)
    {
    }

    bool operator==(SurfaceReferences const&) const = default;

    smart_ptr<SharedGeometry> geometry;
    smart_ptr<SharedSurfaceGeometry> normals;
    smart_ptr<SharedSurfaceGeometry> facets;
    smart_ptr<SharedImage> texture;
    bool colorize;
};

/// A quad and a curve, and in a light a mirrored, skinned, tinted triangle.
class Frame : public RendererTest {
protected:
    Frame()
    {
        root->color = {0.25F, 0.5F, 0.75F, 1.0F};
        camera->camera = make_smart<CameraBase>(view, projection, quarl::Rect<int>{0, 0, 640, 480});
        quad->corners = {{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {1.0, 1.0, 0.0}, {0.0, 1.0, 0.0}};
        curve->setGeometry(sharedGeometry({{0.0, 0.0, 0.0}, {1.0, 1.0, 1.0}}));
        curve->lineStipple = 0xFF;
        lights->lights.resize(1);
        transform->transform = mirror;
        surface->setBoneWeights(sharedWeights({{{0, 1.0}}, {{0, 1.0}}, {}}));
        surface->setBoneTransforms(sharedPose({BoneTransform{Matrix3(), {0.0, 0.0, 3.0}}}));
        SGTextureLayer layer;
        layer.texture = sharedImage();
        layer.coordinates = sharedCoordinates({{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}});
        layer.colorize = true;
        layer.secondColor = {0.0F, 0.0F, 1.0F, 1.0F};
        surface->textureLayers.push_back(layer);
    }

    Calls render()
    {
        static_cast<void>(gl.takeCalls());
        GLRenderer::renderer->render(root);
        return gl.takeCalls();
    }

    smart_ptr<SGRootNode> root = make_smart<SGRootNode>();
    smart_ptr<SGCameraNode> camera = make_smart<SGCameraNode>(root);
    smart_ptr<SGQuadNode> quad = make_smart<SGQuadNode>(camera);
    smart_ptr<SGCurveGeometryReferenceNode> curve = make_smart<SGCurveGeometryReferenceNode>(camera);
    smart_ptr<SGLightsNode> lights = make_smart<SGLightsNode>(camera);
    smart_ptr<SGTransformNode> transform = make_smart<SGTransformNode>(lights);
    smart_ptr<SGSurfaceGeometryReferenceNode> surface = triangle(transform);
};

Calls const defaultMaterial{
    "glColor4fv({0.2, 0.2, 0.2, 1})",
    "glMaterialfv(GL_FRONT, GL_AMBIENT, {0.2, 0.2, 0.2, 1})",
    "glMaterialfv(GL_FRONT, GL_DIFFUSE, {0.8, 0.8, 0.8, 1})",
    "glMaterialfv(GL_BACK, GL_AMBIENT, {0.2, 0.2, 0.2, 1})",
    "glMaterialfv(GL_BACK, GL_DIFFUSE, {0.8, 0.8, 0.8, 1})",
    "glMaterialfv(GL_FRONT, GL_SPECULAR, {0, 0, 0, 1})",
    "glMaterialfv(GL_BACK, GL_SPECULAR, {0, 0, 0, 1})",
    "glMaterialfv(GL_FRONT, GL_EMISSION, {0, 0, 0, 1})",
    "glMaterialfv(GL_BACK, GL_EMISSION, {0, 0, 0, 1})",
    "glMaterialf(GL_FRONT, GL_SHININESS, 0)",
    "glMaterialf(GL_BACK, GL_SHININESS, 0)",
};

Calls setUp(bool readsVersion)
{
    Calls const version = readsVersion ? Calls{"glGetString(GL_VERSION)"} : Calls();
    return Calls{"glGetError()",
                 "glShadeModel(GL_SMOOTH)",
                 "glClearColor(0.25, 0.5, 0.75, 1)",
                 "glClearDepth(1)",
                 "glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT)",
                 "glEnable(GL_DEPTH_TEST)",
                 "glDepthFunc(GL_LEQUAL)",
                 "glDepthRange(0, 1)",
                 "glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)",
                 "glHint(GL_PERSPECTIVE_CORRECTION_HINT, GL_NICEST)"} +
           version +
           Calls{"glEnable(GL_RESCALE_NORMAL)",
                 "glAlphaFunc(GL_GREATER, 0)",
                 "glDisable(GL_ALPHA_TEST)",
                 "glDisable(GL_BLEND)",
                 "glDisable(GL_POLYGON_OFFSET_FILL)",
                 "glDisable(GL_TEXTURE_2D)",
                 "glDisableClientState(GL_VERTEX_ARRAY)",
                 "glDisableClientState(GL_NORMAL_ARRAY)",
                 "glDisableClientState(GL_TEXTURE_COORD_ARRAY)",
                 "glGetError()"};
}

// Four black pixels tinted: the second colour, in rows padded to eight bytes.
Calls const textureUpload{
    "glGenTextures(1, {1})",
    "glBindTexture(GL_TEXTURE_2D, 1)",
    "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR)",
    "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_NEAREST)",
    "gluBuild2DMipmaps(GL_TEXTURE_2D, 3, 2, 2, GL_RGB, GL_UNSIGNED_BYTE, "
    "{0, 0, 255, 0, 0, 255, 0, 0, 0, 0, 255, 0, 0, 255, 0, 0})",
    "glGetError()",
};

Calls draw()
{
    Calls const walkToQuad = Calls{"glMatrixMode(GL_TEXTURE)", "glLoadIdentity()"} +
                             matrixLoad("GL_PROJECTION", Matrix()) + matrixLoad("GL_MODELVIEW", Matrix()) +
                             Calls{"glDisable(GL_LIGHTING)", "glViewport(0, 0, 640, 480)"} +
                             matrixLoad("GL_PROJECTION", projection) + matrixLoad("GL_MODELVIEW", view);
    Calls const drawQuad =
        defaultMaterial + Calls{"glBegin(GL_QUADS)",   "glVertex3d(0, 0, 0)", "glVertex3d(1, 0, 0)",
                                "glVertex3d(1, 1, 0)", "glVertex3d(0, 1, 0)", "glEnd()"};
    Calls const drawCurve{"glDisable(GL_LIGHTING)",
                          "glLineWidth(1)",
                          "glColor4fv({0.2, 0.2, 0.2, 1})",
                          "glEnable(GL_LINE_STIPPLE)",
                          "glLineStipple(1, 0xff)",
                          "glVertexPointer(3, GL_FLOAT, 0, array)",
                          "glEnableClientState(GL_VERTEX_ARRAY)",
                          "glDrawArrays(GL_LINE_STRIP, 0, 2)",
                          "glDisableClientState(GL_VERTEX_ARRAY)",
                          "glDisable(GL_LIGHTING)",
                          "glDisable(GL_LINE_STIPPLE)"};
    Calls const enterLights{"glEnable(GL_LIGHTING)",
                            "glLightModeli(GL_LIGHT_MODEL_LOCAL_VIEWER, 0)",
                            "glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, 1)",
                            "glLightModelfv(GL_LIGHT_MODEL_AMBIENT, {0, 0, 0, 1})",
                            "glMatrixMode(GL_MODELVIEW)",
                            "glPushMatrix()",
                            "glLoadIdentity()",
                            "glLightfv(GL_LIGHT0, GL_POSITION, {0, 0, 1, 0})",
                            "glLightfv(GL_LIGHT0, GL_AMBIENT, {0, 0, 0, 1})",
                            "glLightfv(GL_LIGHT0, GL_DIFFUSE, {1, 1, 1, 1})",
                            "glLightfv(GL_LIGHT0, GL_SPECULAR, {1, 1, 1, 1})",
                            "glEnable(GL_LIGHT0)",
                            "glPopMatrix()"};
    Calls const drawSurface = matrixLoad("GL_MODELVIEW", view * mirror.getMatrix()) + defaultMaterial +
                              Calls{"glActiveTextureARB(GL_TEXTURE0_ARB)",
                                    "glBindTexture(GL_TEXTURE_2D, 1)",
                                    "glEnable(GL_TEXTURE_2D)",
                                    "glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE)",
                                    "glTexEnvfv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_COLOR, {0, 0, 0, 0})",
                                    "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR)",
                                    "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR)",
                                    "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT)",
                                    "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT)",
                                    "glTexParameterfv(GL_TEXTURE_2D, GL_TEXTURE_BORDER_COLOR, {1, 1, 1, 0})",
                                    "glVertexPointer(3, GL_FLOAT, 0, array)",
                                    "glNormalPointer(GL_FLOAT, 0, array)",
                                    "glClientActiveTextureARB(GL_TEXTURE0_ARB)",
                                    "glTexCoordPointer(2, GL_FLOAT, 0, array)",
                                    "glEnableClientState(GL_TEXTURE_COORD_ARRAY)",
                                    "glEnableClientState(GL_VERTEX_ARRAY)",
                                    "glEnableClientState(GL_NORMAL_ARRAY)",
                                    "glDrawElements(GL_TRIANGLES, 3, GL_UNSIGNED_INT, {1, 0, 2})",
                                    "glDisableClientState(GL_VERTEX_ARRAY)",
                                    "glDisableClientState(GL_NORMAL_ARRAY)",
                                    "glClientActiveTextureARB(GL_TEXTURE0_ARB)",
                                    "glDisableClientState(GL_TEXTURE_COORD_ARRAY)",
                                    "glActiveTextureARB(GL_TEXTURE0_ARB)",
                                    "glDisable(GL_TEXTURE_2D)"};
    Calls const leaveLights{"glDisable(GL_LIGHT0)", "glDisable(GL_LIGHTING)"};
    return walkToQuad + drawQuad + drawCurve + enterLights + drawSurface + leaveLights;
}

} // namespace

TEST_F(Frame, MakesExactlyTheseCalls)
{
    EXPECT_EQ(render(), setUp(true) + textureUpload + draw());
}

TEST_F(Frame, UploadsNothingTheSecondTime)
{
    static_cast<void>(render());
    EXPECT_EQ(render(), setUp(false) + draw());
    EXPECT_EQ(render(), setUp(false) + draw());
    EXPECT_EQ(gl.textures().generated, 1);
}

TEST_F(Frame, DrawsTheSkinnedMirroredTriangle)
{
    static_cast<void>(render());
    RecordingGL::Draw const& drawn = gl.draws().back();
    EXPECT_THAT(drawn.positions,
                testing::ElementsAre(std::array{1.0F, 0.0F, 3.0F}, std::array{0.0F, 0.0F, 3.0F},
                                     std::array{0.0F, 1.0F, 0.0F}));
    EXPECT_EQ(drawn.normals.at(0), (std::array{0.0F, 0.0F, 1.0F}));
    EXPECT_THAT(drawn.textureCoordinates.at(GL_TEXTURE0_ARB),
                testing::ElementsAre(std::array{1.0F, 0.0F}, std::array{0.0F, 0.0F}, std::array{0.0F, 1.0F}));
}

TEST_F(Frame, ShowsAnotherPoseWhenThePoseHasChanged)
{
    static_cast<void>(render());
    surface->getBoneTransforms()->edit().transforms[0].translation = {0.0, 0.0, 4.0};
    static_cast<void>(render());
    EXPECT_EQ(gl.draws().back().positions.at(0), (std::array{1.0F, 0.0F, 4.0F}));
}

TEST_F(Frame, LeavesTheSceneAsItWasGiven)
{
    SurfaceReferences const before(*surface);
    for (int frame = 0; frame < 3; ++frame) {
        static_cast<void>(render());
        EXPECT_EQ(SurfaceReferences(*surface), before);
        EXPECT_FALSE(surface->privateGetExtraData("GLUnanimatedData"));
        EXPECT_FALSE(surface->privateGetExtraData("GLUnflippedTriangleData"));
        EXPECT_FALSE(surface->privateGetExtraData("GLUncolorizedTextureData"));
        EXPECT_FALSE(surface->privateGetExtraData("GLViewMatrix"));
        EXPECT_TRUE(surface->privateGetExtraData("GLNoVBO"));
    }
    EXPECT_FALSE(before.texture->hasExtraData()) << "only the tinted copy is uploaded";
    EXPECT_FALSE(before.geometry->hasExtraData()) << "only the deformed copy is converted";
}

TEST_F(Frame, FreesWhatItMadeWithTheScene)
{
    static_cast<void>(render());
    static_cast<void>(gl.takeCalls());
    surface = nullptr;
    transform = nullptr;
    lights = nullptr;
    curve = nullptr;
    quad = nullptr;
    camera = nullptr;
    root = nullptr;
    EXPECT_EQ(gl.takeCalls(), Calls{"glDeleteTextures(1, {1})"});
    EXPECT_TRUE(gl.textures().live.empty());
}

TEST_F(Frame, FreesATintThatIsNoLongerUsedAfterSeventeenFrames)
{
    static_cast<void>(render());
    surface->textureLayers[0].colorize = false;
    for (int frame = 0; frame < 16; ++frame)
        static_cast<void>(render());
    EXPECT_EQ(gl.textures().deleted, 0);
    static_cast<void>(render());
    EXPECT_EQ(gl.textures().deleted, 1);
    EXPECT_EQ(gl.textures().live, std::set<GLuint>{2}) << "the untinted picture";
}

TEST_F(Frame, LetsAVersionThatIsNoNumberThrow)
{
    gl.setString(GL_VERSION, "OpenGL 1.5");
    EXPECT_THROW(static_cast<void>(render()), boost::bad_lexical_cast);
    EXPECT_EQ(gl.count("glClear"), 1) << "thrown on the way through set-up";
    EXPECT_EQ(gl.count("glEnable"), 1);
}

TEST_F(Frame, PutsAllBackBeforeItThrows)
{
    SurfaceReferences const before(*surface);
    gl.setString(GL_VERSION, "OpenGL 1.5");
    for (int frame = 0; frame < 2; ++frame) {
        EXPECT_THROW(static_cast<void>(render()), boost::bad_lexical_cast);
        EXPECT_EQ(SurfaceReferences(*surface), before);
        EXPECT_FALSE(surface->privateGetExtraData("GLUnanimatedData"));
        EXPECT_FALSE(surface->privateGetExtraData("GLUnflippedTriangleData"));
        EXPECT_FALSE(surface->privateGetExtraData("GLUncolorizedTextureData"));
    }
    gl.setString(GL_VERSION, "1.5");
    static_cast<void>(render());
    EXPECT_EQ(SurfaceReferences(*surface), before);
}

TEST_F(Frame, MayLoseLayersAfterOneThatThrew)
{
    gl.setString(GL_VERSION, "OpenGL 1.5");
    EXPECT_THROW(static_cast<void>(render()), boost::bad_lexical_cast);
    surface->textureLayers.clear();
    gl.setString(GL_VERSION, "1.5");
    EXPECT_NO_THROW(static_cast<void>(render()));
    EXPECT_TRUE(surface->textureLayers.empty());
}

TEST_F(Frame, OfAnEmptySceneSetsUpAndWalksTheRoot)
{
    root = make_smart<SGRootNode>();
    root->color = {0.25F, 0.5F, 0.75F, 1.0F};
    EXPECT_EQ(render(), (setUp(true) + Calls{"glMatrixMode(GL_TEXTURE)", "glLoadIdentity()"} +
                         matrixLoad("GL_PROJECTION", Matrix()) + matrixLoad("GL_MODELVIEW", Matrix()) +
                         Calls{"glDisable(GL_LIGHTING)"}));
}
