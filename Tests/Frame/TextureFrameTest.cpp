#include "Tests/Frame/FrameRenderer.h"
#include "Tests/Frame/PictureComparison.h"
#include "Tests/Frame/SceneParts.h"

#include <numbers>

namespace {

constexpr std::array<unsigned char, 3> black{0, 0, 0};
constexpr std::array<unsigned char, 3> white{255, 255, 255};
constexpr Color whiteColor{1.0F, 1.0F, 1.0F, 1.0F};
constexpr int near = FrameRenderer::side / 4;    // the middle of the first half
constexpr int far = 3 * FrameRenderer::side / 4; // and of the second

/// Quarters, red and green below blue and yellow when the first row is at v = 0. Two pixels wide each, so
/// that linear filtering leaves their middles alone.
smart_ptr<SharedImage> fourColours()
{
    constexpr std::array<unsigned char, 3> red{255, 0, 0};
    constexpr std::array<unsigned char, 3> green{0, 255, 0};
    constexpr std::array<unsigned char, 3> blue{0, 0, 255};
    constexpr std::array<unsigned char, 3> yellow{255, 255, 0};
    return imageOf(4, 4,
                   {red, red, green, green, red, red, green, green, blue, blue, yellow, yellow, blue, blue,
                    yellow, yellow});
}

smart_ptr<SharedImage> plain(std::array<unsigned char, 3> const& pixel)
{
    return imageOf(1, 1, {pixel});
}

/// A square that fills the picture, with layers on white.
sgview::Picture drawLayers(std::vector<SGTextureLayer> const& layers, Color const& color = whiteColor)
{
    Stage stage;
    addSurface(stage.lit, squareGeometry(-1.0, 1.0), matt(color))->textureLayers = layers;
    return FrameRenderer::draw(stage.root);
}

TEST(TextureFrame, FirstRowIsAtTheOriginOfTheCoordinates)
{
    sgview::Picture const picture = drawLayers({squareLayer(fourColours())});
    EXPECT_TRUE(showsAt(picture, near, far, {255, 0, 0}));
    EXPECT_TRUE(showsAt(picture, far, far, {0, 255, 0}));
    EXPECT_TRUE(showsAt(picture, near, near, {0, 0, 255}));
    EXPECT_TRUE(showsAt(picture, far, near, {255, 255, 0}));
}

TEST(TextureFrame, MultipliesTheLitColour)
{
    sgview::Picture const picture =
        drawLayers({squareLayer(plain({204, 102, 255}))}, {0.5F, 0.5F, 0.2F, 1.0F});
    EXPECT_TRUE(showsAt(picture, near, near, {102, 51, 51}));
}

TEST(TextureFrame, Repeats)
{
    sgview::Picture const picture = drawLayers({squareLayer(fourColours(), 2.0)});
    constexpr int eighth = FrameRenderer::side / 8;
    for (int column : {eighth, 5 * eighth})
        for (int row : {3 * eighth, 7 * eighth})
            EXPECT_TRUE(showsAt(picture, column, row, {255, 0, 0}));
}

TEST(TextureFrame, ClampedShowsNoSecondCopy)
{
    SGTextureLayer layer = squareLayer(fourColours(), 2.0);
    layer.clamp = true;
    sgview::Picture const picture = drawLayers({layer});
    constexpr int eighth = FrameRenderer::side / 8;
    EXPECT_TRUE(showsAt(picture, eighth, 7 * eighth, {255, 0, 0}));
    // Right of the picture its last column goes on, mixed half and half with the white border.
    EXPECT_TRUE(showsAt(picture, 6 * eighth, 7 * eighth, {128, 255, 128}));
    EXPECT_EQ(pixelAt(picture, 6 * eighth, 7 * eighth), pixelAt(picture, 7 * eighth, 7 * eighth));
}

TEST(TextureFrame, SecondLayerMultipliesTheFirst)
{
    sgview::Picture const picture =
        drawLayers({squareLayer(plain({204, 204, 51})), squareLayer(fourColours())});
    EXPECT_TRUE(showsAt(picture, near, far, {204, 0, 0}));
    EXPECT_TRUE(showsAt(picture, far, far, {0, 204, 0}));
    EXPECT_TRUE(showsAt(picture, near, near, {0, 0, 51}));
    EXPECT_TRUE(showsAt(picture, far, near, {204, 204, 0}));
}

TEST(TextureFrame, LayersHaveCoordinatesOfTheirOwn)
{
    SGTextureLayer turned = squareLayer(fourColours());
    turned.coordinates =
        textureCoordinates({{1.0, 1.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}});
    sgview::Picture const picture = drawLayers({squareLayer(fourColours()), turned});
    EXPECT_TRUE(showsAt(picture, near, far, {255, 0, 0})) << "red on yellow";
    EXPECT_TRUE(showsAt(picture, far, far, {0, 0, 0})) << "green on blue";
}

TEST(TextureFrame, BlendingLayerMixesTowardsItsColour)
{
    SGTextureLayer layer = squareLayer(plain({51, 102, 255}));
    layer.blendWithColor = true;
    layer.color = Color{1.0F, 0.0F, 0.5F, 1.0F};
    // What is lit times (1 - picture) plus the layer's colour times the picture.
    EXPECT_TRUE(showsAt(drawLayers({layer}, {0.5F, 1.0F, 1.0F, 1.0F}), near, near, {153, 153, 128}));
}

TEST(TextureFrame, SecondLayerMixesTowardsItsColour)
{
    SGTextureLayer layer = squareLayer(plain({51, 102, 255}));
    layer.blendWithColor = true;
    layer.color = Color{1.0F, 0.0F, 0.5F, 1.0F};
    sgview::Picture const picture = drawLayers({squareLayer(plain({128, 255, 255})), layer});
    EXPECT_TRUE(showsAt(picture, near, near, {153, 153, 128}));
}

TEST(TextureFrame, TintedShowsTheFirstColourForLightAndTheSecondForDark)
{
    SGTextureLayer layer = squareLayer(imageOf(4, 1, {black, black, white, white}));
    layer.colorize = true;
    layer.firstColor = Color{1.0F, 0.8F, 0.0F, 1.0F};
    layer.secondColor = Color{0.2F, 0.0F, 0.4F, 1.0F};
    sgview::Picture const picture = drawLayers({layer});
    EXPECT_TRUE(showsAt(picture, near, near, {51, 0, 102}));
    EXPECT_TRUE(showsAt(picture, far, near, {255, 204, 0}));
}

TEST(TextureFrame, TintsOfOneImageDoNotMix)
{
    smart_ptr<SharedImage> const image = plain(white);
    Stage stage;
    std::array<Color, 3> const tints{{{1.0F, 0.0F, 0.0F, 1.0F}, {0.0F, 1.0F, 0.0F, 1.0F}, whiteColor}};
    for (std::size_t i = 0; i < tints.size(); ++i) {
        SGTextureLayer layer = squareLayer(image);
        layer.colorize = i < 2;
        layer.firstColor = tints[i];
        auto const place = addTransform(
            stage.lit, Transform(Matrix3(), Vector3(0.6 * static_cast<double>(i) - 0.6, 0.0, 0.0), 1.0));
        addSurface(place, squareGeometry(-0.2, 0.2), matt(whiteColor))->textureLayers = {layer};
    }
    for (int frame = 0; frame < 2; ++frame) {
        sgview::Picture const picture = FrameRenderer::draw(stage.root);
        EXPECT_TRUE(showsAt(picture, 51, 128, {255, 0, 0}));
        EXPECT_TRUE(showsAt(picture, 128, 128, {0, 255, 0}));
        EXPECT_TRUE(showsAt(picture, 204, 128, {255, 255, 255}));
    }
}

TEST(TextureFrame, AlphaOfThePictureBlends)
{
    auto image = make_smart<Image_base>(1, 1, Image_base::RGBA);
    std::array<unsigned char, 4> const pixel{255, 0, 0, 102};
    std::copy(pixel.begin(), pixel.end(), image->edit().begin());
    Stage stage;
    auto surface = addSurface(stage.lit, squareGeometry(-1.0, 1.0), matt(whiteColor));
    surface->textureLayers = {squareLayer(make_smart<SharedImage>(image))};
    surface->blending = true;
    EXPECT_TRUE(showsAt(FrameRenderer::draw(stage.root), near, near, {133, 61, 92}));
}

TEST(TextureFrame, ChequeredSquareAskew)
{
    std::vector<std::array<unsigned char, 3>> pixels;
    for (int row = 0; row < 8; ++row)
        for (int column = 0; column < 8; ++column)
            pixels.push_back({static_cast<unsigned char>(32 * column), static_cast<unsigned char>(32 * row),
                              static_cast<unsigned char>((row + column) % 2 ? 255 : 0)});
    Stage stage;
    auto const turned = addTransform(stage.lit, Transform(Vector3(1.0, 2.0, 3.0), std::numbers::pi / 4.0));
    addSurface(turned, squareGeometry(-0.7, 0.7), matt(whiteColor))->textureLayers = {
        squareLayer(imageOf(8, 8, pixels))};
    EXPECT_TRUE(looksLikeReference(FrameRenderer::draw(stage.root), "chequeredSquareAskew"));
}

} // namespace
