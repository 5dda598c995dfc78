#include "MorvUt/hmrc/access/Scope.h"

#include "Shellkit/Registry.h"

namespace HmrcApi
{

CScope::CScope() : CScope(ReadPracticeOptions()) {}

CScope::CScope(const PracticeOptions& options)
{
    AppendScope("read:marriage-allowance");
    AppendScope("read:national-insurance");
    if (options.usesPayeInterface) {
        AppendScope("read:individual-paye");
    } else {
        AppendScope("read:individual-benefits");
        AppendScope("read:individual-employment");
        AppendScope("read:individual-income");
        AppendScope("read:individual-tax");
    }
    if (CRegistry().GetBool("DbgHMRCEnableHelloScope", false))
        AppendScope("hello");
}

CScope::~CScope() = default;

void CScope::AppendScope(const char* scope)
{
    if (!m_scope.empty())
        m_scope += ' ';
    m_scope += scope;
}

} // namespace HmrcApi
