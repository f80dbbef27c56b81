#include "OpenGLRenderer/BoneAttributes.h"

#include "OpenGLRenderer/ExtraData.h"
#include "OpenGLRenderer/ExtraDataKeys.h"
#include "OpenGLRenderer/FloatData.h"
#include "OpenGLRenderer/VBOData.h"

namespace {

void point(GLuint attribute, void const* values)
{
    glVertexAttribPointerARB(attribute, 4, GL_FLOAT, GL_FALSE, 0, values);
}

void pointAtBuffer(GLuint attribute, GLuint buffer)
{
    glBindBufferARB(GL_ARRAY_BUFFER_ARB, buffer);
    point(attribute, nullptr);
}

void pointAtArray(GLuint attribute, SGObject const& shared, SGExtraDataKey key)
{
    point(attribute, findExtraData<FloatData<float>>(shared, key)->values.data());
}

} // namespace

void BoneAttributes::enable(SharedBoneWeights const& shared)
{
    GLuint const weightsBuffer = bufferOf(shared, ExtraDataKeys::vboBoneWeights);
    GLuint const indicesBuffer = bufferOf(shared, ExtraDataKeys::vboBoneIndices);
    if (weightsBuffer != 0 && indicesBuffer != 0) {
        pointAtBuffer(indices, indicesBuffer);
        pointAtBuffer(weights, weightsBuffer);
        glBindBufferARB(GL_ARRAY_BUFFER_ARB, 0);
    } else {
        pointAtArray(indices, shared, ExtraDataKeys::floatsIndices);
        pointAtArray(weights, shared, ExtraDataKeys::floatsWeights);
    }
    glEnableVertexAttribArrayARB(indices);
    glEnableVertexAttribArrayARB(weights);
}

void BoneAttributes::disable()
{
    glDisableVertexAttribArrayARB(indices);
    glDisableVertexAttribArrayARB(weights);
}
