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
    auto const safe = (squared > 1e-280) & (squared < 1e280);
    return (safe[0] & safe[1]) != 0;
}

bool isSupported()
{
    return true;
}

} // namespace

#include "OpenGLRenderer/SkinningKernelBody.h"

SkinningKernel const portableSkinningKernel{"portable", isSupported, skinToDoubles, skinToFloats};
