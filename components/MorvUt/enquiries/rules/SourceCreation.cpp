#include "MorvUt/enquiries/rules/SourceCreation.h"

#include <atomic>

namespace
{
std::atomic<bool> isSourceCreationEnabled{true};
}

void EnableTrackerSourceCreation(int enable) noexcept { isSourceCreationEnabled = enable != 0; }
bool IsTrackerSourceCreationEnabled() noexcept { return isSourceCreationEnabled; }
