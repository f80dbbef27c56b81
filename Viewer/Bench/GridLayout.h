#pragma once

#include "Maths/Vector3.h"

namespace sgview {

/// Places on a square grid in the plane z = 0, one unit apart, filled row by row and centred on the origin.
class GridLayout {
public:
    /// \param count  at least 1
    explicit GridLayout(int count);

    [[nodiscard]] Vector3 place(int index) const;

    /// How far in front of the plane a camera stands whose picture takes in 45 degrees: all of the grid is in
    /// view, with a margin for what stands out of the plane by half a unit.
    [[nodiscard]] double viewingDistance() const;

private:
    int side_; ///< places in a row
};

} // namespace sgview
