#pragma once

#include "Maths/Matrix.h"
#include "SceneGraph/SGExtraData.h"

/// The model-view matrix in force where a skinned surface is drawn; on the surface's node while the walk is
/// inside it.
class ViewMatrixData : public SGExtraData {
public:
    explicit ViewMatrixData(Matrix const& matrix_) : matrix(matrix_) {}

    Matrix matrix;
};
