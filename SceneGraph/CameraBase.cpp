#include "SceneGraph/CameraBase.h"

CameraBase::~CameraBase() = default;
