#pragma once

// Whether enquiry work may create sources in the work tracker.

#include "MorvUt/Export.h"

/// Switches it on (at first) or off (0) for the whole process. Off, CarryForwardClientEnquiresAndTrackerSources does
/// nothing.
MORVUT_API void EnableTrackerSourceCreation(int enable) noexcept;
MORVUT_API bool IsTrackerSourceCreationEnabled() noexcept;
