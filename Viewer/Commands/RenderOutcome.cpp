#include "Viewer/Commands/RenderOutcome.h"

#include "Viewer/CommandLine/UsageError.h"
#include "Viewer/Import/ImportError.h"
#include "Viewer/Platform/OutputFile.h"
#include "Viewer/Report/Json.h"

#include <cmath>
#include <new>
#include <ostream>

namespace sgview {

namespace {

constexpr char const* otherKind = "drawing";

std::string kindOf(std::exception_ptr const& error)
{
    try {
        std::rethrow_exception(error);
    } catch (ImportError const& import) {
        return std::string(nameOf(import.failure()));
    } catch (OutputError const&) {
        return "output";
    } catch (UsageError const&) {
        return "usage";
    } catch (...) {
        return otherKind;
    }
}

} // namespace

std::string messageOf(std::exception_ptr const& error)
{
    try {
        std::rethrow_exception(error);
    } catch (std::bad_alloc const&) {
        return "out of memory";
    } catch (std::exception const& exception) {
        return oneLine(exception.what());
    }
}

std::string errorLine(RenderOutcome const& outcome)
{
    std::string const message = messageOf(outcome.error);
    return kindOf(outcome.error) == otherKind ? outcome.model.string() + ": " + message : message;
}

void writeJsonLine(std::ostream& stream, RenderOutcome const& outcome)
{
    Json json;
    json["file"] = outcome.model.string();
    json["outcome"] = outcome.error ? "failed" : "done";
    json["seconds"] = std::round(1000.0 * outcome.seconds) / 1000.0;
    json["technique"] = outcome.technique ? Json(nameOf(*outcome.technique)) : Json();
    json["pictures"] = Json::array();
    for (std::filesystem::path const& picture : outcome.pictures)
        json["pictures"].push_back(picture.string());
    json["warnings"] = outcome.warnings;
    if (outcome.error)
        json["error"] = {{"kind", kindOf(outcome.error)}, {"message", messageOf(outcome.error)}};
    writeLine(stream, json);
}

} // namespace sgview
