#include "OpenGLRenderer/SharedTextureTraverser.h"

#include "OpenGLRenderer/ExtraData.h"
#include "OpenGLRenderer/ExtraDataKeys.h"
#include "OpenGLRenderer/NoVBOTag.h"
#include "OpenGLRenderer/TextureUploadData.h"
#include "SceneGraph/SGCurveGeometryReferenceNode.h"
#include "SceneGraph/SGQuadNode.h"
#include "SceneGraph/SGRootNode.h"
#include "SceneGraph/SGTransformNode.h"
#include "Tests/Unit/OpenGLRenderer/RendererTesting.h"

using namespace RendererTesting;

namespace {

class SharedTextures : public RendererTest {
protected:
    ~SharedTextures() override { SGRendererManager::shutdown = false; }

    static void addLayer(SGGeometryNode& node, smart_ptr<SharedImage> const& image)
    {
        SGTextureLayer layer;
        layer.texture = image;
        node.textureLayers.push_back(layer);
    }

    smart_ptr<SGRootNode> root = make_smart<SGRootNode>();
    smart_ptr<SGTransformNode> transform = make_smart<SGTransformNode>(root);
    smart_ptr<SGQuadNode> quad = make_smart<SGQuadNode>(transform);
    SharedTextureTraverser pass;
};

Calls upload(int name, std::string const& arguments, std::string const& data)
{
    std::string const text = std::to_string(name);
    return {"glGenTextures(1, {" + text + "})",
            "glBindTexture(GL_TEXTURE_2D, " + text + ")",
            "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR)",
            "glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_NEAREST)",
            "gluBuild2DMipmaps(GL_TEXTURE_2D, " + arguments + ", GL_UNSIGNED_BYTE, " + data + ")",
            "glGetError()"};
}

smart_ptr<SharedImage> numberedImage(Image_base::Format format)
{
    auto const image = make_smart<Image_base>(1, 2, format);
    unsigned char value = 0;
    for (unsigned char& byte : image->edit())
        byte = ++value;
    return make_smart<SharedImage>(image);
}

} // namespace

TEST_F(SharedTextures, UploadsAnImageWithMipmapsOnce)
{
    auto const image = numberedImage(Image_base::RGBA);
    addLayer(*quad, image);
    EXPECT_EQ(entering(pass, *root), upload(1, "4, 1, 2, GL_RGBA", "{1, 2, 3, 4, 5, 6, 7, 8}"));
    EXPECT_EQ(leaving(pass, *root), Calls());
    auto const record = getExtraData<TextureUploadData>(*image, "GLTexture");
    ASSERT_TRUE(record);
    EXPECT_EQ(record->name(), 1U);
    EXPECT_EQ(entering(pass, *root), Calls());
}

TEST_F(SharedTextures, UploadsOtherFormatsAsRGB)
{
    addLayer(*quad, numberedImage(Image_base::RGB));
    EXPECT_EQ(entering(pass, *root), upload(1, "3, 1, 2, GL_RGB", "{1, 2, 3, 4, 5, 6, 7, 8}"));
}

TEST_F(SharedTextures, UploadsAnImageThatManyLayersShareOnce)
{
    auto const image = sharedImage();
    addLayer(*quad, image);
    addLayer(*quad, image);
    auto const other = make_smart<SGQuadNode>(root);
    addLayer(*other, image);
    root->acceptEnter(&pass);
    EXPECT_EQ(gl.textures().generated, 1);
}

TEST_F(SharedTextures, FindsTheImagesOfAllLayersOfAllThatIsDrawn)
{
    auto const surface = triangle(root);
    auto const curve = make_smart<SGCurveGeometryReferenceNode>(surface);
    for (int i = 0; i < 3; ++i)
        addLayer(*surface, sharedImage());
    addLayer(*curve, sharedImage());
    addLayer(*quad, sharedImage());
    root->acceptEnter(&pass);
    EXPECT_EQ(gl.textures().generated, 5);
}

TEST_F(SharedTextures, MakesNoCallWithoutTextures)
{
    EXPECT_EQ(entering(pass, *root) + leaving(pass, *root), Calls());
}

TEST_F(SharedTextures, LooksAtTheRootOnly)
{
    addLayer(*quad, sharedImage());
    EXPECT_EQ(entering(pass, *quad) + leaving(pass, *quad), Calls());
}

TEST_F(SharedTextures, LogsAFailureAndKeepsTheTexture)
{
    LogCapture const log;
    addLayer(*quad, sharedImage());
    gl.queueError(GL_OUT_OF_MEMORY);
    root->acceptEnter(&pass);
    EXPECT_EQ(log.text(), "error: Failed to upload texture: GL Error: Out of memory.\n");
    EXPECT_EQ(entering(pass, *root), Calls());
}

TEST_F(SharedTextures, ReplacesARecordOfAnotherType)
{
    auto const image = sharedImage();
    image->setExtraData("GLTexture", make_smart<NoVBOTag>());
    addLayer(*quad, image);
    root->acceptEnter(&pass);
    EXPECT_TRUE(getExtraData<TextureUploadData>(*image, "GLTexture"));
}

TEST_F(SharedTextures, DeletesATextureWithTheLastReferenceToItsImage)
{
    auto image = sharedImage();
    addLayer(*quad, image);
    root->acceptEnter(&pass);
    image.reset();
    static_cast<void>(gl.takeCalls());
    quad->textureLayers.clear();
    EXPECT_EQ(gl.takeCalls(), Calls{"glDeleteTextures(1, {1})"});
    EXPECT_TRUE(gl.textures().live.empty());
}

TEST_F(SharedTextures, DeletesATextureWhoseRecordIsRemoved)
{
    auto const image = sharedImage();
    addLayer(*quad, image);
    root->acceptEnter(&pass);
    SGObject::removeExtraDataEverywhere(ExtraDataKeys::prefix);
    EXPECT_EQ(gl.textures().deleted, 1);
}

TEST_F(SharedTextures, DeletesNothingDuringShutdown)
{
    addLayer(*quad, sharedImage());
    root->acceptEnter(&pass);
    static_cast<void>(gl.takeCalls());
    SGRendererManager::shutdown = true;
    quad->textureLayers.clear();
    EXPECT_EQ(gl.takeCalls(), Calls());
    EXPECT_EQ(gl.textures().deleted, 0);
}
