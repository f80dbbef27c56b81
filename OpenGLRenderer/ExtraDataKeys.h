#pragma once

#include "SceneGraph/SGExtraDataKey.h"

/// The keys under which passes hang their records. Every one starts with `prefix`, so that unloading finds
/// them all.
namespace ExtraDataKeys {

inline constexpr char const* prefix = "GL";

inline SGExtraDataKey const colorizerDatabase("GLColorizerDatabase");
inline SGExtraDataKey const floats("GLfloats");
inline SGExtraDataKey const floatsIndices("GLfloatsIndices");
inline SGExtraDataKey const floatsWeights("GLfloatsWeights");
inline SGExtraDataKey const noVBO("GLNoVBO");
inline SGExtraDataKey const skinnedSurface("GLSkinnedSurface");
inline SGExtraDataKey const skinningPlans("GLSkinningPlans");
inline SGExtraDataKey const texture("GLTexture");
inline SGExtraDataKey const triangleFlipperDatabase("GLTriangleFlipperDatabase");
inline SGExtraDataKey const unanimatedData("GLUnanimatedData");
inline SGExtraDataKey const uncolorizedTextureData("GLUncolorizedTextureData");
inline SGExtraDataKey const unflippedTriangleData("GLUnflippedTriangleData");
inline SGExtraDataKey const vbo("GLVBO");
inline SGExtraDataKey const vboBoneIndices("GLVBOBoneIndices");
inline SGExtraDataKey const vboBoneWeights("GLVBOBoneWeights");
inline SGExtraDataKey const vertexProgramData("GLVertexProgramData");
inline SGExtraDataKey const vertexShaderData("GLVertexShaderData");
inline SGExtraDataKey const viewMatrix("GLViewMatrix");

} // namespace ExtraDataKeys
