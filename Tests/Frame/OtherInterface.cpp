#include "SceneGraph/SGRendererInterface.h"

#include <cstdlib>

// A module from another time: none of its code may run, and what it needs of the engine is not there.
#undef SG_RENDERER_INTERFACE_VERSION
#define SG_RENDERER_INTERFACE_VERSION "2000"
SG_RENDERER_MODULE;

void ofAnotherEngine();

namespace {

struct Initialiser {
    Initialiser()
    {
        ::setenv("SG_OTHER_INTERFACE_RAN", "1", 1);
        ofAnotherEngine();
    }
};
Initialiser const initialiser;

} // namespace
