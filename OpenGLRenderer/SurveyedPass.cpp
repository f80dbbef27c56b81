#include "OpenGLRenderer/SurveyedPass.h"

#include "SceneGraph/SGGeometryNode.h"
#include "SceneGraph/SGRootNode.h"

void SurveyedPass::show(SGNodeVisitor& pass, SGRootNode& root, Findings findings)
{
    root.acceptEnter(&pass);
    for (SceneSurvey::Finding const& finding : findings) {
        finding.node->acceptEnter(&pass);
        finding.node->acceptLeave(&pass);
    }
    root.acceptLeave(&pass);
}
