#include "MorvUt/hmrc/access/GatewayState.h"

#include <iterator>
#include <sstream>

#include "Afx/time/Clock.h"
#include "Afx/time/FormatTime.h"
#include "Cellar/BufferedRowList.h"
#include "HmrcApi/Host.h"
#include "Quarry/Session.h"

namespace HmrcApi
{
namespace
{

constexpr int kGrantMonths = 18;
constexpr std::int64_t kDay = 24 * 60 * 60 * std::int64_t{1000}, kWarnFrom = 60 * kDay; // milliseconds

constexpr char kSelect[] = "SELECT strGatewayID, nAuthorisedStatus, strService, strScope, nExpiresIn, dtAuthenticated, "
                           "dtGranted FROM MTDAuthorisation ";

constexpr struct
{
    const char* scope;
    const char* words;
} kScopes[] = {
    {"read:individual-paye", "PAYE"},
    {"read:individual-employment", "employment"},
    {"read:individual-benefits", "benefits"},
    {"read:individual-income", "income"},
    {"read:individual-tax", "tax"},
    {"read:national-insurance", "National Insurance"},
    {"read:marriage-allowance", "Marriage Allowance"},
};

bool IsValid(const COleDateTime& moment) { return moment.GetStatus() == COleDateTime::valid; }

COleDateTime AddSeconds(const COleDateTime& moment, std::int64_t seconds)
{
    if (!IsValid(moment))
        return COleDateTime::Null();
    return COleDateTime(Afx::FromUnixMilliseconds(moment.ToMilliseconds() + seconds * 1000));
}

GatewayState Read(const Cellar::CBufferedRowList& row)
{
    GatewayState state;
    state.gateway = row.GetText("strGatewayID").Str();
    state.isRegistered = true;
    state.isAuthorised = row.GetShort("nAuthorisedStatus") == IAuthorisationStore::Authorised;
    if (state.isAuthorised) {
        state.service = row.GetText("strService").Str();
        state.scope = row.GetText("strScope").Str();
        state.expires = AddSeconds(row.GetDateTime("dtAuthenticated"), row.GetLong("nExpiresIn"));
        state.grantEnds = GrantEnd(row.GetDateTime("dtGranted"));
    }
    return state;
}

} // namespace

CString GatewayState::Warning(const COleDateTime& now) const
{
    if (!IsValid(grantEnds))
        return {};
    const std::int64_t left = grantEnds.ToMilliseconds() - now.ToMilliseconds();
    CString text;
    if (left <= kWarnFrom)
        text.Format(left > 0 ? "HMRC's authority ends on %s: authorise again before then."
                             : "HMRC's authority ended on %s: authorise again.",
                    Afx::FormatTime(grantEnds.Fields(), "%d/%m/%Y"));
    return text;
}

std::string GatewayState::ScopeInWords() const
{
    std::vector<std::string> words;
    std::istringstream scopes(scope);
    std::vector<std::string> given{std::istream_iterator<std::string>(scopes), {}};
    for (const auto& row : kScopes)
        if (std::erase(given, row.scope) > 0)
            words.push_back(row.words);
    words.insert(words.end(), given.begin(), given.end());
    std::string text;
    for (std::size_t i = 0; i < words.size(); ++i)
        text += (i == 0 ? "" : i + 1 == words.size() ? " and " : ", ") + words[i];
    return text;
}

GatewayState ReadGatewayState(const std::string& gateway)
{
    const Cellar::CBufferedRowList row(Quarry::GetConnection(), Cellar::SqlText(kSelect) + "WHERE strGatewayID = %s",
                                       gateway);
    if (!row.IsEOL())
        return Read(row);
    GatewayState none;
    none.gateway = gateway;
    return none;
}

std::vector<GatewayState> ListGateways()
{
    std::vector<GatewayState> list;
    Cellar::CBufferedRowList rows(Quarry::GetConnection(), Cellar::SqlText(kSelect) + "ORDER BY strGatewayID");
    for (; !rows.IsEOL(); rows.MoveNext())
        list.push_back(Read(rows));
    return list;
}

COleDateTime GrantEnd(const COleDateTime& granted)
{
    if (!IsValid(granted))
        return COleDateTime::Null();
    Afx::LocalTime fields = granted.Fields();
    const int months = fields.month - 1 + kGrantMonths;
    fields.year += months / 12;
    fields.month = months % 12 + 1;
    while (fields.day > 28 && !IsValid(COleDateTime(fields)))
        --fields.day;
    return COleDateTime(fields);
}

} // namespace HmrcApi
