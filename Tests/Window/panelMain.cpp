#include "Tests/Frame/DriverCheck.h"
#include "Viewer/Import/ImportWorker.h"

#include "Utilities/Log.h"

int main(int argc, char** argv)
{
    if (sgview::isImportWorker(argc, argv))
        return sgview::importWorkerMain(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    Log::getInstance().setEnabled("opengl", false);
    testing::AddGlobalTestEnvironment(new DriverCheck);
    return RUN_ALL_TESTS();
}
