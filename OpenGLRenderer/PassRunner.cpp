#include "OpenGLRenderer/PassRunner.h"

#include "OpenGLRenderer/GeneralSetupVisitor.h"
#include "OpenGLRenderer/SurveyedPass.h"
#include "SceneGraph/SGRootNode.h"
#include "SceneGraph/SGTraverser.h"

namespace {

SurveyedPass* surveyedPassIn(SGNodeVisitor& pass)
{
    if (auto* const traverser = dynamic_cast<SGTraverser*>(&pass))
        return dynamic_cast<SurveyedPass*>(traverser->getVisitor().get());
    return dynamic_cast<SurveyedPass*>(&pass);
}

} // namespace

void PassRunner::run(SGNodeVisitor& pass)
{
    if (SurveyedPass* const surveyed = surveyedPassIn(pass)) {
        if (surveyed->isUndo())
            undo(*surveyed, pass);
        else
            carryOut(*surveyed);
        return;
    }
    walk(pass);
    // It sees the root alone and changes nothing of the scene; of any other pass nothing is known.
    if (!dynamic_cast<GeneralSetupVisitor*>(&pass))
        upToDate_ = false;
}

void PassRunner::putBack()
{
    for (smart_ptr<SGNodeVisitor> const& pass : strategy_)
        if (SurveyedPass* const surveyed = surveyedPassIn(*pass); surveyed && surveyed->isUndo())
            undo(*surveyed, *pass);
}

void PassRunner::carryOut(SurveyedPass& surveyed)
{
    if (!upToDate_ || !survey_.isOfTheSameTree())
        survey();
    surveyed.carryOut(root_, survey_.findings());
}

void PassRunner::undo(SurveyedPass& surveyed, SGNodeVisitor& pass)
{
    if (surveyed_ && survey_.isOfTheSameTree() && surveyed.hasMoreToUndo())
        surveyed.carryOut(root_, survey_.findings());
    if (surveyed.hasMoreToUndo())
        walk(pass);
}

void PassRunner::survey()
{
    SceneSurvey::Conditions conditions;
    for (smart_ptr<SGNodeVisitor> const& pass : strategy_)
        if (SurveyedPass const* const surveyed = surveyedPassIn(*pass))
            surveyed->addConditions(conditions);
    survey_.take(root_, conditions);
    surveyed_ = true;
    upToDate_ = true;
}

void PassRunner::walk(SGNodeVisitor& pass)
{
    root_.acceptEnter(&pass);
    root_.acceptLeave(&pass);
}
