#pragma once

// Identifiers that tie log lines together.

#include <string>

#include "Afx/Platform.h"
#include "Shellkit/Export.h"

namespace Shellkit
{

SHELLKIT_API GUID NewGuid();                         // random (version 4)
SHELLKIT_API std::string FormatGuid(const GUID& id); // 36 characters, upper case, no braces

} // namespace Shellkit

/// The identifier of one chain of events, such as one retrieval; a new one each.
class SHELLKIT_API CChainId
{
public:
    CChainId();
    void SetChainId(const GUID& id);
    const GUID& GetChainId() const noexcept { return m_id; }
    std::string GetChainIdString() const;

private:
    GUID m_id;
};

/// The identifier of this run of the program.
class SHELLKIT_API CApplicationSessionId
{
public:
    static std::string GetSessionId();
};
