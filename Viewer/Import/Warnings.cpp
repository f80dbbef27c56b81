#include "Viewer/Import/Warnings.h"

#include "Viewer/Import/ImportError.h"

#include <utility>

namespace sgview {

namespace {

constexpr std::size_t mostLines = 200;

} // namespace

void Warnings::add(std::string_view text)
{
    if (lines_.size() > mostLines)
        return;
    std::string line = lines_.size() == mostLines ? "further warnings are left out" : oneLine(text);
    if (seen_.insert(line).second)
        lines_.push_back(std::move(line));
}

std::vector<std::string> Warnings::take()
{
    seen_.clear();
    return std::exchange(lines_, {});
}

} // namespace sgview
