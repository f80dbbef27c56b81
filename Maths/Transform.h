#pragma once

#include "Maths/Matrix.h"
#include "Maths/Matrix3.h"
#include "Maths/Vector3.h"

/// A similarity: scale first, then rotation, then translation. A negative scale mirrors through the origin.
class Transform {
public:
    /// The identity.
    Transform() = default;

    Transform(Matrix3 const& rotation, Vector3 const& translation, double scale)
        : rotation_(rotation), translation_(translation), scale_(scale)
    {
    }

    /// A rotation about an axis through the origin.
    /// \param axis   any length but 0, which gives the identity
    /// \param angle  radians, counter-clockwise when the axis points at the viewer
    Transform(Vector3 const& axis, double angle);

    [[nodiscard]] Matrix3 const& getRotation() const { return rotation_; }
    [[nodiscard]] Vector3 const& getTranslation() const { return translation_; }
    [[nodiscard]] double getScale() const { return scale_; }

    /// The same map as a matrix: scale * rotation in the upper left, translation in the last column.
    [[nodiscard]] Matrix getMatrix() const;

    bool operator==(Transform const&) const = default;

private:
    Matrix3 rotation_;
    Vector3 translation_;
    double scale_ = 1.0;
};

/// The product that applies `b` first.
[[nodiscard]] Transform operator*(Transform const& a, Transform const& b);

/// Undoes `a`; expects a rotation that is orthonormal and a scale that is not 0.
[[nodiscard]] Transform inverse(Transform const& a);
