#pragma once

#include "Maths/BoneTransform.h"
#include "Utilities/smart_ptr.h"

#include <vector>

/// A pose: what each bone does to the rest position, by bone index. Shared by all surfaces of one skeleton.
class BoneTransformVector : public smart_base {
public:
    BoneTransformVector() = default;
    explicit BoneTransformVector(std::vector<BoneTransform> bones) : transforms(std::move(bones)) {}
    BoneTransformVector(BoneTransformVector const&) = default;
    BoneTransformVector& operator=(BoneTransformVector const&) = default;
    ~BoneTransformVector() override;

    std::vector<BoneTransform> transforms;
};
