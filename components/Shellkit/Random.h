#pragma once

// Random bytes, and random numbers for row ids.

#include <cstddef>

#include "Shellkit/Bytes.h"
#include "Shellkit/Export.h"

namespace Shellkit
{

/// `size` bytes that nobody can guess. Throws std::runtime_error when the system gives none.
SHELLKIT_API Bytes RandomBytes(std::size_t size);

} // namespace Shellkit

class SHELLKIT_API CRandomDataGen
{
public:
    /// 1 to 2147483647.
    long NewRandomPositive();
};

/// The process's generator. It holds no state of its own: numbers come from the system.
SHELLKIT_API extern CRandomDataGen g_RandomGenerator;
