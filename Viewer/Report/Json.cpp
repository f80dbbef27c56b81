#include "Viewer/Report/Json.h"

#include <ostream>

namespace sgview {

namespace {

void write(std::ostream& stream, Json const& json, int indentation)
{
    stream << json.dump(indentation, ' ', true, Json::error_handler_t::replace) << '\n';
}

} // namespace

void writeLines(std::ostream& stream, Json const& json)
{
    write(stream, json, 2);
}

void writeLine(std::ostream& stream, Json const& json)
{
    write(stream, json, -1);
}

} // namespace sgview
