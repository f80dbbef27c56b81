#pragma once

#include "SceneGraph/SGNodeVisitor.h"

#include <string>

/// A pass's name for people: its class, or that of what a traverser walks for; several walked as one are
/// joined by " + ".
[[nodiscard]] std::string passName(SGNodeVisitor const& pass);
