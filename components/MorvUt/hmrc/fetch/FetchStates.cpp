#include "MorvUt/hmrc/fetch/FetchStates.h"

#include <algorithm>

#include "MorvUt/hmrc/schedules/Matching.h"

namespace HmrcApi
{
namespace
{

struct StateWords
{
    GroupState state;
    const char* name;
    const char* text; // with the group's name
};

constexpr StateWords kStates[] = {
    {GroupState::Unknown, "unknown", ""},
    {GroupState::There, "there", ""},
    {GroupState::NotReconciled, "notReconciled",
     "HMRC holds no %s records for this year yet: it reconciles a year from June to November after its end."},
    {GroupState::Gone, "gone",
     "HMRC no longer holds %s records for this year: they go once the return has been processed."},
    {GroupState::NotRegistered, "notRegistered", "HMRC holds no %s records of this client for this year."},
};

const StateWords& WordsOf(GroupState state) noexcept
{
    for (const StateWords& words : kStates)
        if (words.state == state)
            return words;
    return kStates[0];
}

template<class Item>
int CountLive(const std::vector<Item>& items)
{
    return static_cast<int>(
        std::count_if(items.begin(), items.end(), [](const Item& item) { return !item.isWithdrawn; }));
}

/// Why there are no tokens, or else the error itself.
const std::string& CauseOf(const CAPIError& error) noexcept
{
    return error.GetCode() == "NO_CREDENTIALS" ? error.GetField() : error.GetCode();
}

void Count(const std::vector<Match>& matches, ItemCounts& counts)
{
    for (const Match& match : matches)
        if (match.state == Match::State::New)
            ++counts.notInReturn;
        else if (match.schedule != kNoSchedule)
            ++counts.inReturn;
}

} // namespace

const char* NameOf(GroupState state) noexcept { return WordsOf(state).name; }

CString FetchedGroup::WhyNothing() const
{
    CString text;
    if (const char* const words = WordsOf(state).text; *words)
        text.Format(words, name);
    return text;
}

GroupState StateOfNothing(short year, bool hasStaged, bool isFinalised, const Kiln::CDate& today)
{
    if (hasStaged)
        return GroupState::Gone;
    if (today < Kiln::CDate(year, 12, 1))
        return GroupState::NotReconciled;
    return isFinalised ? GroupState::Gone : GroupState::NotRegistered;
}

int CountSent(const StagedYear& answer)
{
    int count = CountLive(answer.employments) + CountLive(answer.pensions) + CountLive(answer.allowances);
    for (const StagedEmployment& employment : answer.employments)
        if (!employment.isWithdrawn)
            count += CountLive(employment.benefits);
    return count;
}

ItemCounts CountItems(const StagedYear& staged, const ReturnYear& own)
{
    ItemCounts counts;
    counts.items = CountSent(staged);
    Count(MatchEmployments(staged, own), counts);
    Count(MatchPensions(staged, own), counts);
    return counts;
}

bool IsBusy(const std::string& code) noexcept { return code == "REFRESH_BUSY"; }

bool IsBusy(const CAPIErrorHandler& errors)
{
    for (const auto& group : errors.GetGroups())
        for (const CAPIError& error : group.errors)
            if (!IsBusy(CauseOf(error)))
                return false;
    return errors.GetErrorCount() > 0;
}

bool IsUnreachable(const std::string& code, const std::string& status) noexcept
{
    constexpr const char* kCodes[] = {"NO_CONNECTION", "TIMED_OUT", "ANSWER_INCOMPLETE", "NO_HTTP_MODULE"};
    return status.empty() && std::find(std::begin(kCodes), std::end(kCodes), code) != std::end(kCodes);
}

bool IsUnreachable(const CAPIErrorHandler& errors)
{
    for (const auto& group : errors.GetGroups()) {
        const auto isAnswer = [](const CAPIError& error) {
            return !IsUnreachable(CauseOf(error), error.GetHttpStatus());
        };
        if (group.errors.empty() || std::any_of(group.errors.begin(), group.errors.end(), isAnswer))
            return false;
    }
    return !errors.GetGroups().empty();
}

} // namespace HmrcApi
