#include "OpenGLRenderer/CameraLightsTransformVisitor.h"

#include "OpenGLRenderer/ExtraData.h"
#include "OpenGLRenderer/ExtraDataKeys.h"
#include "OpenGLRenderer/ViewMatrixData.h"
#include "SceneGraph/SGCameraNode.h"
#include "SceneGraph/SGCurveGeometryReferenceNode.h"
#include "SceneGraph/SGLightsNode.h"
#include "SceneGraph/SGQuadNode.h"
#include "SceneGraph/SGRootNode.h"
#include "SceneGraph/SGTransformNode.h"
#include "SceneGraph/SGZTransformNode.h"
#include "Tests/Unit/OpenGLRenderer/RendererTesting.h"

using namespace RendererTesting;

namespace {

Matrix const view = Matrix::translationMatrix({1.0, 2.0, -5.0});
Matrix const projection = Matrix::frustum(-1.0, 1.0, -0.5, 0.5, 1.0, 9.0);
Calls const rootCalls = Calls{"glMatrixMode(GL_TEXTURE)", "glLoadIdentity()"} +
                        matrixLoad("GL_PROJECTION", Matrix()) + matrixLoad("GL_MODELVIEW", Matrix()) +
                        Calls{"glDisable(GL_LIGHTING)"};

class CameraLightsTransform : public RendererTest {
protected:
    CameraLightsTransform()
    {
        camera.camera = make_smart<CameraBase>(view, projection, quarl::Rect<int>{10, 20, 640, 480});
    }

    void enterRootAndCamera()
    {
        root.acceptEnter(&pass);
        camera.acceptEnter(&pass);
    }

    SGRootNode root;
    SGCameraNode camera{nullptr};
    SGQuadNode quad{nullptr};
    CameraLightsTransformVisitor pass;
};

} // namespace

TEST_F(CameraLightsTransform, StartsAFrameFromIdentities)
{
    EXPECT_EQ(entering(pass, root), rootCalls);
    EXPECT_EQ(leaving(pass, root), Calls());
    EXPECT_EQ(entering(pass, root), rootCalls) << "every frame";
}

TEST_F(CameraLightsTransform, LoadsTheIdentitiesAgainForGeometryWithoutACamera)
{
    root.acceptEnter(&pass);
    EXPECT_EQ(entering(pass, quad),
              matrixLoad("GL_PROJECTION", Matrix()) + matrixLoad("GL_MODELVIEW", Matrix()));
}

TEST_F(CameraLightsTransform, LoadsTheCamerasMatricesBeforeGeometryOnce)
{
    root.acceptEnter(&pass);
    EXPECT_EQ(entering(pass, camera), Calls{"glViewport(10, 20, 640, 480)"});
    EXPECT_EQ(entering(pass, quad),
              matrixLoad("GL_PROJECTION", projection) + matrixLoad("GL_MODELVIEW", view));
    EXPECT_EQ(leaving(pass, quad), Calls());
    EXPECT_EQ(entering(pass, quad), Calls());
}

TEST_F(CameraLightsTransform, LoadsColumns)
{
    enterRootAndCamera();
    EXPECT_EQ(entering(pass, quad).at(3), "glLoadMatrixd({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1, 2, -5, 1})");
}

TEST_F(CameraLightsTransform, ReplacesTransformsAboveTheCamera)
{
    SGTransformNode transform(nullptr);
    transform.transform = Transform(Matrix3(), {7.0, 7.0, 7.0}, 3.0);
    root.acceptEnter(&pass);
    transform.acceptEnter(&pass);
    camera.acceptEnter(&pass);
    EXPECT_EQ(entering(pass, quad),
              matrixLoad("GL_PROJECTION", projection) + matrixLoad("GL_MODELVIEW", view));
}

TEST_F(CameraLightsTransform, LeavesTheViewportOfTheLastCamera)
{
    enterRootAndCamera();
    EXPECT_EQ(leaving(pass, camera), Calls());
    EXPECT_EQ(entering(pass, quad),
              matrixLoad("GL_PROJECTION", Matrix()) + matrixLoad("GL_MODELVIEW", Matrix()));
}

TEST_F(CameraLightsTransform, ReturnsToTheOuterCamera)
{
    SGCameraNode inner(nullptr);
    inner.camera = make_smart<CameraBase>(Matrix(), Matrix(), quarl::Rect<int>{1, 2, 3, 4});
    enterRootAndCamera();
    EXPECT_EQ(entering(pass, inner), Calls{"glViewport(1, 2, 3, 4)"});
    EXPECT_EQ(leaving(pass, inner), Calls{"glViewport(10, 20, 640, 480)"});
    EXPECT_EQ(entering(pass, quad),
              matrixLoad("GL_PROJECTION", projection) + matrixLoad("GL_MODELVIEW", view));
}

TEST_F(CameraLightsTransform, ForgetsTheCameraOfAFrameThatEndedInsideIt)
{
    enterRootAndCamera();
    static_cast<void>(entering(pass, root));
    EXPECT_EQ(entering(pass, camera), Calls{"glViewport(10, 20, 640, 480)"});
    EXPECT_EQ(leaving(pass, camera), Calls());
}

TEST_F(CameraLightsTransform, MultipliesATransformFromTheRight)
{
    SGTransformNode outer(nullptr);
    outer.transform = Transform(Matrix3::rotationMatrix({0.0, 0.0, 1.0}, 0.5), {1.0, 0.0, 0.0}, 2.0);
    SGTransformNode inner(nullptr);
    inner.transform = Transform(Matrix3::rotationMatrix({1.0, 0.0, 0.0}, 0.25), {0.0, 3.0, 0.0}, -0.5);
    enterRootAndCamera();
    static_cast<void>(entering(pass, quad));
    EXPECT_EQ(entering(pass, outer), Calls());
    EXPECT_EQ(entering(pass, inner), Calls());
    Matrix const outerModelView = view * outer.transform.getMatrix();
    EXPECT_EQ(entering(pass, quad), matrixLoad("GL_MODELVIEW", outerModelView * inner.transform.getMatrix()));
    EXPECT_EQ(leaving(pass, inner), Calls());
    EXPECT_EQ(entering(pass, quad), matrixLoad("GL_MODELVIEW", outerModelView));
    EXPECT_EQ(leaving(pass, outer), Calls());
    EXPECT_EQ(entering(pass, quad), matrixLoad("GL_MODELVIEW", view));
}

TEST_F(CameraLightsTransform, LoadsNothingForATransformWithoutGeometry)
{
    SGTransformNode transform(nullptr);
    enterRootAndCamera();
    EXPECT_EQ(entering(pass, transform) + leaving(pass, transform), Calls());
}

TEST_F(CameraLightsTransform, MapsDepthIntoAZTransformsRange)
{
    SGZTransformNode z(nullptr);
    z.lower = -0.75;
    z.upper = 0.5;
    z.depthWrite = false;
    enterRootAndCamera();
    static_cast<void>(entering(pass, quad));
    EXPECT_EQ(entering(pass, z), (Calls{"glEnable(GL_DEPTH_TEST)", "glDepthMask(GL_FALSE)"}));
    Matrix const remap({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1.25, -0.75, 0, 0, 0, 1});
    EXPECT_EQ(entering(pass, quad), matrixLoad("GL_PROJECTION", remap * projection));
    EXPECT_EQ(leaving(pass, z), (Calls{"glEnable(GL_DEPTH_TEST)", "glDepthMask(GL_TRUE)"}));
    EXPECT_EQ(entering(pass, quad), matrixLoad("GL_PROJECTION", projection));
}

TEST_F(CameraLightsTransform, ClearsDepthForAZTransformFirst)
{
    SGZTransformNode z(nullptr);
    z.clearDepth = true;
    z.depthTest = false;
    enterRootAndCamera();
    EXPECT_EQ(entering(pass, z),
              (Calls{"glClear(GL_DEPTH_BUFFER_BIT)", "glDisable(GL_DEPTH_TEST)", "glDepthMask(GL_TRUE)"}));
}

TEST_F(CameraLightsTransform, RestoresTheOuterZTransformsDepthStateAtOnce)
{
    SGZTransformNode outer(nullptr);
    outer.depthTest = false;
    outer.depthWrite = false;
    SGZTransformNode inner(nullptr);
    enterRootAndCamera();
    outer.acceptEnter(&pass);
    EXPECT_EQ(entering(pass, inner), (Calls{"glEnable(GL_DEPTH_TEST)", "glDepthMask(GL_TRUE)"}));
    EXPECT_EQ(leaving(pass, inner), (Calls{"glDisable(GL_DEPTH_TEST)", "glDepthMask(GL_FALSE)"}));
    EXPECT_EQ(leaving(pass, outer), (Calls{"glEnable(GL_DEPTH_TEST)", "glDepthMask(GL_TRUE)"}));
}

namespace {

SGLightData redLight()
{
    SGLightData light;
    light.ambient = {0.125F, 0.0F, 0.0F, 1.0F};
    light.diffuse = {0.5F, 0.0F, 0.0F, 1.0F};
    light.specular = {1.0F, 0.0F, 0.0F, 1.0F};
    light.direction = {0.0, 3.0, -4.0};
    return light;
}

Calls const lightModel{"glEnable(GL_LIGHTING)", "glLightModeli(GL_LIGHT_MODEL_LOCAL_VIEWER, 0)",
                       "glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, 1)",
                       "glLightModelfv(GL_LIGHT_MODEL_AMBIENT, {0, 0, 0, 1})"};
Calls const lightsBegin{"glMatrixMode(GL_MODELVIEW)", "glPushMatrix()", "glLoadIdentity()"};

} // namespace

TEST_F(CameraLightsTransform, SetsLightsInEyeSpace)
{
    SGLightsNode lights(nullptr);
    lights.lights = {redLight(), SGLightData()};
    enterRootAndCamera();
    EXPECT_EQ(
        entering(pass, lights),
        (lightModel + lightsBegin +
         Calls{"glLightfv(GL_LIGHT0, GL_POSITION, {0, 0.6, -0.8, 0})",
               "glLightfv(GL_LIGHT0, GL_AMBIENT, {0.125, 0, 0, 1})",
               "glLightfv(GL_LIGHT0, GL_DIFFUSE, {0.5, 0, 0, 1})",
               "glLightfv(GL_LIGHT0, GL_SPECULAR, {1, 0, 0, 1})", "glEnable(GL_LIGHT0)",
               "glLightfv(GL_LIGHT1, GL_POSITION, {0, 0, 1, 0})",
               "glLightfv(GL_LIGHT1, GL_AMBIENT, {0, 0, 0, 1})",
               "glLightfv(GL_LIGHT1, GL_DIFFUSE, {1, 1, 1, 1})",
               "glLightfv(GL_LIGHT1, GL_SPECULAR, {1, 1, 1, 1})", "glEnable(GL_LIGHT1)", "glPopMatrix()"}));
    EXPECT_EQ(leaving(pass, lights),
              (Calls{"glDisable(GL_LIGHT0)", "glDisable(GL_LIGHT1)", "glDisable(GL_LIGHTING)"}));
}

TEST_F(CameraLightsTransform, SetsMoreLightsThanOpenGLOffers)
{
    SGLightsNode lights(nullptr);
    lights.lights.resize(10);
    enterRootAndCamera();
    EXPECT_THAT(entering(pass, lights), testing::Contains("glEnable(GL_LIGHT9)"));
    EXPECT_EQ(leaving(pass, lights).size(), 11U);
}

TEST_F(CameraLightsTransform, DrawsBelowANodeWithoutLightsUnlitAndReturns)
{
    SGLightsNode lights(nullptr);
    lights.lights = {redLight()};
    SGLightsNode none(nullptr);
    enterRootAndCamera();
    lights.acceptEnter(&pass);
    EXPECT_EQ(entering(pass, none), Calls{"glDisable(GL_LIGHTING)"});
    EXPECT_EQ(leaving(pass, none), Calls{"glEnable(GL_LIGHTING)"});
    EXPECT_EQ(leaving(pass, lights), (Calls{"glDisable(GL_LIGHT0)", "glDisable(GL_LIGHTING)"}));
}

TEST_F(CameraLightsTransform, LeavesTheOuterLightsDisabledAfterInnerOnes)
{
    SGLightsNode outer(nullptr);
    outer.lights = {redLight(), redLight()};
    SGLightsNode inner(nullptr);
    inner.lights = {redLight()};
    enterRootAndCamera();
    outer.acceptEnter(&pass);
    inner.acceptEnter(&pass);
    EXPECT_EQ(leaving(pass, inner), (Calls{"glDisable(GL_LIGHT0)", "glEnable(GL_LIGHTING)"}));
}

TEST_F(CameraLightsTransform, DrawsUnlitSurfacesWithoutLighting)
{
    SGLightsNode lights(nullptr);
    lights.lights = {redLight()};
    auto const surface = triangle();
    surface->unlit = true;
    enterRootAndCamera();
    lights.acceptEnter(&pass);
    EXPECT_EQ(entering(pass, *surface), matrixLoad("GL_PROJECTION", projection) +
                                            matrixLoad("GL_MODELVIEW", view) +
                                            Calls{"glDisable(GL_LIGHTING)"});
    EXPECT_EQ(leaving(pass, *surface), Calls{"glEnable(GL_LIGHTING)"});
}

TEST_F(CameraLightsTransform, LeavesLightingAloneForOtherSurfaces)
{
    auto const surface = triangle();
    enterRootAndCamera();
    EXPECT_EQ(entering(pass, *surface),
              matrixLoad("GL_PROJECTION", projection) + matrixLoad("GL_MODELVIEW", view));
    EXPECT_EQ(leaving(pass, *surface), Calls());
    EXPECT_FALSE(surface->hasExtraData());
}

TEST_F(CameraLightsTransform, DrawsCurvesUnlit)
{
    SGLightsNode lights(nullptr);
    lights.lights = {redLight()};
    SGCurveGeometryReferenceNode curve(nullptr);
    enterRootAndCamera();
    lights.acceptEnter(&pass);
    EXPECT_EQ(entering(pass, curve), matrixLoad("GL_PROJECTION", projection) +
                                         matrixLoad("GL_MODELVIEW", view) + Calls{"glDisable(GL_LIGHTING)"});
    EXPECT_EQ(leaving(pass, curve), Calls{"glEnable(GL_LIGHTING)"});
    static_cast<void>(leaving(pass, lights));
    static_cast<void>(entering(pass, curve));
    EXPECT_EQ(leaving(pass, curve), Calls{"glDisable(GL_LIGHTING)"});
}

TEST_F(CameraLightsTransform, HangsTheModelViewOnSkinnedSurfacesWhileInsideThem)
{
    SGTransformNode transform(nullptr);
    transform.transform = Transform(Matrix3(), {0.0, 0.0, 2.0}, 3.0);
    auto const surface = triangle();
    surface->setBoneWeights(sharedWeights({}));
    surface->setBoneTransforms(sharedPose({}));
    enterRootAndCamera();
    transform.acceptEnter(&pass);
    surface->acceptEnter(&pass);
    auto const record = getExtraData<ViewMatrixData>(*surface, ExtraDataKeys::viewMatrix);
    ASSERT_TRUE(record);
    EXPECT_EQ(record->matrix, view * transform.transform.getMatrix());
    EXPECT_EQ(surface->privateGetExtraData("GLViewMatrix"), record);
    surface->acceptLeave(&pass);
    EXPECT_FALSE(surface->hasExtraData());
}

TEST_F(CameraLightsTransform, LeavesARecordThatAnotherHoldsAsItIs)
{
    auto const surface = triangle();
    surface->setBoneWeights(sharedWeights({}));
    surface->setBoneTransforms(sharedPose({}));
    enterRootAndCamera();
    surface->acceptEnter(&pass);
    auto const held = getExtraData<ViewMatrixData>(*surface, ExtraDataKeys::viewMatrix);
    surface->acceptLeave(&pass);

    SGTransformNode transform(nullptr);
    transform.transform = Transform(Matrix3(), {0.0, 0.0, 2.0}, 3.0);
    transform.acceptEnter(&pass);
    surface->acceptEnter(&pass);
    EXPECT_EQ(held->matrix, view);
    EXPECT_NE(getExtraData<ViewMatrixData>(*surface, ExtraDataKeys::viewMatrix), held);
    surface->acceptLeave(&pass);
}

TEST_F(CameraLightsTransform, HangsNothingOnSurfacesWithHalfASkin)
{
    auto const weighted = triangle();
    weighted->setBoneWeights(sharedWeights({}));
    auto const posed = triangle();
    posed->setBoneTransforms(sharedPose({}));
    enterRootAndCamera();
    weighted->acceptEnter(&pass);
    posed->acceptEnter(&pass);
    EXPECT_FALSE(weighted->hasExtraData());
    EXPECT_FALSE(posed->hasExtraData());
}
