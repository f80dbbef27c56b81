#include <immintrin.h>

namespace {

constexpr int lanes = 8;
using Lanes = __m512d;

[[gnu::always_inline]] inline Lanes squareRoot(Lanes value)
{
    return _mm512_maskz_sqrt_pd(0xFF, value); // the plain one starts, to GCC, from something uninitialised
}

[[gnu::always_inline]] inline bool allSafe(Lanes squared)
{
    __mmask8 const above = _mm512_cmp_pd_mask(squared, _mm512_set1_pd(1e-280), _CMP_GT_OQ);
    return _mm512_mask_cmp_pd_mask(above, squared, _mm512_set1_pd(1e280), _CMP_LT_OQ) == 0xFF;
}

bool isSupported()
{
    return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512vl");
}

} // namespace

#include "OpenGLRenderer/SkinningKernelBody.h"

SkinningKernel const avx512SkinningKernel{"AVX-512", isSupported, skinToDoubles, skinToFloats};
