#include "SceneGraph/BoneTransformVector.h"

BoneTransformVector::~BoneTransformVector() = default;
