#include "OpenGLRenderer/SkinningKernels.h"

#include "Maths/UVector3.h"

std::vector<SkinningKernel const*> supportedSkinningKernels()
{
    std::vector<SkinningKernel const*> kernels;
    for (SkinningKernel const* const kernel : {
             &portableSkinningKernel,
#ifdef SG_X86_KERNELS
             &avx2SkinningKernel,
             &avx512SkinningKernel,
#endif
         })
        if (kernel->isSupported())
            kernels.push_back(kernel);
    return kernels;
}

SkinningKernel const& bestSkinningKernel()
{
    static SkinningKernel const& best = *supportedSkinningKernels().back();
    return best;
}

void normaliseExtreme(double* x, double* y, double* z)
{
    UVector3 const unit(*x, *y, *z);
    *x = unit.x;
    *y = unit.y;
    *z = unit.z;
}
