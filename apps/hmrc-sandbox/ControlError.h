#pragma once

// What is wrong with a control request.

#include <stdexcept>

namespace Sandbox
{

/// A control request that cannot be done; the text tells its sender why.
class ControlError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace Sandbox
