#pragma once

#include <string>

/// The keys under which passes hang their records. Every one starts with `prefix`, so that unloading finds
/// them all.
namespace ExtraDataKeys {

inline constexpr char const* prefix = "GL";

inline std::string const colorizerDatabase = "GLColorizerDatabase";
inline std::string const floats = "GLfloats";
inline std::string const floatsIndices = "GLfloatsIndices";
inline std::string const floatsWeights = "GLfloatsWeights";
inline std::string const noVBO = "GLNoVBO";
inline std::string const texture = "GLTexture";
inline std::string const triangleFlipperDatabase = "GLTriangleFlipperDatabase";
inline std::string const unanimatedData = "GLUnanimatedData";
inline std::string const uncolorizedTextureData = "GLUncolorizedTextureData";
inline std::string const unflippedTriangleData = "GLUnflippedTriangleData";
inline std::string const vbo = "GLVBO";
inline std::string const vboBoneIndices = "GLVBOBoneIndices";
inline std::string const vboBoneWeights = "GLVBOBoneWeights";
inline std::string const vertexProgramData = "GLVertexProgramData";
inline std::string const vertexShaderData = "GLVertexShaderData";
inline std::string const viewMatrix = "GLViewMatrix";

} // namespace ExtraDataKeys
