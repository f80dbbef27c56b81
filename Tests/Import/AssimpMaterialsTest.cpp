#include "Viewer/Import/AssimpMaterials.h"

#include "Tests/Import/TestFolder.h"

#include <assimp/material.h>
#include <assimp/scene.h>

#include <gtest/gtest.h>

#include <memory>

namespace sgview {

namespace {

/// What is warned of when a material with this texture is read, and there is no picture.
std::vector<std::string> warningsFor(char const* texture, std::string_view relativePrefix)
{
    TestFolder const folder;
    aiScene scene; // owns its material
    scene.mNumMaterials = 1;
    scene.mMaterials = std::make_unique<aiMaterial*[]>(1).release();
    scene.mMaterials[0] = std::make_unique<aiMaterial>().release();
    aiString const path{std::string(texture)};
    scene.mMaterials[0]->AddProperty(&path, AI_MATKEY_TEXTURE_DIFFUSE(0));

    Warnings warnings;
    FileAccess access(folder.path() / "model", {}, warnings);
    TextureStore textures(access, warnings, FirstRow::bottom, 16);
    MaterialTable table(warnings);
    static_cast<void>(readAssimpMaterials(scene, table, textures, relativePrefix, warnings));
    return warnings.take();
}

} // namespace

TEST(AssimpMaterials, KnowHowAFormatMarksRelativePaths)
{
    EXPECT_EQ(warningsFor("//tex/a.png", "//"), std::vector<std::string>{"texture 'tex/a.png': not found"});
    EXPECT_EQ(warningsFor("//tex/a.png", ""),
              std::vector<std::string>{"texture '//tex/a.png': a network path, refused; no 'a.png' in the "
                                       "model's folder"});
    EXPECT_EQ(warningsFor("tex/a.png", "//"), std::vector<std::string>{"texture 'tex/a.png': not found"});
}

} // namespace sgview
