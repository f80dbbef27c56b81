#pragma once

#include "Viewer/Window/ComparedPictures.h"
#include "Viewer/Window/PanelSection.h"

#include <filesystem>
#include <optional>

namespace sgview {

struct CardKnowledge;
class CardMeasurement;
struct SupervisedDiagnosis;

/// What the graphics diagnostic found out about the card, whether it has to run, and a way to run it.
class DiagnosticSection : public PanelSection {
public:
    [[nodiscard]] char const* title() const override { return "Graphics diagnostic"; }
    [[nodiscard]] bool isOpenAtFirst() const override { return false; }
    [[nodiscard]] bool isAskedFor(Session& session) override;
    void build(Session& session) override;

private:
    void buildButtons(Session& session);
    void buildResult(Session& session, SupervisedDiagnosis const& run);
    void followResult(CardMeasurement const& measurement);
    void writeReport(Session& session, SupervisedDiagnosis const& run);

    int generation_ = 0; ///< of the result that `pictures_` are of
    std::optional<ComparedPictures> pictures_;
    std::filesystem::path report_; ///< that was written of it, or empty
};

} // namespace sgview
