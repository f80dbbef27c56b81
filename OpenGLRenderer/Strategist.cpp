#include "OpenGLRenderer/Strategist.h"

#include "OpenGLRenderer/AppearanceSetter.h"
#include "OpenGLRenderer/CameraLightsTransformVisitor.h"
#include "OpenGLRenderer/ConverterToFloats.h"
#include "OpenGLRenderer/GeneralSetupVisitor.h"
#include "OpenGLRenderer/GeometryVisitor.h"
#include "OpenGLRenderer/ManualAnimator.h"
#include "OpenGLRenderer/ManualColorizer.h"
#include "OpenGLRenderer/ManualTriangleFlipper.h"
#include "OpenGLRenderer/SharedTextureTraverser.h"
#include "SceneGraph/SGCombinationVisitor.h"
#include "SceneGraph/SGTraverser.h"

namespace {

using Passes = std::vector<smart_ptr<SGNodeVisitor>>;

smart_ptr<SGNodeVisitor> walk(smart_ptr<SGNodeVisitor> visitor)
{
    return make_smart<SGTraverser>(std::move(visitor));
}

Passes drawingPasses()
{
    Passes passes;
    passes.push_back(make_smart<CameraLightsTransformVisitor>());
    passes.push_back(make_smart<AppearanceSetter>());
    passes.push_back(make_smart<GeometryVisitor>());
    return passes;
}

} // namespace

Passes Strategist::computeStrategy(Capabilities const&)
{
    // Skinning and drawing happen on the processor's side whatever the card can do: no pass yet does either
    // on the card, and a surface must be skinned by one of them.
    bool const useProgramSkinning = false;

    Passes strategy;
    strategy.push_back(walk(make_smart<ManualColorizer>()));
    strategy.push_back(walk(make_smart<ManualTriangleFlipper>(useProgramSkinning)));
    strategy.push_back(walk(make_smart<ManualAnimator>()));
    strategy.push_back(walk(make_smart<ConverterToFloats>(useProgramSkinning)));
    strategy.push_back(make_smart<GeneralSetupVisitor>());
    strategy.push_back(make_smart<SharedTextureTraverser>());
    strategy.push_back(walk(make_smart<SGCombinationVisitor>(drawingPasses())));
    strategy.push_back(walk(make_smart<ManualUnAnimator>()));
    strategy.push_back(walk(make_smart<ManualTriangleUnFlipper>()));
    strategy.push_back(walk(make_smart<ManualUnColorizer>()));
    return strategy;
}
