#pragma once

#include "base/result.h"

#include <stdexcept>
#include <utility>

namespace tonquay::tags {

/// What the writing of a tag raises: the failure of the step that ended it.
class TagError final : public std::runtime_error {
public:
    explicit TagError(base::Failure failure) : std::runtime_error(base::describe(failure)), failure_(std::move(failure))
    {}

    const base::Failure& failure() const { return failure_; }

private:
    base::Failure failure_;
};

}
