#pragma once

#include "SceneGraph/BoneTransformVector.h"
#include "SceneGraph/BoneWeightsData.h"
#include "SceneGraph/GeometryData.h"
#include "SceneGraph/SGSharedObject.h"
#include "SceneGraph/SurfaceGeometryData.h"
#include "SceneGraph/TextureCoordsData.h"
#include "Utilities/Image_base.h"
#include "Utilities/smart_ptr.h"

#include <utility>

/// Wraps one value so that many nodes share it, and caches hang on it.
///
/// What renderers derive from a value is made once and kept: a wrapper whose data has changed is not looked
/// at again. New data goes into a new wrapper. Bone transforms are the exception: they are read every frame.
template <typename T>
class SGSharedData : public SGSharedObject {
public:
    SGSharedData() = default;
    explicit SGSharedData(T value) : value_(std::move(value)) {}

    [[nodiscard]] T const& get() const { return value_; }
    [[nodiscard]] T& edit() { return value_; }

private:
    T value_{};
};

using SharedBoneTransforms = SGSharedData<BoneTransformVector>;
using SharedBoneWeights = SGSharedData<smart_ptr<BoneWeightsData const>>;
using SharedGeometry = SGSharedData<smart_ptr<GeometryData const>>;
using SharedImage = SGSharedData<smart_ptr<Image_base>>;
using SharedSurfaceGeometry = SGSharedData<smart_ptr<SurfaceGeometryData const>>;
using SharedTextureCoords = SGSharedData<smart_ptr<TextureCoordsData const>>;

extern template class SGSharedData<BoneTransformVector>;
extern template class SGSharedData<smart_ptr<BoneWeightsData const>>;
extern template class SGSharedData<smart_ptr<GeometryData const>>;
extern template class SGSharedData<smart_ptr<Image_base>>;
extern template class SGSharedData<smart_ptr<SurfaceGeometryData const>>;
extern template class SGSharedData<smart_ptr<TextureCoordsData const>>;
