#include "Tests/Frame/DriverCheck.h"
#include "Tests/Frame/FrameRenderer.h"
#include "Tests/Frame/TechniqueScenes.h"

#include "Utilities/Log.h"

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    Log::getInstance().setEnabled("opengl", false);
    testing::AddGlobalTestEnvironment(new DriverCheck);
    testing::AddGlobalTestEnvironment(new FrameRenderer(TechniqueStage::side));
    return RUN_ALL_TESTS();
}
