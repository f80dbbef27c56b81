#include "SceneGraph/TextureCoordsData.h"

TextureCoordsData::~TextureCoordsData() = default;
