#include "Viewer/Window/MaterialSection.h"

#include <gmock/gmock.h>

namespace sgview {
namespace {

TEST(MaterialSection, NamesTheTexturesOfAMaterial)
{
    Model model;
    model.images = {
        {"skin.png", 512, 256, false, {}}, {"embedded 1", 64, 64, false, {}}, {"", 8, 4, false, {}}};
    model.materials.resize(2);
    model.materials[1].textures = {{1}, {none}, {0}, {2}};
    EXPECT_TRUE(texturesInWords(model, 0).empty());
    EXPECT_THAT(texturesInWords(model, 1),
                testing::ElementsAre("texture: embedded 1, 64 x 64", "texture: skin.png, 512 x 256",
                                     "texture: embedded, 8 x 4"));
}

} // namespace
} // namespace sgview
