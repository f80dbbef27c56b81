#pragma once

#include <string>

namespace sgview {

/// A name and a figure, with Dear ImGui, and a bar of the figure's length beneath.
/// \param part  of the longest bar, 0 to 1
void addLabelledBar(std::string const& name, std::string const& figure, double part);

} // namespace sgview
