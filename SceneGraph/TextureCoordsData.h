#pragma once

#include "Maths/Vector3.h"
#include "Utilities/smart_ptr.h"

#include <vector>

/// One set of texture coordinates: u and v in the first two components, the third unused. (0, 0) is the first
/// pixel of a picture's first row.
class TextureCoordsData : public smart_base {
public:
    TextureCoordsData() = default;
    ~TextureCoordsData() override;

    std::vector<Vector3> coordinates; ///< one a vertex, or one a corner of a quad
};
