#include <immintrin.h>

namespace {

constexpr int lanes = 4;
using Lanes = __m256d;

[[gnu::always_inline]] inline Lanes squareRoot(Lanes value)
{
    return _mm256_sqrt_pd(value);
}

[[gnu::always_inline]] inline bool allSafe(Lanes squared)
{
    Lanes const above = _mm256_cmp_pd(squared, _mm256_set1_pd(1e-280), _CMP_GT_OQ);
    Lanes const below = _mm256_cmp_pd(squared, _mm256_set1_pd(1e280), _CMP_LT_OQ);
    return _mm256_movemask_pd(_mm256_and_pd(above, below)) == 0xF;
}

bool isSupported()
{
    return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
}

} // namespace

#include "OpenGLRenderer/SkinningKernelBody.h"

SkinningKernel const avx2SkinningKernel{"AVX2", isSupported, skinToDoubles, skinToFloats};
