#pragma once

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace sgview {

/// Collects what an import leaves out: one line each, no line twice, and not endlessly many.
class Warnings {
public:
    void add(std::string_view text);

    /// All lines in the order they came; the collection is empty afterwards.
    [[nodiscard]] std::vector<std::string> take();

private:
    std::vector<std::string> lines_;
    std::unordered_set<std::string> seen_;
};

} // namespace sgview
