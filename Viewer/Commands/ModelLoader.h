#pragma once

#include "Viewer/CommandLine/CommandLine.h"
#include "Viewer/Import/Model.h"

#include <functional>

namespace sgview {

/// \throws ImportError
[[nodiscard]] Model loadModel(ModelRequest const& request, Messages const& messages);

/// The creature of the demonstration scene.
/// \throws ImportError, AssetError
[[nodiscard]] Model loadCreature(Messages const& messages);

/// The animation that was asked for by its name, or else by its index; `none` where none was. A model without
/// any is drawn at rest, with a warning: one command then serves a whole folder of models.
/// \param warn  takes the warning, which names the file
/// \throws UsageError  naming the file and the animations there are
[[nodiscard]] Index findAnimation(Model const& model, ModelRequest const& request,
                                  std::function<void(std::string const&)> const& warn);
[[nodiscard]] Index findAnimation(Model const& model, ModelRequest const& request, Messages const& messages);

} // namespace sgview
