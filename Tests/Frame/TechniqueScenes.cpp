#include "Tests/Frame/TechniqueScenes.h"

#include "SceneGraph/SGZTransformNode.h"

namespace {

constexpr int bonesOfBoth = 8;
constexpr double bend = 120.0;
constexpr double otherBend = -75.0;
constexpr Color white{1.0F, 1.0F, 1.0F, 1.0F};
constexpr Color orange{0.9F, 0.5F, 0.2F, 1.0F};

using SurfacePtr = smart_ptr<SGSurfaceGeometryReferenceNode>;

Transform placed(double x, double y, double scale = 0.8)
{
    return Transform(Matrix3::rotationMatrix(Vector3(1.0, 0.4, 0.2), 0.6), Vector3(x, y, 0.0), scale);
}

Material shiny(Color const& diffuse = orange, float shininess = 25.0F)
{
    Material material = matt(diffuse);
    material.ambient = Color{0.3F, 0.2F, 0.1F, 1.0F};
    material.specular = Color{0.6F, 0.6F, 0.6F, 1.0F};
    material.shininess = shininess;
    return material;
}

smart_ptr<SharedImage> chequers()
{
    return imageOf(2, 2, {{255, 255, 255}, {60, 60, 200}, {200, 60, 60}, {255, 255, 0}});
}

SurfacePtr addSphere(smart_ptr<SGNode> const& parent, Material const& material)
{
    return addSurface(addTransform(parent, placed(0.55, 0.5)), sphereGeometry(0.4), material);
}

/// What has a skin and what has none.
struct Both {
    SurfacePtr limb;
    SurfacePtr tube;
};

Both addBoth(TechniqueStage& stage, smart_ptr<SGNode> const& parent, Material const& material)
{
    return {stage.addLimb(addTransform(parent, placed(-0.35, 0.1, 1.2)), bonesOfBoth, material),
            addSurface(addTransform(parent, placed(0.55, -0.4, 0.5)), tubeGeometry(ringsOfLimb(bonesOfBoth)),
                       material)};
}

SGTextureLayer layer(smart_ptr<SharedImage> const& picture, double repeats)
{
    SGTextureLayer result;
    result.texture = picture;
    result.coordinates = tubeCoordinates(ringsOfLimb(bonesOfBoth), repeats);
    return result;
}

void addTextured(TechniqueStage& stage, std::vector<SGTextureLayer> const& layers)
{
    Both const both = addBoth(stage, stage.lit, shiny(white));
    both.limb->textureLayers = layers;
    both.tube->textureLayers = layers;
}

void setLight(SGLightData& light, Vector3 const& direction, Color const& color)
{
    light.direction = direction;
    light.ambient = Color{0.2F * color.r, 0.2F * color.g, 0.2F * color.b, 1.0F};
    light.diffuse = color;
    light.specular = color;
}

void sphere(TechniqueStage& stage)
{
    addSphere(stage.lit, shiny());
}

template <int bones>
void limb(TechniqueStage& stage)
{
    stage.addLimb(addTransform(stage.lit, placed(0.0, 0.2, 1.5)), bones, shiny());
}

void limbAndTube(TechniqueStage& stage)
{
    addBoth(stage, stage.lit, shiny());
    addSphere(stage.lit, shiny());
}

void mirrored(TechniqueStage& stage)
{
    auto const mirror = addTransform(stage.lit, Transform(Matrix3(), Vector3(), -1.0));
    addBoth(stage, mirror, shiny());
    addSphere(mirror, shiny());
}

void mirroredTwiceAndOnce(TechniqueStage& stage)
{
    auto const once = addTransform(stage.lit, Transform(Matrix3(), Vector3(0.1, 0.0, 0.0), -1.0));
    addBoth(stage, addTransform(once, Transform(Matrix3(), Vector3(0.2, 0.1, 0.0), -0.7)), shiny());
    stage.addLimb(addTransform(once, placed(-0.5, -0.4, 0.4)), 2, shiny());
}

void tinted(TechniqueStage& stage)
{
    SGTextureLayer tint = layer(chequers(), 3.0);
    tint.colorize = true;
    tint.firstColor = Color{1.0F, 0.8F, 0.2F, 1.0F};
    tint.secondColor = Color{0.1F, 0.3F, 0.1F, 1.0F};
    addTextured(stage, {tint});
}

void wireframe(TechniqueStage& stage)
{
    Both const both = addBoth(stage, stage.lit, shiny());
    for (SurfacePtr const& surface : {both.limb, both.tube}) {
        surface->wireframe = true;
        surface->lineWidth = 2.0;
    }
}

void unlitBesideLit(TechniqueStage& stage)
{
    for (SurfacePtr const& surface : {addBoth(stage, stage.lit, shiny()).limb, addSphere(stage.lit, shiny())})
        surface->unlit = true;
    stage.addLimb(addTransform(stage.lit, placed(0.5, 0.0, 0.5)), 2, shiny());
}

void unlitTexturedAndBlended(TechniqueStage& stage)
{
    Both const both = addBoth(stage, stage.lit, shiny());
    for (SurfacePtr const& surface : {both.limb, both.tube}) {
        surface->unlit = true;
        surface->blending = true;
        surface->material.ambient = Color{1.0F, 0.8F, 0.6F, 0.4F};
        surface->textureLayers = {layer(chequers(), 2.0)};
    }
}

void emissiveOnly(TechniqueStage& stage)
{
    Material material = matt({0.0F, 0.0F, 0.0F, 1.0F});
    material.emissive = Color{0.2F, 0.7F, 0.4F, 1.0F};
    addBoth(stage, stage.lit, material);
}

void multitextured(TechniqueStage& stage)
{
    SGTextureLayer mixed = layer(chequers(), 3.0);
    mixed.blendWithColor = true;
    mixed.color = Color{0.1F, 0.6F, 0.2F, 1.0F};
    addTextured(stage, {layer(chequers(), 1.0), mixed});
}

/// Each layer's own repeats show that every set of coordinates arrives.
void sixLayers(TechniqueStage& stage)
{
    smart_ptr<SharedImage> const pale =
        imageOf(2, 2, {{255, 255, 255}, {220, 255, 255}, {255, 200, 255}, {255, 255, 160}});
    std::vector<SGTextureLayer> layers;
    for (double repeats : {1.0, 2.0, 3.0, 5.0, 7.0, 11.0})
        layers.push_back(layer(pale, repeats));
    addTextured(stage, layers);
}

void blended(TechniqueStage& stage)
{
    Both const both = addBoth(stage, stage.lit, shiny({0.9F, 0.5F, 0.2F, 0.5F}));
    both.limb->blending = true;
    both.tube->blending = true;
}

/// As large in the picture as ever, but made to another measure.
template <int hundredths>
void scaled(TechniqueStage& stage)
{
    constexpr double scale = hundredths / 100.0;
    auto const above = addTransform(stage.lit, Transform(Matrix3(), Vector3(), scale));
    stage.addLimb(
        addTransform(above, Transform(placed(0.0, 0.0).getRotation(), Vector3(-0.35 / scale, 0.0, 0.0), 0.8)),
        bonesOfBoth, shiny(), 1.0 / scale);
    addSurface(addTransform(above, Transform(Matrix3(), Vector3(0.5 / scale, 0.0, 0.0), 1.0)),
               sphereGeometry(0.4 / scale), shiny());
}

template <int exponent>
void highlights(TechniqueStage& stage)
{
    setLight(stage.lit->lights[0], Vector3(1.0, 0.5, 0.2), {0.8F, 0.8F, 0.8F, 1.0F});
    addBoth(stage, stage.lit, shiny(orange, exponent));
    addSphere(stage.lit, shiny(orange, exponent));
}

void lightFromBehind(TechniqueStage& stage)
{
    setLight(stage.lit->lights[0], Vector3(0.6, 0.3, -1.0), white);
    addBoth(stage, stage.lit, shiny(orange, 0.0F));
    addSphere(stage.lit, shiny(orange, 5.0F));
}

void lightFromStraightBehind(TechniqueStage& stage)
{
    setLight(stage.lit->lights[0], Vector3(0.0, 0.0, -1.0), white);
    addBoth(stage, stage.lit, shiny());
}

void threeLights(TechniqueStage& stage)
{
    stage.lit->lights.resize(3);
    setLight(stage.lit->lights[0], Vector3(1.0, 0.5, 0.5), {0.8F, 0.2F, 0.2F, 1.0F});
    setLight(stage.lit->lights[1], Vector3(-3.0, 1.0, 1.0), {0.2F, 0.8F, 0.2F, 1.0F});
    setLight(stage.lit->lights[2], Vector3(0.0, -1.0, 0.3), {0.3F, 0.3F, 0.9F, 1.0F});
    addBoth(stage, stage.lit, shiny());
    addSphere(stage.lit, shiny());
}

void fiveLights(TechniqueStage& stage)
{
    threeLights(stage);
    stage.lit->lights.resize(5);
    setLight(stage.lit->lights[3], Vector3(0.2, 2.0, 0.1), {0.4F, 0.4F, 0.1F, 1.0F});
    setLight(stage.lit->lights[4], Vector3(-0.7, -0.7, 0.6), {0.1F, 0.3F, 0.3F, 1.0F});
}

/// Where there is no light a host says so of what has a skin.
void noLights(TechniqueStage& stage)
{
    stage.lit->lights.clear();
    addBoth(stage, stage.lit, shiny()).limb->unlit = true;
}

void lightsBesideLights(TechniqueStage& stage)
{
    addBoth(stage, stage.lit, shiny());
    auto const other = make_smart<SGLightsNode>(stage.camera);
    setLight(other->lights.emplace_back(), Vector3(-1.0, -1.0, 0.2), {0.4F, 0.6F, 1.0F, 1.0F});
    stage.addLimb(addTransform(other, placed(0.5, 0.4, 0.4)), 2, shiny());
}

/// Colours beyond white are cut off at each vertex.
void overbright(TechniqueStage& stage)
{
    setLight(stage.lit->lights[0], Vector3(1.0, 1.0, 1.0), {3.0F, 2.0F, 1.0F, 1.0F});
    Material material = shiny();
    material.emissive = Color{-0.4F, 0.2F, 0.5F, 1.0F};
    addBoth(stage, stage.lit, material);
}

/// Bones that stretch and shear turn normals otherwise than points.
void stretchingBones(TechniqueStage& stage)
{
    SurfacePtr const surface = stage.addLimb(addTransform(stage.lit, placed(0.0, 0.0, 0.7)), 2, shiny());
    std::vector<BoneTransform>& pose = surface->getBoneTransforms()->edit().transforms;
    pose[0].rotation = Matrix3({2.0, 0.0, 0.0, 0.6, 1.0, 0.0, 0.0, 0.0, 0.5});
    pose[1].rotation = Matrix3({0.3, 0.8, 0.0, -0.8, 0.3, 0.4, 0.0, 0.0, 2.0});
}

void emptyInfluences(TechniqueStage& stage)
{
    SurfacePtr const surface = stage.addLimb(addTransform(stage.lit, placed(0.0, 0.0)), 2, shiny());
    auto weights = make_smart<BoneWeightsData>();
    BoneWeightsData const& all = *surface->getBoneWeights()->get();
    for (std::size_t i = 0; i < all.size(); ++i)
        weights->addVertex(i % 7 == 0 ? std::span<BoneInfluence const>() : all.influences(i));
    surface->setBoneWeights(make_smart<SharedBoneWeights>(weights));
}

/// What lacks one half of a skin, or has no bones in it, is drawn at rest.
void halfSkins(TechniqueStage& stage)
{
    stage.addLimb(addTransform(stage.lit, placed(-0.6, 0.0, 0.5)), 2, shiny())->setBoneWeights(nullptr);
    addSurface(addTransform(stage.lit, placed(0.0, 0.0, 0.5)), Limb(2, bend).geometry, shiny())
        ->setBoneWeights(make_smart<SharedBoneWeights>(Limb(2, bend).weights));
    SurfacePtr const boneless =
        addSurface(addTransform(stage.lit, placed(0.6, 0.0, 0.5)), Limb(2, bend).geometry, shiny());
    boneless->setBoneWeights(make_smart<SharedBoneWeights>(Limb(2, bend).weights));
    boneless->setBoneTransforms(make_smart<SharedBoneTransforms>());
}

/// One skin and one pose on several surfaces, one of them mirrored.
void sharedSkin(TechniqueStage& stage)
{
    SurfacePtr const first =
        stage.addLimb(addTransform(stage.lit, placed(-0.5, 0.0, 0.6)), bonesOfBoth, shiny());
    for (double scale : {0.6, -0.6}) {
        auto const surface = make_smart<SGSurfaceGeometryReferenceNode>(
            addTransform(stage.lit, placed(scale < 0.0 ? 0.7 : 0.1, 0.0, scale)));
        surface->setGeometry(first->getGeometry());
        surface->setNormals(first->getNormals());
        surface->setFacets(first->getFacets());
        surface->setBoneWeights(first->getBoneWeights());
        surface->setBoneTransforms(first->getBoneTransforms());
        surface->material = shiny({0.3F, 0.5F, 0.9F, 1.0F});
    }
}

/// What has no buffers and what has, in turns, so that each finds the other's bindings.
void everyKind(TechniqueStage& stage)
{
    addCurve(stage.camera, {{-0.9, -0.9, 0.0}, {0.0, -0.6, 0.0}, {0.9, -0.9, 0.0}}, true, white)->lineWidth =
        2.0;
    addBoth(stage, stage.lit, shiny());
    auto const quad = addQuad(stage.lit, -0.7, 0.0, 0.3, {0.5F, 0.5F, 1.0F, 0.5F});
    quad->blending = true;
    quad->textureLayers = {squareLayer(chequers())};
    stage.addLimb(addTransform(stage.lit, placed(0.6, 0.5, 0.3)), 2, shiny());
    auto const panel = make_smart<SGZTransformNode>(stage.lit);
    panel->lower = -1.0;
    panel->upper = -0.9;
    addQuad(panel, 0.5, 0.8, 0.0, {0.5F, 0.0F, 0.5F, 1.0F});
    stage.addLimb(addTransform(panel, placed(-0.6, 0.6, 0.2)), 2, shiny());
}

void emptySurface(TechniqueStage& stage)
{
    addSurface(stage.lit, make_smart<SurfaceGeometryData>(), shiny());
    SurfacePtr const skinned = addSurface(stage.lit, make_smart<SurfaceGeometryData>(), shiny());
    skinned->setBoneWeights(make_smart<SharedBoneWeights>(make_smart<BoneWeightsData>()));
    skinned->setBoneTransforms(make_smart<SharedBoneTransforms>(BoneTransformVector({BoneTransform()})));
    addBoth(stage, stage.lit, shiny());
}

} // namespace

TechniqueStage::TechniqueStage()
{
    constexpr double near = 2.0;
    constexpr double half = 0.5;
    camera->camera = make_smart<CameraBase>(Matrix::translationMatrix(Vector3(0.0, 0.0, -4.0)),
                                            Matrix::frustum(-half, half, -half, half, near, 10.0),
                                            quarl::Rect<int>{0, 0, side, side});
    lit->lights[0].direction = Vector3(0.4, 0.5, 1.0);
    lit->lights[0].ambient = Color{0.3F, 0.3F, 0.3F, 1.0F};
}

SurfacePtr TechniqueStage::addLimb(smart_ptr<SGNode> const& parent, int bones, Material const& material,
                                   double size)
{
    Limb const limb(bones, bend, size);
    SurfacePtr const surface = addSurface(parent, limb.geometry, material);
    limb.moveBy(*surface);
    nextPoses_.emplace_back(surface->getBoneTransforms(), Limb(bones, otherBend, size).pose);
    return surface;
}

void TechniqueStage::advance()
{
    for (auto const& [shared, pose] : nextPoses_)
        shared->edit() = pose;
}

std::ostream& operator<<(std::ostream& stream, TechniqueScene const& scene)
{
    return stream << scene.name;
}

std::vector<TechniqueScene> const& techniqueScenes()
{
    static std::vector<TechniqueScene> const scenes{
        {"sphere", sphere},
        {"oneBone", limb<1>},
        {"twoBones", limb<2>},
        {"eightBones", limb<8>},
        {"fiftySixBones", limb<56>},
        {"limbAndTube", limbAndTube},
        {"mirrored", mirrored},
        {"mirroredTwiceAndOnce", mirroredTwiceAndOnce},
        {"tinted", tinted},
        {"wireframe", wireframe},
        {"unlitBesideLit", unlitBesideLit},
        {"unlitTexturedAndBlended", unlitTexturedAndBlended},
        {"emissiveOnly", emissiveOnly},
        {"multitextured", multitextured},
        {"sixLayers", sixLayers},
        {"blended", blended},
        {"scaledBy0p01", scaled<1>},
        {"scaledBy2p5", scaled<250>},
        {"shininess0", highlights<0>},
        {"shininess128", highlights<128>},
        {"lightFromBehind", lightFromBehind},
        {"lightFromStraightBehind", lightFromStraightBehind},
        {"threeLights", threeLights},
        {"fiveLights", fiveLights, TechniqueScene::Special::beyondShaders},
        {"noLights", noLights},
        {"lightsBesideLights", lightsBesideLights},
        {"overbright", overbright},
        {"stretchingBones", stretchingBones},
        {"emptyInfluences", emptyInfluences},
        {"halfSkins", halfSkins},
        {"sharedSkin", sharedSkin},
        {"everyKind", everyKind},
        {"emptySurface", emptySurface},
        {"mixedWithNoVBO", everyKind, TechniqueScene::Special::afterPlain},
        {"mirroredWithNoVBO", mirrored, TechniqueScene::Special::afterPlain},
    };
    return scenes;
}
