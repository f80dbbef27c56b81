#include "Tests/Frame/DriverCheck.h"

#include "Viewer/Platform/HeadlessContext.h"
#include "Viewer/Platform/OffscreenRenderer.h"

#include <cstdlib>
#include <iostream>

namespace {

/// What keeps a driver from being the one that draws; empty if nothing does.
std::string obstacleTo(std::string const& driver)
{
    try {
        sgview::HeadlessContext const context({1, 1});
        std::string const found = sgview::OffscreenRenderer::driver();
        return found.starts_with(driver) ? "" : found + " draws instead";
    } catch (sgview::ContextError const& error) {
        return error.what();
    }
}

} // namespace

void DriverCheck::SetUp()
{
    char const* const driver = std::getenv("GALLIUM_DRIVER");
    if (!driver)
        return;
    std::string const obstacle = obstacleTo(driver);
    if (obstacle.empty())
        return;
    // GoogleTest calls a program passed that is skipped as a whole; this mark is what CTest goes by.
    std::cout << "[  SKIPPED ] every test" << std::endl;
    GTEST_SKIP() << "the driver " << driver << " is not to be had: " << obstacle;
}
