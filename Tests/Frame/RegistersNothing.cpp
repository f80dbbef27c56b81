#include "SceneGraph/SGRendererInterface.h"

// A module of the right version that makes no renderer.
SG_RENDERER_MODULE;
