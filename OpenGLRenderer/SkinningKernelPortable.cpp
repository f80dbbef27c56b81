namespace {

// As many as any processor's vectors hold.
constexpr int lanes = 2;
using Lanes [[gnu::vector_size(sizeof(double) * lanes)]] = double;

[[gnu::always_inline]] inline Lanes squareRoot(Lanes value)
{
    return Lanes{__builtin_sqrt(value[0]), __builtin_sqrt(value[1])};
}

[[gnu::always_inline]] inline bool allSafe(Lanes squared)
{
    return squared[0] > 1e-280 && squared[0] < 1e280 && squared[1] > 1e-280 && squared[1] < 1e280;
}

bool isSupported()
{
    return true;
}

} // namespace

#include "OpenGLRenderer/SkinningKernelBody.h"

SkinningKernel const portableSkinningKernel{"portable", isSupported, skinToDoubles, skinToFloats};
