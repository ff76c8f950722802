#include "base/result.h"

namespace tonquay::base {

std::string describe(const Failure& failure)
{
    return failure.where.empty() ? failure.text : failure.where + ": " + failure.text;
}

}
