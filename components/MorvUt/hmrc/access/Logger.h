#pragma once

// The log of what passes between the practice and HMRC.

#include <optional>
#include <string>

#include "HmrcApi/Host.h"
#include "MorvUt/Export.h"
#include "Shellkit/Identity.h"

namespace HmrcApi
{

/// Writes log lines to the practice's database (procedure MTDLogWrite), and carries the id that ties the lines of one
/// retrieval together. A line that cannot be written is reported on standard error; it never ends a retrieval.
class MORVUT_API Logger : public IChainLogger
{
public:
    Logger() = default;
    ~Logger() override;
    void SetChainId(const GUID& id) override { m_chain.SetChainId(id); }
    const GUID& GetChainId() override { return m_chain.GetChainId(); }
    std::string GetChainIdString() override { return m_chain.GetChainIdString(); }
    /// The practice's debug-logging level is greater than 0. Read each time, unless SetDebugLevel told it.
    bool IsDebugLogging() override;
    void SetDebugLevel(int level) noexcept { m_debugLevel = level; }
    /// Without a current connection, opens one of its own for this line (registry value "DataSource").
    void Log(const std::string& a1, const std::string& a2, const std::string& a3, const std::string& a4,
             const std::string& a5) override;

private:
    CChainId m_chain;
    std::optional<int> m_debugLevel;
};

} // namespace HmrcApi
