#pragma once

#include "SceneGraph/SGObject.h"

/// An object whose identity matters: what is derived from it is cached on it.
class SGSharedObject : public SGObject {};
