#include "Tests/Import/Misbehaviour.h"
#include "Viewer/Import/ImportWorker.h"

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    if (sgview::isImportWorker(argc, argv))
        return sgview::importWorkerMain(argc, argv, sgview::importOrMisbehave);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
