#include "OpenGLRenderer/AppearanceSetter.h"

#include "OpenGLRenderer/ExtraDataKeys.h"
#include "OpenGLRenderer/TextureUploadData.h"
#include "SceneGraph/SGCurveGeometryReferenceNode.h"
#include "SceneGraph/SGQuadNode.h"
#include "Tests/Unit/OpenGLRenderer/RendererTesting.h"

using namespace RendererTesting;

namespace {

Calls const materialCalls{
    "glColor4fv({0.1, 0.2, 0.3, 1})",
    "glMaterialfv(GL_FRONT, GL_AMBIENT, {0.1, 0.2, 0.3, 1})",
    "glMaterialfv(GL_FRONT, GL_DIFFUSE, {0.4, 0.5, 0.6, 0.5})",
    "glMaterialfv(GL_BACK, GL_AMBIENT, {0.1, 0.2, 0.3, 1})",
    "glMaterialfv(GL_BACK, GL_DIFFUSE, {0.4, 0.5, 0.6, 0.5})",
    "glMaterialfv(GL_FRONT, GL_SPECULAR, {0.7, 0.8, 0.9, 1})",
    "glMaterialfv(GL_BACK, GL_SPECULAR, {0.7, 0.8, 0.9, 1})",
    "glMaterialfv(GL_FRONT, GL_EMISSION, {0, 0.25, 0, 1})",
    "glMaterialfv(GL_BACK, GL_EMISSION, {0, 0.25, 0, 1})",
    "glMaterialf(GL_FRONT, GL_SHININESS, 12.5)",
    "glMaterialf(GL_BACK, GL_SHININESS, 12.5)",
};

void paint(SGGeometryNode& node)
{
    node.material.ambient = {0.1F, 0.2F, 0.3F, 1.0F};
    node.material.diffuse = {0.4F, 0.5F, 0.6F, 0.5F};
    node.material.specular = {0.7F, 0.8F, 0.9F, 1.0F};
    node.material.emissive = {0.0F, 0.25F, 0.0F, 1.0F};
    node.material.shininess = 12.5F;
}

Calls sampling(std::string const& wrap)
{
    return {"glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR)",
            "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR)",
            "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, " + wrap + ")",
            "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, " + wrap + ")",
            "glTexParameterfv(GL_TEXTURE_2D, GL_TEXTURE_BORDER_COLOR, {1, 1, 1, 0})"};
}

Calls bound(int texture)
{
    return {"glBindTexture(GL_TEXTURE_2D, " + std::to_string(texture) + ")", "glEnable(GL_TEXTURE_2D)"};
}

Calls const modulate{"glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE)",
                     "glTexEnvfv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_COLOR, {0, 0, 0, 0})"};
Calls const blend{"glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_BLEND)",
                  "glTexEnvfv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_COLOR, {0.5, 0, 1, 1})"};
Calls const unit0{"glActiveTextureARB(GL_TEXTURE0_ARB)"};
Calls const unit1{"glActiveTextureARB(GL_TEXTURE1_ARB)"};
Calls const textureOff{"glDisable(GL_TEXTURE_2D)"};

class Appearance : public RendererTest {
protected:
    Appearance()
    {
        paint(quad);
        std::array<GLuint, 10> taken{};
        glGenTextures(taken.size(), taken.data());
    }

    /// A layer whose image has a texture of the next name, from 11.
    SGTextureLayer& addLayer(SGGeometryNode& node)
    {
        SGTextureLayer layer;
        layer.texture = sharedImage();
        layer.color = {0.5F, 0.0F, 1.0F, 1.0F};
        layer.texture->setExtraData(ExtraDataKeys::texture, make_smart<TextureUploadData>());
        return node.textureLayers.emplace_back(layer);
    }

    SGQuadNode quad{nullptr};
    AppearanceSetter pass;
};

} // namespace

TEST_F(Appearance, SetsTheMaterialForEachFaceByItself)
{
    EXPECT_EQ(entering(pass, quad), materialCalls);
    EXPECT_EQ(leaving(pass, quad), Calls());
}

TEST_F(Appearance, SendsOnlyAmbientWhereAmbientAndDiffuseAreOne)
{
    quad.material.ambdiff = true;
    Calls expected{"glColor4fv({0.1, 0.2, 0.3, 1})",
                   "glMaterialfv(GL_FRONT, GL_AMBIENT_AND_DIFFUSE, {0.1, 0.2, 0.3, 1})",
                   "glMaterialfv(GL_BACK, GL_AMBIENT_AND_DIFFUSE, {0.1, 0.2, 0.3, 1})"};
    expected.insert(expected.end(), materialCalls.begin() + 5, materialCalls.end());
    EXPECT_EQ(entering(pass, quad), expected);
}

TEST_F(Appearance, BlendsAndStopsBlending)
{
    quad.blending = true;
    EXPECT_EQ(entering(pass, quad), materialCalls + Calls{"glEnable(GL_BLEND)"});
    EXPECT_EQ(leaving(pass, quad), Calls{"glDisable(GL_BLEND)"});
}

TEST_F(Appearance, SetsUpATextureOnASelectedUnit)
{
    addLayer(quad);
    EXPECT_EQ(entering(pass, quad), materialCalls + unit0 + bound(11) + modulate + sampling("GL_REPEAT"));
    EXPECT_EQ(leaving(pass, quad), unit0 + textureOff);
}

TEST_F(Appearance, SelectsNoUnitWhereThereIsOne)
{
    useUnits(1);
    addLayer(quad);
    EXPECT_EQ(entering(pass, quad), materialCalls + bound(11) + modulate + sampling("GL_REPEAT"));
    EXPECT_EQ(leaving(pass, quad), textureOff);
}

TEST_F(Appearance, ClampsALayerThatAsksForIt)
{
    addLayer(quad).clamp = true;
    EXPECT_EQ(entering(pass, quad), materialCalls + unit0 + bound(11) + modulate + sampling("GL_CLAMP"));
}

TEST_F(Appearance, BlendsTheFirstLayerWithItsColour)
{
    addLayer(quad).blendWithColor = true;
    EXPECT_EQ(entering(pass, quad), materialCalls + unit0 + bound(11) + blend + sampling("GL_REPEAT"));
}

TEST_F(Appearance, GivesUnitZeroTheColourOfALaterBlendingLayer)
{
    addLayer(quad);
    addLayer(quad).blendWithColor = true;
    EXPECT_EQ(entering(pass, quad), materialCalls + unit0 + bound(11) + modulate + sampling("GL_REPEAT") +
                                        unit1 + bound(12) + blend + unit0 +
                                        Calls{"glTexEnvfv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_COLOR, "
                                              "{0.5, 0, 1, 1})"} +
                                        unit1 + sampling("GL_REPEAT"));
}

TEST_F(Appearance, UsesNoMoreLayersThanUnits)
{
    addLayer(quad);
    addLayer(quad);
    addLayer(quad);
    EXPECT_EQ(entering(pass, quad), materialCalls + unit0 + bound(11) + modulate + sampling("GL_REPEAT") +
                                        unit1 + bound(12) + modulate + sampling("GL_REPEAT"));
    EXPECT_EQ(leaving(pass, quad), unit1 + textureOff + unit0 + textureOff);
}

TEST_F(Appearance, UsesNoLayersWithoutUnits)
{
    useUnits(0);
    addLayer(quad);
    EXPECT_EQ(entering(pass, quad), materialCalls);
    EXPECT_EQ(leaving(pass, quad), Calls());
}

TEST_F(Appearance, SkipsALayerWithoutTextureAndDisablesItStill)
{
    addLayer(quad).texture->clearExtraData();
    addLayer(quad);
    EXPECT_EQ(entering(pass, quad), materialCalls + unit1 + bound(12) + modulate + sampling("GL_REPEAT"));
    EXPECT_EQ(leaving(pass, quad), unit1 + textureOff + unit0 + textureOff);
}

TEST_F(Appearance, StopsBlendingBeforeItTakesTexturesDown)
{
    quad.blending = true;
    addLayer(quad);
    EXPECT_EQ(entering(pass, quad), materialCalls + Calls{"glEnable(GL_BLEND)"} + unit0 + bound(11) +
                                        modulate + sampling("GL_REPEAT"));
    EXPECT_EQ(leaving(pass, quad), Calls{"glDisable(GL_BLEND)"} + unit0 + textureOff);
}

TEST_F(Appearance, GivesCurvesTheirLineAndNothingElse)
{
    SGCurveGeometryReferenceNode curve(nullptr);
    paint(curve);
    addLayer(curve);
    curve.lineWidth = 2.5;
    EXPECT_EQ(entering(pass, curve), (Calls{"glLineWidth(2.5)", "glColor4fv({0.1, 0.2, 0.3, 1})"}));
    EXPECT_EQ(leaving(pass, curve), Calls());
}

TEST_F(Appearance, StipplesAndBlendsCurves)
{
    SGCurveGeometryReferenceNode curve(nullptr);
    paint(curve);
    curve.lineStipple = 0xF0F1;
    curve.blending = true;
    EXPECT_EQ(entering(pass, curve),
              (Calls{"glLineWidth(1)", "glColor4fv({0.1, 0.2, 0.3, 1})", "glEnable(GL_BLEND)",
                     "glEnable(GL_LINE_STIPPLE)", "glLineStipple(1, 0xf0f1)"}));
    EXPECT_EQ(leaving(pass, curve), (Calls{"glDisable(GL_BLEND)", "glDisable(GL_LINE_STIPPLE)"}));
}

TEST_F(Appearance, TreatsSurfacesAsGeometry)
{
    auto const surface = triangle();
    paint(*surface);
    surface->blending = true;
    addLayer(*surface);
    EXPECT_EQ(entering(pass, *surface), materialCalls + Calls{"glEnable(GL_BLEND)"} + unit0 + bound(11) +
                                            modulate + sampling("GL_REPEAT"));
    EXPECT_EQ(leaving(pass, *surface), Calls{"glDisable(GL_BLEND)"} + unit0 + textureOff);
}

TEST_F(Appearance, DrawsWireframeInTheAmbientColour)
{
    auto const surface = triangle();
    paint(*surface);
    surface->wireframe = true;
    surface->lineWidth = 3.0;
    addLayer(*surface);
    EXPECT_EQ(entering(pass, *surface),
              (materialCalls + unit0 + bound(11) + modulate + sampling("GL_REPEAT") +
               Calls{"glPolygonMode(GL_FRONT_AND_BACK, GL_LINE)", "glLineWidth(3)",
                     "glColor4fv({0.1, 0.2, 0.3, 1})"}));
    EXPECT_EQ(leaving(pass, *surface),
              unit0 + textureOff + Calls{"glPolygonMode(GL_FRONT_AND_BACK, GL_FILL)"});
}

TEST_F(Appearance, LetsADerivedPassChangeSurfacesThroughGeometry)
{
    class Derived : public AppearanceSetter {
    public:
        using AppearanceSetter::enter;
        using AppearanceSetter::leave;
        void enter(SGGeometryNode*) override { ++entered; }
        void leave(SGGeometryNode*) override { ++left; }

        int entered = 0;
        int left = 0;
    };
    Derived derived;
    auto const surface = triangle();
    EXPECT_EQ(entering(derived, *surface) + leaving(derived, *surface), Calls());
    EXPECT_EQ(derived.entered, 1);
    EXPECT_EQ(derived.left, 1);
}
