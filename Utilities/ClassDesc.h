#pragma once

#include "Utilities/Field.h"

#include <utility>
#include <vector>

/// The fields of a class, in declaration order.
class ClassDesc : public smart_base {
public:
    explicit ClassDesc(std::vector<smart_ptr<Field>> fields) : fields_(std::move(fields)) {}

    [[nodiscard]] std::vector<smart_ptr<Field>> const& getFields() const { return fields_; }

private:
    std::vector<smart_ptr<Field>> fields_;
};
