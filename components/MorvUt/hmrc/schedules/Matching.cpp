#include "MorvUt/hmrc/schedules/Matching.h"

#include <unordered_map>
#include <unordered_set>

#include "MorvUt/hmrc/schedules/PensionTypes.h"
#include "MorvUt/hmrc/staging/Payee.h"
#include "MorvUt/hmrc/staging/Summaries.h"

namespace HmrcApi
{
namespace
{

Payee PayeeOf(const ReturnEmployment& own)
{
    return {own.reference.Str(),
            own.worksNumber.Str(),
            StartOf(own.start),
            FiguresOf(own.pay, own.tax),
            Joined({TextOf(own.end), TextOf(own.studentLoan)}),
            false,
            own.isFromHmrc};
}

Payee PayeeOf(const ReturnPension& own)
{
    return {own.reference.Str(), own.worksNumber.Str(), StartOf(own.start), FiguresOf(own.amount, own.tax), {}, false,
            own.isFromHmrc};
}

using Texts = std::unordered_set<std::string>;

/// The keys of the year's staged rows: a schedule may be typed like one.
struct Keys
{
    std::vector<std::string> ofItems; // empty: none has one
    Texts all;
};

/// Matches payers' items that HMRC sends with schedules.
class PayeeMatcher
{
public:
    /// `withdrawn`: identities of the items that HMRC no longer sends.
    PayeeMatcher(std::vector<Payee> items, std::vector<Payee> schedules, Texts withdrawn, Keys keys)
        : m_items(std::move(items)), m_schedules(std::move(schedules)), m_withdrawn(std::move(withdrawn)),
          m_keys(std::move(keys)), m_itemsOf(CountByReference(m_items))
    {
        for (const Payee& item : m_items)
            m_bareItemsOf[item.reference] += item.worksNumber.empty() ? 1 : 0;
        for (const Payee& own : m_schedules)
            m_bareSchedulesOf[own.reference] += own.worksNumber.empty() ? 1 : 0;
    }

    std::vector<Match> Find() const
    {
        const std::vector<int> scheduleOf = PairUp(
            m_items.size(), m_schedules.size(), kRounds, [&](int round, std::size_t i) { return OfItem(round, i); },
            [&](int round, std::size_t i) { return OfSchedule(round, m_schedules[i]); });
        const auto ambiguous = FindAmbiguous(scheduleOf);
        std::vector<Match> matches;
        for (std::size_t i = 0; i < m_items.size(); ++i) {
            const auto nobodys = ambiguous.find(m_items[i].reference);
            if (scheduleOf[i] != kNoRow)
                matches.push_back({Match::State::Matched, scheduleOf[i]});
            else if (nobodys != ambiguous.end())
                matches.push_back({Match::State::Ambiguous, nobodys->second});
            else
                matches.push_back({Match::State::New, kNoSchedule});
        }
        return matches;
    }

private:
    enum Round
    {
        kBare = kSameRounds, // where HMRC has one of the reference, as in kAny
        kByStart,            // where it has several, of schedules that were made from HMRC's records
        kByFigures,
        kAny,
        kByKey,
        kRounds
    };

    Trait OfItem(int round, std::size_t i) const
    {
        const Payee& item = m_items[i];
        if (round < kSameRounds)
            return SameTrait(round, item);
        if (round == kByKey)
            return m_keys.ofItems.empty() ? Trait() : Trait(m_keys.ofItems[i]);
        const bool isAlone = CountOf(m_itemsOf, item.reference) == 1;
        return isAlone || round == kByStart || round == kByFigures ? ByLikeness(round, item) : Trait();
    }

    Trait OfSchedule(int round, const Payee& own) const
    {
        if (round < kSameRounds)
            return own.worksNumber.empty() && !SaysWhich(own) ? Trait() : SameTrait(round, own);
        if (!own.worksNumber.empty() && m_withdrawn.contains(own.Identity()))
            return {}; // another period's, which HMRC no longer sends
        if (round == kByKey)
            return m_keys.all.contains(own.reference) ? own.reference : own.reference + ' ' + own.worksNumber;
        if (CountOf(m_itemsOf, own.reference) != 1)
            return own.isFromHmrc ? ByLikeness(round, own) : Trait();
        return round == kBare && !own.worksNumber.empty() ? Trait() : ByLikeness(round, own);
    }

    static Trait ByLikeness(int round, const Payee& payee)
    {
        if (round == kByStart)
            return ByStart(payee);
        return round == kByFigures ? ByFigures(payee) : Trait(payee.reference);
    }

    /// Whether the bare reference of a schedule says which item is meant: HMRC has one of it, or the schedule was made
    /// from one of HMRC's without a works number, or none of HMRC's has one and each has a schedule.
    bool SaysWhich(const Payee& own) const
    {
        const int items = CountOf(m_itemsOf, own.reference);
        return own.isFromHmrc || items <= 1 ||
               (CountOf(m_bareItemsOf, own.reference) == items && CountOf(m_bareSchedulesOf, own.reference) >= items);
    }

    /// The references of which HMRC has several and the return one that does not say which, with that schedule.
    std::unordered_map<std::string, int> FindAmbiguous(const std::vector<int>& scheduleOf) const
    {
        std::vector<bool> isTaken(m_schedules.size());
        for (const int schedule : scheduleOf)
            if (schedule != kNoRow)
                isTaken[static_cast<std::size_t>(schedule)] = true;
        std::unordered_map<std::string, int> ambiguous;
        for (std::size_t i = 0; i < m_schedules.size(); ++i)
            if (!isTaken[i] && m_schedules[i].worksNumber.empty() && CountOf(m_itemsOf, m_schedules[i].reference) > 1)
                ambiguous.emplace(m_schedules[i].reference, static_cast<int>(i));
        return ambiguous;
    }

    std::vector<Payee> m_items, m_schedules;
    Texts m_withdrawn;
    Keys m_keys;
    Counts m_itemsOf, m_bareItemsOf, m_bareSchedulesOf; // by reference
};

/// Items of one schedule: `first` says which schedule, the others share it. Several schedules are theirs one by one, by
/// their figures, then in order; what is left over shares the last.
void MatchGroup(const std::vector<StagedPension>& items, const std::vector<std::size_t>& group,
                const std::vector<ReturnPension>& own, const std::vector<int>& schedules, std::vector<Match>& matches)
{
    const auto figures = [](const auto& value) { return Joined({TextOf(value.amount), TextOf(value.tax)}); };
    const std::vector<int> pairs = PairUp(
        group.size(), schedules.size(), 2,
        [&](int round, std::size_t i) -> Trait { return round == 0 ? figures(items[group[i]]) : std::string(); },
        [&](int round, std::size_t i) -> Trait {
            return round == 0 ? figures(own[static_cast<std::size_t>(schedules[i])]) : std::string();
        });
    for (std::size_t i = 0; i < group.size(); ++i) {
        Match& match = matches[group[i]];
        if (pairs[i] != kNoRow)
            match = {Match::State::Matched, schedules[static_cast<std::size_t>(pairs[i])]};
        else if (!schedules.empty())
            match = {Match::State::Shared, schedules.back()};
        else
            match = {i == 0 ? Match::State::New : Match::State::Shared, kNoSchedule};
    }
}

/// By what a staged item that is no private pension is known; the same text for the schedules that may be it.
std::string GroupOf(const StagedPension& item)
{
    const PensionSchedule& schedule = *ScheduleOf(item.kind);
    return Joined({std::to_string(schedule.type), item.kind == kStatePension ? item.reference : TextOf(item.date)});
}

std::string GroupOf(const ReturnPension& own)
{
    return Joined(
        {std::to_string(own.type), own.type == kStatePensionType ? own.description.Str() : TextOf(own.start)});
}

template<class T, class IsMeant>
std::vector<std::size_t> Where(const std::vector<T>& values, IsMeant isMeant)
{
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < values.size(); ++i)
        if (isMeant(values[i]))
            places.push_back(i);
    return places;
}

template<class T>
std::vector<Payee> PayeesAt(const std::vector<T>& values, const std::vector<std::size_t>& places)
{
    std::vector<Payee> payees;
    payees.reserve(places.size());
    for (const std::size_t place : places)
        payees.push_back(PayeeOf(values[place]));
    return payees;
}

/// Puts what was found for some items at some schedules in the places of all.
void Spread(const std::vector<Match>& found, const std::vector<std::size_t>& items,
            const std::vector<std::size_t>& schedules, std::vector<Match>& matches)
{
    for (std::size_t i = 0; i < found.size(); ++i) {
        matches[items[i]] = found[i];
        if (found[i].schedule != kNoSchedule)
            matches[items[i]].schedule = static_cast<int>(schedules[static_cast<std::size_t>(found[i].schedule)]);
    }
}

template<class T>
Texts WithdrawnIdentities(const std::vector<T>& values)
{
    Texts identities;
    for (const T& value : values)
        if (value.isWithdrawn)
            identities.insert(Joined({value.reference, value.worksNumber}));
    return identities;
}

/// A sum: whatever the return has of its kind.
Match MatchSum(const StagedPension& item, const std::vector<ReturnPension>& own)
{
    const auto schedules =
        Where(own, [&](const ReturnPension& pension) { return IsScheduleOfKind(pension.type, item.kind); });
    if (schedules.empty())
        return {Match::State::New, kNoSchedule};
    return {schedules.size() == 1 ? Match::State::Matched : Match::State::Total, static_cast<int>(schedules[0])};
}

/// The schedule that was made of a sum of this kind, which the items may be parts of.
int ScheduleOfSum(int kind, const std::vector<ReturnPension>& own)
{
    for (std::size_t i = 0; i < own.size(); ++i)
        if (IsScheduleOfKind(own[i].type, kind) && IsMadeOfSum(own[i]))
            return static_cast<int>(i);
    return kNoSchedule;
}

bool IsSum(const StagedPension& item) { return SummaryOf(item) != Summary::None; }

} // namespace

std::vector<Match> MatchEmployments(const StagedYear& staged, const ReturnYear& own)
{
    Keys keys;
    Texts seen;
    for (const StagedEmployment& item : staged.employments)
        keys.all.insert(item.key);
    const auto items = Where(staged.employments, [&](const StagedEmployment& item) {
        return !item.isWithdrawn && seen.insert(item.key).second;
    });
    for (const std::size_t item : items)
        keys.ofItems.push_back(staged.employments[item].key);
    const auto schedules = Where(own.employments, [](const ReturnEmployment&) { return true; });
    const PayeeMatcher matcher(PayeesAt(staged.employments, items), PayeesAt(own.employments, schedules),
                               WithdrawnIdentities(staged.employments), std::move(keys));
    std::vector<Match> matches(staged.employments.size());
    Spread(matcher.Find(), items, schedules, matches);
    return matches;
}

std::vector<Match> MatchPensions(const StagedYear& staged, const ReturnYear& own)
{
    std::vector<Match> matches(staged.pensions.size());
    const auto items = Where(staged.pensions, [](const StagedPension& item) {
        return item.kind == kPrivatePension && !item.isWithdrawn && !IsSum(item);
    });
    const auto schedules =
        Where(own.pensions, [](const ReturnPension& pension) { return IsPrivatePensionType(pension.type); });
    const PayeeMatcher matcher(PayeesAt(staged.pensions, items), PayeesAt(own.pensions, schedules),
                               WithdrawnIdentities(staged.pensions), {});
    Spread(matcher.Find(), items, schedules, matches);

    std::unordered_map<std::string, std::vector<int>> schedulesOf;
    for (std::size_t i = 0; i < own.pensions.size(); ++i)
        schedulesOf[GroupOf(own.pensions[i])].push_back(static_cast<int>(i));
    std::unordered_map<std::string, std::vector<std::size_t>> groups;
    for (std::size_t i = 0; i < staged.pensions.size(); ++i) {
        const StagedPension& item = staged.pensions[i];
        if (item.isWithdrawn || !ScheduleOf(item.kind))
            continue;
        if (IsSum(item))
            matches[i] = MatchSum(item, own.pensions);
        else if (item.kind != kPrivatePension)
            groups[GroupOf(item)].push_back(i);
    }
    for (const auto& [text, group] : groups)
        MatchGroup(staged.pensions, group, own.pensions, schedulesOf[text], matches);
    for (std::size_t i = 0; i < matches.size(); ++i)
        if (matches[i].state != Match::State::Ignored && matches[i].schedule == kNoSchedule &&
            !IsSum(staged.pensions[i]))
            if (const int sum = ScheduleOfSum(staged.pensions[i].kind, own.pensions); sum != kNoSchedule)
                matches[i] = {Match::State::Ambiguous, sum};
    return matches;
}

} // namespace HmrcApi
