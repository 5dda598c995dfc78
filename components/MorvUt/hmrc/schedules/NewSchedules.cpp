#include "MorvUt/hmrc/schedules/NewSchedules.h"

#include <algorithm>
#include <limits>
#include <map>
#include <set>

#include "MorvUt/hmrc/schedules/BenefitTotals.h"
#include "MorvUt/hmrc/schedules/PensionTypes.h"
#include "MorvUt/hmrc/schedules/StagedWords.h"
#include "MorvUt/hmrc/schedules/Words.h"
#include "MorvUt/hmrc/staging/Summaries.h"
#include "MorvUt/mappings/TypeMappings.h"
#include "Shellkit/Identity.h"

namespace HmrcApi
{
namespace
{

constexpr int kLastOrdering = std::numeric_limits<int>::max();
constexpr char kAllowancesEmployer[] = "HMRC allowances";

/// One more than the highest ordering number in use; stays at the greatest number there is.
template<class T>
int NextOrdering(const std::vector<T>& schedules)
{
    int highest = 0;
    for (const T& schedule : schedules)
        highest = std::max(highest, schedule.ordering);
    return highest == kLastOrdering ? highest : highest + 1;
}

void MoveOn(int& ordering)
{
    if (ordering < kLastOrdering)
        ++ordering;
}

bool HasValue(const StagedAllowance& item) { return !item.isWithdrawn && IsSomething(item.amount); }

template<class... Args>
CString Formatted(Afx::FormatString<std::type_identity_t<Args>...> format, const Args&... args)
{
    CString text;
    text.Format(format, args...);
    return text;
}

CString NoteOfShared(const StagedPension& item)
{
    const CString amount = item.amount.IsValid() ? item.amount.Format() : CString("no amount");
    return Formatted("%s (%s): HMRC sent more than one item with the same %s; one schedule stands for them, and the "
                     "differences show their sum.",
                     NameOf(item), amount, item.kind == kStatePension ? "description" : "date or without a date");
}

CString NoteOfAmbiguous(const std::string& name, const std::string& reference)
{
    return Formatted(
        "%s: HMRC has more than one of this reference, and the return has one with the reference alone, which "
        "does not say which it is. None was made: give that schedule its works number, or delete it.",
        NamedBy(name, reference));
}

CString NoteOfPartOfSum(const StagedPension& item)
{
    return Formatted(
        "%s: the return has one schedule for the sum of this kind, which was made when HMRC sent no payers. "
        "None was made: delete that schedule, then create again.",
        NamedBy(DisplayName(item), DisplayReference(item)));
}

/// The schedules that hold the sum of the items that they stand for: nothing needs to be said of these.
std::set<int> SchedulesOfSums(const StagedYear& staged, const ReturnYear& own, const std::vector<Match>& matches)
{
    struct Sums
    {
        Kiln::CAmt amount, tax;
    };
    std::map<int, Sums> sums;
    for (std::size_t i = 0; i < matches.size(); ++i) {
        if (matches[i].schedule == kNoSchedule)
            continue;
        Sums& sum = sums[matches[i].schedule];
        AddTo(sum.amount, staged.pensions[i].amount);
        AddTo(sum.tax, staged.pensions[i].tax);
    }
    std::set<int> whole;
    for (const auto& [schedule, sum] : sums) {
        const ReturnPension& pension = own.pensions[static_cast<std::size_t>(schedule)];
        if (pension.amount == sum.amount && pension.tax == sum.tax)
            whole.insert(schedule);
    }
    return whole;
}

/// The schedules that HMRC does not send and that people must look at: those made from HMRC's records, each time, and
/// typed ones when something of their kind is new: one of the two may be the other as it was.
template<class T, class LikeOfItem, class LikeOfSchedule>
std::vector<const T*> NotSent(const std::vector<Match>& matches, const std::vector<T>& own, LikeOfItem likeOfItem,
                              LikeOfSchedule likeOfSchedule)
{
    std::set<std::string> made;
    std::set<int> taken;
    for (std::size_t i = 0; i < matches.size(); ++i) {
        if (matches[i].state == Match::State::New)
            made.insert(likeOfItem(i));
        else
            taken.insert(matches[i].schedule);
    }
    std::vector<const T*> found;
    for (std::size_t i = 0; i < own.size(); ++i)
        if (!taken.contains(static_cast<int>(i)) && (own[i].isFromHmrc || made.contains(likeOfSchedule(own[i]))))
            found.push_back(&own[i]);
    return found;
}

CString NoteOfNotSent(const CString& name, const CString& what, bool isFromHmrc)
{
    return Formatted(isFromHmrc
                         ? "%s%s: the return has this schedule, which was made from HMRC's records and which HMRC "
                           "no longer sends. Look whether the same income stands twice."
                         : "%s%s: the return has this schedule too, which HMRC does not send. Look whether the same "
                           "income stands twice.",
                     name, what);
}

/// References that differ by case or blanks are alike.
std::string LikeOf(const CString& reference)
{
    CString text = reference;
    text.Trim();
    text.MakeUpper();
    return text.Str();
}

/// Pensions by their payer's reference, everything else by its type.
std::string LikeOf(int type, const CString& reference)
{
    return IsPrivatePensionType(type) ? "reference " + LikeOf(reference) : std::to_string(type);
}

/// What the return calls a pension or benefit.
CString TitleOf(const ReturnPension& own)
{
    const char* type = "";
    GetMapLongNameFromIndex(mapPSBTypes, &type, own.type);
    return NamedBy(!own.description.IsEmpty() ? own.description
                   : !own.payer.IsEmpty()     ? own.payer
                                              : CString(type),
                   own.reference);
}

NewPension ScheduleFor(const StagedPension& item)
{
    const PensionSchedule& how = *ScheduleOf(item.kind);
    const bool isSum = SummaryOf(item) != Summary::None;
    // Their text is the description, and they have no payer's reference.
    const bool isText = isSum || item.kind == kStatePension;
    const std::string& own = isText ? item.reference : item.payer;
    const bool isFixed = how.description && (!isSum || !*how.description);
    return {how.section,
            how.type,
            item.amount,
            item.tax,
            false,
            item.payer,
            isText ? std::string() : item.reference,
            item.worksNumber,
            item.date,
            isFixed ? CString(how.description) : CString(own),
            true};
}

} // namespace

bool HasAllowances(const StagedYear& staged)
{
    return std::any_of(staged.allowances.begin(), staged.allowances.end(), &HasValue);
}

bool IsAnyEmploymentNew(const StagedYear& staged, const ReturnYear& own)
{
    const std::vector<Match> matches = MatchEmployments(staged, own);
    const auto isNew = [](const Match& match) { return match.state == Match::State::New; };
    return std::any_of(matches.begin(), matches.end(), isNew) || (own.employments.empty() && HasAllowances(staged));
}

bool IsAnyPensionNew(const StagedYear& staged, const ReturnYear& own, bool (*isOfKind)(long kind))
{
    const std::vector<Match> matches = MatchPensions(staged, own);
    for (std::size_t i = 0; i < matches.size(); ++i)
        if (matches[i].state == Match::State::New && isOfKind(staged.pensions[i].kind))
            return true;
    return false;
}

NewScheduleWriter::NewScheduleWriter(ClientId client, short year, ReturnYear own)
    : m_client(client), m_year(year), m_own(std::move(own)), m_pensionOrdering(NextOrdering(m_own.pensions))
{}

int NewScheduleWriter::NextEmploymentOrdering() const { return NextOrdering(m_own.employments); }

long NewScheduleWriter::TaxForm()
{
    if (m_own.taxFormId == 0) {
        Brix::CTaxForm form;
        form.AddNew();
        form.SetClientID(m_client.Get());
        form.SetYear(m_year);
        form.Update(Quarry::Saving::WithNext);
        m_own.taxFormId = form.GetID();
    }
    return m_own.taxFormId;
}

void NewScheduleWriter::AddAll(const StagedYear& staged)
{
    AddEmployments(staged);
    AddKinds(staged, {&IsPrivatePensionKind, &IsStateBenefitKind, &IsStatePensionKind});
}

void NewScheduleWriter::AddEmployments(const StagedYear& staged)
{
    const std::vector<Match> matches = MatchEmployments(staged, m_own);
    int ordering = NextEmploymentOrdering();
    for (std::size_t i = 0; i < matches.size(); ++i) {
        const StagedEmployment& item = staged.employments[i];
        if (matches[i].state == Match::State::New)
            AddEmployment(item, ordering);
        else if (matches[i].state == Match::State::Ambiguous)
            m_created.notes.push_back(NoteOfAmbiguous(item.employer, item.key));
        else if (matches[i].state == Match::State::Ignored && !item.isWithdrawn)
            m_created.notes.push_back(
                Formatted("%s: two of HMRC's employments are kept under this key; the first counts. "
                          "Fetch again.",
                          NamedBy(item.employer, item.key)));
    }
    for (const ReturnEmployment* own : NotSent(
             matches, m_own.employments, [&](std::size_t i) { return LikeOf(staged.employments[i].reference); },
             [](const ReturnEmployment& schedule) { return LikeOf(schedule.reference); }))
        if (own->employer != kAllowancesEmployer && !matches.empty())
            m_created.notes.push_back(NoteOfNotSent(
                NamedBy(own->employer, own->reference),
                own->worksNumber.IsEmpty() ? CString() : ", works number " + own->worksNumber, own->isFromHmrc));
    if (m_own.employments.empty() && m_created.employments == 0 && HasAllowances(staged))
        AddAllowancesHolder(ordering);
    m_employments.UpdateAll(Quarry::Saving::WithNext);
    m_benefits.UpdateAll(Quarry::Saving::WithNext);
}

void NewScheduleWriter::AddEmployment(const StagedEmployment& item, int& ordering)
{
    Append(m_employments, ordering, item.reference.empty() ? item.key : item.reference, item.employer);
    m_employments.SetWorksNumber(item.worksNumber);
    m_employments.SetStart(item.start);
    m_employments.SetEnd(item.end);
    m_employments.SetPay(item.pay);
    m_employments.SetTax(item.tax);
    m_employments.SetStudentLoan(item.studentLoan);
    m_employments.SetFromHMRC(true);
    AddBenefits(m_employments.GetID(), item);
    ++m_created.employments;
}

void NewScheduleWriter::AddBenefits(long employment, const StagedEmployment& item)
{
    for (const auto& [code, total] : TotalsOf(item.benefits).totals) {
        m_benefits.AddNew();
        m_benefits.SetNewEmployID(employment);
        m_benefits.SetType(code);
        m_benefits.SetBenefit(total.amount);
        m_benefits.SetEstimate(total.isEstimate);
    }
}

void NewScheduleWriter::AddAllowancesHolder(int& ordering)
{
    Append(m_employments, ordering, {}, kAllowancesEmployer);
    m_employments.SetFromHMRC(true);
    ++m_created.employments;
    m_created.notes.push_back(Formatted("%s: an employment was made to hold HMRC's tax-free allowances. It cannot be "
                                        "filed as it stands: give it its employer, or move the allowances.",
                                        kAllowancesEmployer));
}

void NewScheduleWriter::AddPensions(const StagedYear& staged, bool (*isOfKind)(long kind))
{
    AddKinds(staged, {isOfKind});
}

void NewScheduleWriter::AddKinds(const StagedYear& staged, std::initializer_list<bool (*)(long kind)> kinds)
{
    const std::vector<Match> matches = MatchPensions(staged, m_own);
    for (const auto isOfKind : kinds) {
        AddUnsaved(staged, matches, isOfKind);
        NoteOtherPensions(staged, matches, isOfKind);
    }
    m_pensions.UpdateAll(Quarry::Saving::WithNext);
}

void NewScheduleWriter::AddUnsaved(const StagedYear& staged, const std::vector<Match>& matches,
                                   bool (*isOfKind)(long kind))
{
    const std::set<int> whole = SchedulesOfSums(staged, m_own, matches);
    for (std::size_t i = 0; i < matches.size(); ++i) {
        const StagedPension& item = staged.pensions[i];
        if (!isOfKind(item.kind))
            continue;
        switch (matches[i].state) {
        case Match::State::New:
            Add(ScheduleFor(item));
            break;
        case Match::State::Shared:
            if (!whole.contains(matches[i].schedule))
                m_created.notes.push_back(NoteOfShared(item));
            break;
        case Match::State::Ambiguous:
            m_created.notes.push_back(IsMadeOfSum(m_own.pensions[static_cast<std::size_t>(matches[i].schedule)])
                                          ? NoteOfPartOfSum(item)
                                          : NoteOfAmbiguous(item.payer, item.reference));
            break;
        case Match::State::Matched:
        case Match::State::Total: // the review compares it
        case Match::State::Ignored:
            break;
        }
    }
}

void NewScheduleWriter::NoteOtherPensions(const StagedYear& staged, std::vector<Match> matches,
                                          bool (*isOfKind)(long kind))
{
    const auto typeOf = [&](std::size_t i) {
        const PensionSchedule* const schedule = ScheduleOf(staged.pensions[i].kind);
        return schedule ? schedule->type : 0;
    };
    const auto isSummed = [&](const ReturnPension& own) {
        return std::any_of(staged.pensions.begin(), staged.pensions.end(), [&](const StagedPension& item) {
            return !item.isWithdrawn && SummaryOf(item) != Summary::None && IsScheduleOfKind(own.type, item.kind);
        });
    };
    std::set<int> types;
    for (std::size_t i = 0; i < matches.size(); ++i)
        if (isOfKind(staged.pensions[i].kind))
            types.insert(typeOf(i));
        else if (matches[i].state == Match::State::New)
            matches[i].state = Match::State::Ignored; // told with its own kind
    for (const ReturnPension* own : NotSent(
             matches, m_own.pensions, [&](std::size_t i) { return LikeOf(typeOf(i), staged.pensions[i].reference); },
             [](const ReturnPension& schedule) { return LikeOf(schedule.type, schedule.reference); }))
        if (types.contains(own->type) && !isSummed(*own))
            m_created.notes.push_back(
                NoteOfNotSent(TitleOf(*own), own->start.IsValid() ? " of " + own->start.Format("%d/%m/%Y") : CString(),
                              own->isFromHmrc));
}

void NewScheduleWriter::Append(Brix::CNewEmploy& schedules, int& ordering, const CString& reference,
                               const CString& employer)
{
    schedules.AddNew();
    schedules.SetTaxFormID(TaxForm());
    schedules.SetClientID(m_client.Get());
    schedules.SetYear(m_year);
    schedules.SetGUID(Shellkit::FormatGuid(Shellkit::NewGuid()));
    schedules.SetOrdering(ordering);
    schedules.SetPAYEReference(reference);
    schedules.SetEmployerName(employer);
    MoveOn(ordering);
}

void NewScheduleWriter::Append(const NewPension& pension)
{
    Add(pension);
    m_pensions.Update(Quarry::Saving::WithNext);
}

void NewScheduleWriter::Add(const NewPension& pension)
{
    m_pensions.AddNew();
    m_pensions.SetTaxFormID(TaxForm());
    m_pensions.SetClientID(m_client.Get());
    m_pensions.SetYear(m_year);
    m_pensions.SetOrdering(m_pensionOrdering);
    m_pensions.SetSection(pension.section);
    m_pensions.SetType(pension.type);
    m_pensions.SetDescription(pension.description);
    m_pensions.SetReference(pension.reference);
    m_pensions.SetWorksNumber(pension.worksNumber);
    m_pensions.SetPayer(pension.payer);
    m_pensions.SetStart(pension.start);
    m_pensions.SetAmount(pension.amount);
    m_pensions.SetTax(pension.tax);
    m_pensions.SetEstimate(pension.isEstimate);
    m_pensions.SetFromHMRC(pension.isFromHmrc);
    MoveOn(m_pensionOrdering);
    ++m_created.pensionsAndBenefits;
}

} // namespace HmrcApi
