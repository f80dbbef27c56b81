#include "OpenGLRenderer/ExtraData.h"

#include "OpenGLRenderer/ExtraDataKeys.h"
#include "OpenGLRenderer/FloatData.h"
#include "OpenGLRenderer/NoVBOTag.h"
#include "SceneGraph/SGSharedObject.h"

#include <gtest/gtest.h>

TEST(ExtraData, ReadsARecordOfItsType)
{
    SGSharedObject object;
    EXPECT_FALSE(getExtraData<NoVBOTag>(object, ExtraDataKeys::noVBO));
    auto const tag = make_smart<NoVBOTag>();
    object.setExtraData(ExtraDataKeys::noVBO, tag);
    EXPECT_EQ(getExtraData<NoVBOTag>(object, ExtraDataKeys::noVBO), tag);
    EXPECT_FALSE(getExtraData<FloatData<float>>(object, ExtraDataKeys::noVBO));
}

TEST(ExtraDataKeys, AreFoundByThePrefix)
{
    using namespace ExtraDataKeys;
    for (SGExtraDataKey const& key :
         {colorizerDatabase, floats, floatsIndices, floatsWeights, noVBO, skinnedSurface, skinningPlans,
          texture, triangleFlipperDatabase, unanimatedData, uncolorizedTextureData, unflippedTriangleData,
          vbo, vboBoneIndices, vboBoneWeights, vertexProgramData, vertexShaderData, viewMatrix})
        EXPECT_TRUE(key.name().starts_with(prefix)) << key.name();
}
