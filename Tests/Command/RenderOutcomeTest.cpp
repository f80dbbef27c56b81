#include "Viewer/Commands/RenderOutcome.h"

#include "Viewer/CommandLine/UsageError.h"
#include "Viewer/Platform/OutputFile.h"

#include <gtest/gtest.h>

#include <new>

namespace {

template <typename Error>
std::string lineFor(Error const& error)
{
    sgview::RenderOutcome outcome;
    outcome.model = "models/duck.dae";
    outcome.error = std::make_exception_ptr(error);
    return errorLine(outcome);
}

TEST(RenderOutcome, ErrorsNameTheModelOrTheFileTheyAreAbout)
{
    EXPECT_EQ(lineFor(std::runtime_error("OpenGL error while drawing")),
              "models/duck.dae: OpenGL error while drawing");
    EXPECT_EQ(lineFor(std::bad_alloc()), "models/duck.dae: out of memory");
    EXPECT_EQ(lineFor(sgview::OutputError("duck.png: File too large")), "duck.png: File too large");
    EXPECT_EQ(lineFor(sgview::UsageError("--animation: models/duck.dae has no animation 'x'")),
              "--animation: models/duck.dae has no animation 'x'");
}

} // namespace
