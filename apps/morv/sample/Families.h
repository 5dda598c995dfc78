#pragma once

// Children of the sample's clients.

#include <string>

#include "Returns.h"

namespace Morv::Sample
{

/// A child of up to two clients (`second` may be null) and so many parents who are no clients, on the clients' returns.
void AddChild(const std::string& name, int born, const Individual& first, const Individual* second, int otherParents);

} // namespace Morv::Sample
