#pragma once

#include "Maths/Matrix.h"
#include "Maths/Rect.h"
#include "Utilities/smart_ptr.h"

/// What a camera node gives the renderer: finished matrices, and the part of the drawable to draw into.
class CameraBase : public smart_base {
public:
    CameraBase() = default;
    CameraBase(Matrix const& view_, Matrix const& projection_, quarl::Rect<int> const& viewport_)
        : view(view_), projection(projection_), viewport(viewport_)
    {
    }
    ~CameraBase() override;

    Matrix view;                 ///< world to eye; the eye looks down -z
    Matrix projection;           ///< eye to clip space
    quarl::Rect<int> viewport{}; ///< pixels, from the lower left corner
};
