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
#include "OpenGLRenderer/VBOCreator.h"
#include "OpenGLRenderer/VBOGeometryVisitor.h"
#include "OpenGLRenderer/VertexProgramVisitor.h"
#include "OpenGLRenderer/VertexShaderVisitor.h"
#include "SceneGraph/SGCombinationVisitor.h"
#include "SceneGraph/SGTraverser.h"

namespace {

using Passes = std::vector<smart_ptr<SGNodeVisitor>>;

smart_ptr<SGNodeVisitor> walk(smart_ptr<SGNodeVisitor> visitor)
{
    return make_smart<SGTraverser>(std::move(visitor));
}

Passes drawingPasses(Capabilities const& caps)
{
    Passes passes;
    passes.push_back(make_smart<CameraLightsTransformVisitor>());
    passes.push_back(make_smart<AppearanceSetter>());
    if (caps.vertexProgram)
        passes.push_back(make_smart<VertexProgramVisitor>(false));
    else if (caps.vertexShader)
        passes.push_back(make_smart<VertexShaderVisitor>());
    if (caps.vbo)
        passes.push_back(make_smart<VBOGeometryVisitor>());
    else
        passes.push_back(make_smart<GeometryVisitor>());
    return passes;
}

} // namespace

Passes Strategist::computeStrategy(Capabilities const& caps)
{
    bool const useProgramSkinning = caps.vertexProgram || caps.vertexShader;

    Passes strategy;
    strategy.push_back(walk(make_smart<ManualColorizer>()));
    strategy.push_back(walk(make_smart<ManualTriangleFlipper>(useProgramSkinning)));
    if (!useProgramSkinning)
        strategy.push_back(walk(make_smart<ManualAnimator>()));
    strategy.push_back(walk(make_smart<ConverterToFloats>(useProgramSkinning)));
    strategy.push_back(make_smart<GeneralSetupVisitor>());
    if (caps.vbo)
        strategy.push_back(walk(make_smart<VBOCreator>(useProgramSkinning)));
    strategy.push_back(make_smart<SharedTextureTraverser>());
    strategy.push_back(walk(make_smart<SGCombinationVisitor>(drawingPasses(caps))));
    if (!useProgramSkinning)
        strategy.push_back(walk(make_smart<ManualUnAnimator>()));
    strategy.push_back(walk(make_smart<ManualTriangleUnFlipper>()));
    strategy.push_back(walk(make_smart<ManualUnColorizer>()));
    return strategy;
}
