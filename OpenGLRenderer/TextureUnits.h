#pragma once

#include "SceneGraph/SGGeometryNode.h"

#include <epoxy/gl.h>

/// How many of a node's texture layers are drawn: those for which the renderer has a texture unit.
[[nodiscard]] int drawnLayerCount(SGGeometryNode const& node);

/// Whether texture units have to be selected: whether the renderer uses more than one.
[[nodiscard]] bool usesMultitexturing();

/// The enumerant of texture unit `unit`, counted from 0.
[[nodiscard]] GLenum textureUnitName(int unit);
