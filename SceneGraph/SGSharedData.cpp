#include "SceneGraph/SGSharedData.h"

// Here alone, so that an object made by a module stays whole when the module goes.
template class SGSharedData<BoneTransformVector>;
template class SGSharedData<smart_ptr<BoneWeightsData const>>;
template class SGSharedData<smart_ptr<GeometryData const>>;
template class SGSharedData<smart_ptr<Image_base>>;
template class SGSharedData<smart_ptr<SurfaceGeometryData const>>;
template class SGSharedData<smart_ptr<TextureCoordsData const>>;
