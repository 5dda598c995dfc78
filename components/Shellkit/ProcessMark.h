#pragma once

// Tells whether who left something behind on this computer is still running.

#include <string>

#include "Shellkit/Export.h"

namespace Shellkit
{

/// A named mark of this computer, seen by its other programs and users. It ends with the process, however that ends.
class SHELLKIT_API ProcessMark
{
public:
    ProcessMark() noexcept = default;
    ~ProcessMark();
    ProcessMark(const ProcessMark&) = delete;
    ProcessMark& operator=(const ProcessMark&) = delete;

    /// Takes the mark; a mark that this object has is cleared first. False when it is set already, by whomever, or
    /// cannot be set. `name`: at most 100 bytes.
    bool Set(const std::string& name) noexcept;
    void Clear() noexcept;
    /// False only when nobody has the mark for certain.
    static bool IsSet(const std::string& name) noexcept;

private:
    long long m_handle = -1;
};

} // namespace Shellkit
