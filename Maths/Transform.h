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
        : scale_(scale), translation_(translation), rotation_(rotation)
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
    double scale_ = 1.0; // first: walks that look at nothing else of a node find it near its head
    Vector3 translation_;
    Matrix3 rotation_;
};

/// The product that applies `b` first.
[[nodiscard]] Transform operator*(Transform const& a, Transform const& b);

/// The product with b's matrix, in half the steps.
[[nodiscard]] Matrix operator*(Matrix const& a, Transform const& b);

/// Undoes `a`; expects a rotation that is orthonormal and a scale that is not 0.
[[nodiscard]] Transform inverse(Transform const& a);
