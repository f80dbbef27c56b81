#include "OpenGLRenderer/ManualColorizer.h"

#include "OpenGLRenderer/ExtraData.h"
#include "OpenGLRenderer/ExtraDataKeys.h"
#include "OpenGLRenderer/NoVBOTag.h"
#include "SceneGraph/SGQuadNode.h"
#include "SceneGraph/SGRootNode.h"
#include "Tests/Unit/OpenGLRenderer/RendererTesting.h"

#include <limits>

using namespace RendererTesting;

namespace {

Color const red{1.0F, 0.0F, 0.0F, 1.0F};
Color const blue{0.0F, 0.0F, 1.0F, 1.0F};

/// A black and a white pixel.
smart_ptr<SharedImage> blackAndWhite()
{
    auto const image = make_smart<Image_base>(2, 1);
    for (std::size_t i = 3; i < 6; ++i)
        image->edit()[i] = 255;
    return make_smart<SharedImage>(image);
}

std::uint32_t hashOf(ColorizedTextureInfo const& info)
{
    std::size_t const hash = std::hash<ColorizedTextureInfo>()(info);
    EXPECT_LE(hash, std::numeric_limits<std::uint32_t>::max());
    return static_cast<std::uint32_t>(hash);
}

std::uint32_t addressOf(smart_ptr<SharedImage> const& image)
{
    return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(image.get()));
}

class Colorizing : public testing::Test {
protected:
    static SGTextureLayer& addLayer(SGGeometryNode& node, smart_ptr<SharedImage> const& image)
    {
        SGTextureLayer layer;
        layer.texture = image;
        layer.colorize = true;
        layer.firstColor = red;
        layer.secondColor = blue;
        return node.textureLayers.emplace_back(layer);
    }

    /// The colourising pass over the given nodes; the undo pass follows with `undo`.
    void colorize(std::initializer_list<SGGeometryNode*> nodes)
    {
        root->acceptEnter(&pass);
        for (SGGeometryNode* const node : nodes)
            show(pass, *node);
        root->acceptLeave(&pass);
    }
    void undo(std::initializer_list<SGGeometryNode*> nodes)
    {
        for (SGGeometryNode* const node : nodes)
            show(unpass, *node);
    }

    smart_ptr<SGRootNode> root = make_smart<SGRootNode>();
    smart_ptr<SharedImage> image = blackAndWhite();
    SGQuadNode quad{nullptr};
    SGQuadNode other{nullptr};
    ManualColorizer pass;
    ManualUnColorizer unpass;
};

} // namespace

TEST(ColorizedTextureInfo, ScalesComponentsTowardsZeroWithoutMasking)
{
    EXPECT_EQ(scaledComponent(0.0F), 0);
    EXPECT_EQ(scaledComponent(1.0F), 255);
    EXPECT_EQ(scaledComponent(0.999F), 254);
    EXPECT_EQ(scaledComponent(1.5F), 382);
    EXPECT_EQ(scaledComponent(-0.5F), -127);
    EXPECT_EQ(scaledComponent(-0.0F), 0);
}

TEST(ColorizedTextureInfo, ScalesWhatDoesNotFitToTheSmallestInteger)
{
    constexpr std::int32_t smallest = std::numeric_limits<std::int32_t>::min();
    for (float const component :
         {1e30F, -1e30F, 8421505.0F, std::numeric_limits<float>::infinity(),
          -std::numeric_limits<float>::infinity(), std::numeric_limits<float>::quiet_NaN()})
        EXPECT_EQ(scaledComponent(component), smallest) << component;
    EXPECT_EQ(scaledComponent(8000000.0F), 2040000000);
}

TEST(ColorizedTextureInfo, HashesByTheFormula)
{
    auto const image = sharedImage();
    Color const a{0.5F, 0.25F, 1.0F, 0.75F};
    Color const b{0.1F, 0.2F, 0.3F, 1.0F};
    std::uint32_t const packedA = 191U << 24U | 127U << 16U | 63U << 8U | 255U;
    std::uint32_t const packedB = 255U << 24U | 25U << 16U | 51U << 8U | 76U;
    EXPECT_EQ(hashOf({image, a, b}), packedA + addressOf(image) + 3U * packedB);
    EXPECT_EQ(hashOf({image, {0.0F, 0.0F, 0.0F, 0.0F}, {0.0F, 0.0F, 0.0F, 0.0F}}), addressOf(image));
}

TEST(ColorizedTextureInfo, LetsComponentsSpillOverInTheHash)
{
    auto const image = sharedImage();
    Color const none{0.0F, 0.0F, 0.0F, 0.0F};
    // 382 is 0x17e: its ninth bit lands in the next byte.
    EXPECT_EQ(hashOf({image, {0.0F, 0.0F, 1.5F, 0.0F}, none}), 0x17EU + addressOf(image));
    EXPECT_EQ(hashOf({image, {0.0F, 1.5F, 0.0F, 0.0F}, none}), 0x17E00U + addressOf(image));
    EXPECT_EQ(hashOf({image, {0.0F, 0.0F, 0.0F, 1.5F}, none}), 0x7E000000U + addressOf(image));
    EXPECT_EQ(hashOf({image, none, {0.0F, 0.0F, -1.0F, 0.0F}}), 3U * 0xFFFFFF01U + addressOf(image));
}

TEST(ColorizedTextureInfo, IsEqualInPictureAndAllEightFloats)
{
    auto const image = sharedImage();
    ColorizedTextureInfo const info{image, red, blue};
    EXPECT_EQ(info, (ColorizedTextureInfo{image, red, blue}));
    EXPECT_FALSE(info == (ColorizedTextureInfo{sharedImage(), red, blue}));
    for (float Color::*const component : {&Color::r, &Color::g, &Color::b, &Color::a}) {
        ColorizedTextureInfo changed = info;
        changed.colorA.*component += 0.001F;
        EXPECT_FALSE(info == changed);
        changed = info;
        changed.colorB.*component += 0.001F;
        EXPECT_FALSE(info == changed);
    }
}

TEST_F(Colorizing, SwapsInATintedCopy)
{
    addLayer(quad, image);
    colorize({&quad});
    SGTextureLayer const& layer = quad.textureLayers[0];
    ASSERT_NE(layer.texture, image);
    EXPECT_FALSE(layer.colorize);
    Image_base const& copy = *layer.texture->get();
    EXPECT_EQ(copy.getWidth(), 2);
    EXPECT_EQ(copy.getHeight(), 1);
    EXPECT_THAT(std::vector<int>(copy.getData(), copy.getData() + 6),
                testing::ElementsAre(0, 0, 255, 255, 0, 0))
        << "black in the second colour, white in the first";
    EXPECT_EQ(image->get()->getData()[3], 255) << "the source is as it was";
}

TEST_F(Colorizing, PutsThePictureAndTheFlagBack)
{
    auto const second = blackAndWhite();
    addLayer(quad, image);
    addLayer(quad, sharedImage()).colorize = false;
    addLayer(quad, second);
    auto const plain = quad.textureLayers[1].texture;
    colorize({&quad});
    auto const parked = getExtraData<UncolorizedTextureData>(quad, "GLUncolorizedTextureData");
    ASSERT_TRUE(parked);
    EXPECT_EQ(parked->textures.size(), 2U);
    EXPECT_EQ(parked->textures.at(0), image);
    EXPECT_EQ(parked->textures.at(2), second);
    undo({&quad});
    EXPECT_EQ(quad.textureLayers[0].texture, image);
    EXPECT_EQ(quad.textureLayers[1].texture, plain);
    EXPECT_EQ(quad.textureLayers[2].texture, second);
    EXPECT_TRUE(quad.textureLayers[0].colorize);
    EXPECT_FALSE(quad.textureLayers[1].colorize);
    EXPECT_TRUE(quad.textureLayers[2].colorize);
    EXPECT_FALSE(quad.hasExtraData());
}

TEST_F(Colorizing, LeavesNodesAloneThatAskForNoTint)
{
    addLayer(quad, image).colorize = false;
    colorize({&quad, &other});
    EXPECT_EQ(quad.textureLayers[0].texture, image);
    EXPECT_FALSE(quad.hasExtraData());
    undo({&quad, &other});
    EXPECT_FALSE(quad.textureLayers[0].colorize);
}

TEST_F(Colorizing, SharesOneCopyAmongEqualTints)
{
    addLayer(quad, image);
    addLayer(quad, image);
    addLayer(other, image);
    colorize({&quad, &other});
    EXPECT_EQ(quad.textureLayers[0].texture, quad.textureLayers[1].texture);
    EXPECT_EQ(quad.textureLayers[0].texture, other.textureLayers[0].texture);
}

TEST_F(Colorizing, MakesACopyForEachDifferenceAlphaIncluded)
{
    addLayer(quad, image);
    for (float Color::*const component : {&Color::r, &Color::g, &Color::b, &Color::a}) {
        addLayer(quad, image).firstColor.*component = 0.5F;
        addLayer(quad, image).secondColor.*component = 0.5F;
    }
    addLayer(quad, blackAndWhite());
    colorize({&quad});
    std::set<SharedImage*> copies;
    for (SGTextureLayer const& layer : quad.textureLayers)
        copies.insert(layer.texture.get());
    EXPECT_EQ(copies.size(), 10U);
}

TEST_F(Colorizing, WrapsTheBytesOfComponentsOutOfRange)
{
    SGTextureLayer& layer = addLayer(quad, image);
    layer.secondColor = {1.5F, 1.0F, -0.5F, 1.0F};
    colorize({&quad});
    unsigned char const* const black = quad.textureLayers[0].texture->get()->getData();
    EXPECT_EQ(black[0], 126);
    EXPECT_EQ(black[1], 255);
    EXPECT_EQ(black[2], 129);
}

TEST_F(Colorizing, TintsALayerVisitedTwiceOnce)
{
    addLayer(quad, image);
    root->acceptEnter(&pass);
    show(pass, quad);
    auto const tinted = quad.textureLayers[0].texture;
    show(pass, quad);
    root->acceptLeave(&pass);
    EXPECT_EQ(quad.textureLayers[0].texture, tinted);
    undo({&quad});
    EXPECT_EQ(quad.textureLayers[0].texture, image);
}

TEST_F(Colorizing, KeepsNoCopyOfAColourThatIsNoNumber)
{
    addLayer(quad, image).firstColor.r = std::numeric_limits<float>::quiet_NaN();
    for (int frame = 0; frame < 3; ++frame) {
        colorize({&quad});
        EXPECT_NE(quad.textureLayers[0].texture, image);
        weak_ptr<SharedImage> const tinted(quad.textureLayers[0].texture);
        undo({&quad});
        EXPECT_TRUE(tinted.expired());
    }
}

TEST_F(Colorizing, KeepsACopyAcrossFramesWhileItIsUsed)
{
    addLayer(quad, image);
    colorize({&quad});
    auto const tinted = quad.textureLayers[0].texture;
    undo({&quad});
    for (int frame = 0; frame < 40; ++frame) {
        colorize({&quad});
        EXPECT_EQ(quad.textureLayers[0].texture, tinted);
        undo({&quad});
    }
}

TEST_F(Colorizing, DropsACopyAfterSeventeenUnusedFrames)
{
    addLayer(quad, image);
    colorize({&quad});
    weak_ptr<SharedImage> const tinted(quad.textureLayers[0].texture);
    undo({&quad});
    for (int frame = 0; frame < 16; ++frame)
        colorize({});
    EXPECT_FALSE(tinted.expired());
    colorize({});
    EXPECT_TRUE(tinted.expired());
}

TEST_F(Colorizing, KeepsItsDatabaseOnTheRoot)
{
    root->setExtraData("GLColorizerDatabase", make_smart<NoVBOTag>());
    colorize({});
    auto const database = getExtraData<ColorizerDatabase>(*root, "GLColorizerDatabase");
    ASSERT_TRUE(database);
    EXPECT_EQ(database->referenceCount(), 2) << "the pass holds none between frames";
    colorize({});
    EXPECT_EQ(getExtraData<ColorizerDatabase>(*root, "GLColorizerDatabase"), database);
}

TEST_F(Colorizing, TintsTheLayersOfSurfaces)
{
    auto const surface = triangle();
    addLayer(*surface, image);
    colorize({surface.get()});
    EXPECT_NE(surface->textureLayers[0].texture, image);
    undo({surface.get()});
    EXPECT_EQ(surface->textureLayers[0].texture, image);
}
