#pragma once

#include "Viewer/Commands/ComparisonTable.h"
#include "Viewer/Platform/Lettering.h"

namespace sgview {

/// One picture of a whole comparison: for each technique a row, for each moment the technique's picture, the
/// plain one, and their difference made bright. Large frames are reduced; differences keep their brightest
/// pixels then.
class ContactSheet {
public:
    /// \param comparison  all but the results
    explicit ContactSheet(Comparison const& comparison);

    /// What a technique drew at one of the moments, and what the plain one did.
    void add(Technique technique, std::size_t moment, Picture const& picture, Picture const& plain);

    /// Letters what came of each technique.
    void conclude(std::vector<TechniqueResult> const& results);

    [[nodiscard]] Picture const& picture() const { return sheet_; }

private:
    void writeHead(Comparison const& comparison);
    [[nodiscard]] int columnLeft(std::size_t moment, int column) const;
    [[nodiscard]] int rowTop(Technique technique) const;

    int reduction_; ///< pixels of a frame that become one, a side
    PictureSize cell_;
    Lettering lettering_;
    Picture sheet_;
};

} // namespace sgview
