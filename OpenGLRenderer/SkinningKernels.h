#pragma once

#include "OpenGLRenderer/SkinningKernel.h"

#include <vector>

/// All kernels that this processor runs, the slowest first.
[[nodiscard]] std::vector<SkinningKernel const*> supportedSkinningKernels();

/// The fastest of them.
[[nodiscard]] SkinningKernel const& bestSkinningKernel();
