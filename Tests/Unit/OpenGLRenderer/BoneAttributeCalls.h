#pragma once

#include "OpenGLRenderer/ExtraData.h"
#include "OpenGLRenderer/FloatData.h"
#include "Tests/Unit/OpenGLRenderer/RendererTesting.h"

/// How a skinned surface's bone weights and indices are passed, whichever pass skins.
namespace RendererTesting {

/// \param indices, weights  how the arrays are printed
inline Calls bonesFrom(std::string const& indices, std::string const& weights)
{
    return {"glVertexAttribPointerARB(14, 4, GL_FLOAT, GL_FALSE, 0, " + indices + ')',
            "glVertexAttribPointerARB(15, 4, GL_FLOAT, GL_FALSE, 0, " + weights + ')',
            "glEnableVertexAttribArrayARB(14)", "glEnableVertexAttribArrayARB(15)"};
}
inline Calls const bonesFromMemory = bonesFrom("indices", "weights");

/// Buffer 1 holds the weights, buffer 2 the indices.
inline Calls const bonesFromBuffers{"glBindBufferARB(GL_ARRAY_BUFFER_ARB, 2)",
                                    "glVertexAttribPointerARB(14, 4, GL_FLOAT, GL_FALSE, 0, offset 0)",
                                    "glBindBufferARB(GL_ARRAY_BUFFER_ARB, 1)",
                                    "glVertexAttribPointerARB(15, 4, GL_FLOAT, GL_FALSE, 0, offset 0)",
                                    "glBindBufferARB(GL_ARRAY_BUFFER_ARB, 0)",
                                    "glEnableVertexAttribArrayARB(14)",
                                    "glEnableVertexAttribArrayARB(15)"};
inline Calls const bonesOff{"glDisableVertexAttribArrayARB(14)", "glDisableVertexAttribArrayARB(15)"};

/// Has the arrays printed as "indices" and "weights".
inline void nameBoneArrays(RecordingGL& gl, SharedBoneWeights const& weights)
{
    gl.namePointer(getExtraData<FloatData<float>>(weights, "GLfloatsIndices")->values.data(), "indices");
    gl.namePointer(getExtraData<FloatData<float>>(weights, "GLfloatsWeights")->values.data(), "weights");
}

} // namespace RendererTesting
