#pragma once

#include "SceneGraph/SGNode.h"

namespace sgview {

/// What stands around the creatures in the demonstration scene. Each is added below the node given.

/// A lit floor of two texture layers, ripples of light on sand.
void addFloor(smart_ptr<SGNode> const& lit);

/// A plain, a stippled and a closed curve.
void addCurves(smart_ptr<SGNode> const& parent);

/// An unlit, blended quad.
void addPane(smart_ptr<SGNode> const& parent);

/// A panel that stands behind everything and is drawn in front, through a Z-transform.
void addPanel(smart_ptr<SGNode> const& parent);

} // namespace sgview
