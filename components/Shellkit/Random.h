#pragma once

// Random numbers for row ids.

#include "Shellkit/Export.h"

class SHELLKIT_API CRandomDataGen
{
public:
    /// 1 to 2147483647.
    long NewRandomPositive();
};

/// The process's generator. It holds no state of its own: numbers come from the system.
SHELLKIT_API extern CRandomDataGen g_RandomGenerator;
