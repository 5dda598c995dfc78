#include "MorvUt/hmrc/fetch/Absence.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace HmrcApi
{
namespace
{

constexpr int kInARow = 3; // clients, before an absence that may pass counts as one that lasts

struct AbsenceName
{
    Absence absence;
    const char* name;
    bool mayPass;
};
constexpr AbsenceName kAbsences[] = {
    {Absence::None, "", true},
    {Absence::Unreachable, "unreachable", true},
    {Absence::Overloaded, "overloaded", true},
    {Absence::Busy, "busy", true},
    {Absence::Maintenance, "maintenance", false},
    {Absence::NoAuthority, "noAuthority", false},
    {Absence::NotAllowed, "notAllowed", false},
    {Absence::Unusable, "unusable", false},
    {Absence::Cancelled, "cancelled", false},
};

struct StoppedBy
{
    FetchResult::Stopped stopped;
    Absence absence;
};
// Every other stop is the client's own.
constexpr StoppedBy kStops[] = {
    {FetchResult::Stopped::NoRight, Absence::NotAllowed},
    {FetchResult::Stopped::NotEnabled, Absence::NotAllowed},
    {FetchResult::Stopped::NotAuthorised, Absence::NoAuthority},
    {FetchResult::Stopped::Busy, Absence::Busy},
    {FetchResult::Stopped::Unusable, Absence::Unusable},
};

/// By the code of an error or, of NO_CREDENTIALS, its cause.
struct CodeTells
{
    std::string_view code;
    Absence absence;
};
constexpr CodeTells kCodes[] = {
    {"SCHEDULED_MAINTENANCE", Absence::Maintenance}, {"NO_CREDENTIALS", Absence::NoAuthority},
    {"NO_CREDENTIALS_FILE", Absence::NoAuthority},   {"NOT_AUTHORISED", Absence::NoAuthority},
    {"WRONG_SERVICE", Absence::NoAuthority},         {"TOKENS_UNREADABLE", Absence::NoAuthority},
    {"NO_PRACTICE_KEY", Absence::NoAuthority},       {"INVALID_GRANT", Absence::NoAuthority},
    {"INVALID_CLIENT", Absence::NoAuthority},        {"TOKENS_NOT_SAVED", Absence::Unusable},
    {"DATABASE_UNREADABLE", Absence::Unusable},      {"CANCELLED", Absence::Cancelled},
};

std::string_view CauseOf(const CAPIError& error) noexcept
{
    const bool hasCause = error.GetCode() == "NO_CREDENTIALS" && !error.GetField().empty();
    return hasCause ? error.GetField() : error.GetCode();
}

Absence AbsenceBy(std::string_view code) noexcept
{
    for (const CodeTells& each : kCodes)
        if (each.code == code)
            return each.absence;
    return Absence::None;
}

/// Each error is an answer that was asked for again in vain.
bool IsOverloaded(const CAPIErrorHandler& errors)
{
    const auto isOfGroup = [](const CAPIErrorHandler::Group& group) {
        constexpr std::string_view kStatuses[] = {"429", "503", "504"};
        return !group.errors.empty() &&
               std::all_of(group.errors.begin(), group.errors.end(), [&](const CAPIError& error) {
                   return std::find(std::begin(kStatuses), std::end(kStatuses), error.GetHttpStatus()) !=
                          std::end(kStatuses);
               });
    };
    return !errors.GetGroups().empty() && std::all_of(errors.GetGroups().begin(), errors.GetGroups().end(), isOfGroup);
}

} // namespace

const char* NameOf(Absence absence) noexcept
{
    for (const AbsenceName& each : kAbsences)
        if (each.absence == absence)
            return each.name;
    return "";
}

bool MayPass(Absence absence) noexcept
{
    for (const AbsenceName& each : kAbsences)
        if (each.absence == absence)
            return each.mayPass;
    return true;
}

void Patience::Add(Absence absence) noexcept
{
    m_inARow = absence == Absence::None ? 0 : m_inARow + 1;
    if (m_end == Absence::None && m_inARow > 0 && (!MayPass(absence) || m_inARow >= kInARow))
        m_end = absence;
}

Absence AbsenceOf(FetchResult::Stopped stopped, const CAPIErrorHandler& errors)
{
    for (const StoppedBy& each : kStops)
        if (each.stopped == stopped)
            return each.absence;
    if (stopped != FetchResult::Stopped::No)
        return Absence::None;
    for (const auto& group : errors.GetGroups())
        for (const CAPIError& error : group.errors)
            if (const Absence absence = AbsenceBy(CauseOf(error)); absence != Absence::None)
                return absence;
    if (HmrcApi::IsBusy(errors))
        return Absence::Busy;
    if (IsUnreachable(errors))
        return Absence::Unreachable;
    return IsOverloaded(errors) ? Absence::Overloaded : Absence::None;
}

Absence AbsenceOf(const FetchResult& result) { return AbsenceOf(result.stopped, *result.errors); }

} // namespace HmrcApi
