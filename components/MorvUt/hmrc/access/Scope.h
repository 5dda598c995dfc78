#pragma once

// What the application asks HMRC for authority to do.

#include <string>

#include "HmrcApi/Host.h"
#include "MorvUt/Export.h"
#include "MorvUt/hmrc/access/PracticeOptions.h"

namespace HmrcApi
{

/// The OAuth scopes, separated by single blanks: marriage allowance, national insurance, then the PAYE interface's or
/// the four individual interfaces' (the practice's option nPAYEInterface), then "hello" when the registry value
/// "DbgHMRCEnableHelloScope" is set.
class MORVUT_API CScope : public IScope
{
public:
    CScope(); // reads the practice's options
    explicit CScope(const PracticeOptions& options);
    ~CScope() override;
    std::string GetScope() override { return m_scope; }
    void SetScope(const std::string& scope) override { m_scope = scope; }

private:
    void AppendScope(const char* scope);

    std::string m_scope;
};

} // namespace HmrcApi
