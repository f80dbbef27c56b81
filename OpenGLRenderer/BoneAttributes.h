#pragma once

#include "SceneGraph/SGSharedData.h"

#include <epoxy/gl.h>

/// How a skinned vertex's four influences reach the card: as two generic vertex attributes of four floats
/// each.
namespace BoneAttributes {

inline constexpr GLuint indices = 14;
inline constexpr GLuint weights = 15;

/// Points both attributes at the buffers that VBOCreator makes or, where one is missing, at the arrays that
/// ConverterToFloats makes, and enables them. No array buffer is bound afterwards.
void enable(SharedBoneWeights const& shared);

void disable();

} // namespace BoneAttributes
