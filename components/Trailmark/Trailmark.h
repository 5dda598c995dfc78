#pragma once

// The audit log, whole.

#include "Trailmark/MTDAudit.h"
