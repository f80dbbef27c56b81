#pragma once

#include "SceneGraph/SGExtraData.h"

/// On a node whose geometry changes every frame: keeps it off buffer objects.
class NoVBOTag : public SGExtraData {};
