#include "MorvUt/hmrc/staging/StagingWriter.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>

#include "MorvUt/hmrc/staging/detail/Rows.h"
#include "MorvUt/hmrc/staging/Identity.h"
#include "MorvUt/hmrc/staging/Pairing.h"
#include "Quarry/Session.h"

namespace HmrcApi
{

using Detail::Fill;
using Detail::Open;
using Detail::Read;

namespace
{

using Brix::CMTD_Employments;
using Brix::CMTD_EmploymentsCompanyBenefits;
using Brix::CMTD_PensionStateBenefits;
using Brix::CMTD_TaxFreeAllowances;

/// Values of some of a list's rows, and where each stands in the list.
template<class T>
struct Some
{
    std::vector<T> values;
    std::vector<int> places;
};

template<class List, class IsMeant>
auto Select(List& list, IsMeant isMeant)
{
    Some<decltype(Read(list))> some;
    for (int place = 0; list.MoveTo(place); ++place) {
        auto value = Read(list);
        if (!isMeant(value))
            continue;
        some.values.push_back(std::move(value));
        some.places.push_back(place);
    }
    return some;
}

/// Counts the current row when it is not what is stored.
template<class List>
void CountChanged(const List& list, int& count)
{
    count += list.IsDirty() ? 1 : 0;
}

template<class List>
void SetWithdrawn(List& list, bool isWithdrawn)
{
    if (list.GetWithdrawn() != isWithdrawn)
        list.SetWithdrawn(isWithdrawn);
}

/// Puts the items into the rows at `places` (`rowOf` counts in these), marks the rows that no item has as withdrawn;
/// saves nothing. `adopt` hangs a new row under its parent. Gives the id of each item's row.
template<class List, class T, class Adopt>
std::vector<long> BringIntoLine(List& list, const std::vector<T>& items, const std::vector<int>& places,
                                const std::vector<int>& rowOf, Adopt adopt, StagedCounts& counts)
{
    std::vector<long> ids;
    ids.reserve(items.size());
    std::vector<bool> isSent(places.size());
    for (std::size_t item = 0; item < items.size(); ++item) {
        const bool isNew = rowOf[item] == kNoRow;
        if (isNew) {
            list.AddNew();
            adopt(list, item);
        } else {
            const auto row = static_cast<std::size_t>(rowOf[item]);
            isSent[row] = true;
            list.MoveTo(places[row]);
        }
        Fill(list, items[item]);
        SetWithdrawn(list, false);
        CountChanged(list, isNew ? counts.added : counts.changed);
        ids.push_back(list.GetID());
    }
    for (std::size_t row = 0; row < places.size(); ++row) {
        if (isSent[row])
            continue;
        list.MoveTo(places[row]);
        SetWithdrawn(list, true);
        CountChanged(list, counts.withdrawn);
    }
    return ids;
}

using Pensions = std::vector<StagedPension>;

Trait BenefitTrait(int round, const StagedBenefit& item, bool)
{
    const std::string forecast = item.isForecast ? "1" : "0";
    if (round == 0)
        return Joined({TypeText(item.type, item.number), forecast, TextOf(item.amount)});
    return round == 1 ? Joined({TypeText(item.type, item.number), forecast}) : TypeText(item.type, item.number);
}

Trait AllowanceTrait(int round, const StagedAllowance& item, bool)
{
    return round == 0 ? Joined({TypeText(item.type, item.number), TextOf(item.amount)})
                      : TypeText(item.type, item.number);
}

/// A benefit is known by kind and date; of one that is not known the name is the kind.
Trait StateBenefitTrait(int round, const StagedPension& item, bool)
{
    const std::string kind =
        Joined({std::to_string(item.kind), item.kind == kUnknownBenefit ? item.reference : std::string()});
    const std::string known = Joined({kind, TextOf(item.date)});
    if (round == 2)
        return known;
    // A row of a practice from before ends were staged has none yet.
    return Joined({known, TextOf(item.amount), TextOf(item.tax), item.reference, item.payer,
                   round == 0 ? TextOf(item.end) : std::string()});
}

Trait StatePensionTrait(int round, const StagedPension& item, bool)
{
    return round == 0 ? Joined({item.reference, TextOf(item.date), TextOf(item.amount)}) : item.reference;
}

bool IsStateBenefit(int kind) noexcept
{
    return kind != kStatePension && kind != kPrivatePension; // whatever else another program may have written
}

} // namespace

/// Some of the pensions and benefits, and how their items find their rows.
struct PensionKind
{
    bool (*isMeant)(int kind);
    std::vector<int> (*pairUp)(const Pensions& items, const Pensions& rows);
};

namespace
{

constexpr PensionKind kPensionKinds[] = {
    {[](int kind) { return kind == kPrivatePension; }, &PairPrivatePensions},
    {&IsStateBenefit,
     [](const Pensions& items, const Pensions& rows) { return PairUp(items, rows, 3, &StateBenefitTrait); }},
    {[](int kind) { return kind == kStatePension; },
     [](const Pensions& items, const Pensions& rows) { return PairUp(items, rows, 2, &StatePensionTrait); }},
};

} // namespace

StagingWriter::StagingWriter(ClientId client, short year) noexcept : m_client(client), m_year(year) {}

bool StagingWriter::HasRows()
{
    const std::uint64_t epoch = Quarry::GetConnection().GetEpoch();
    if (m_years.epoch != epoch) {
        m_years = {};
        m_isNoted = false;
        m_hadYear = Open(m_years.list, m_client, m_year);
        m_years.epoch = epoch;
    }
    return m_hadYear;
}

template<class List>
List& StagingWriter::Load(Rows<List>& rows)
{
    const std::uint64_t epoch = Quarry::GetConnection().GetEpoch();
    if (rows.epoch != epoch) {
        rows = {};
        if (HasRows())
            Open(rows.list, m_client, m_year);
        rows.epoch = epoch;
    }
    return rows.list;
}

long StagingWriter::NoteYear()
{
    const bool hadYear = HasRows();
    Brix::CMTD_TaxYear& years = m_years.list;
    if (m_isNoted)
        return years.GetID();
    if (!hadYear)
        years.AddNew();
    const COleDateTime now = COleDateTime::GetCurrentTime();
    years.SetFetched(now);
    if (m_isComplete)
        years.SetComplete(now);
    years.Update(Quarry::Saving::WithNext);
    m_isNoted = true;
    return years.GetID();
}

void StagingWriter::TakeBackComplete()
{
    if (!std::exchange(m_isComplete, false) || !HasRows())
        return;
    m_years.list.Set(Brix::CMTD_TaxYear::kComplete, nullptr);
    m_years.list.Update();
}

void StagingWriter::WriteEmployments(std::vector<StagedEmployment> items)
{
    CMTD_Employments& list = Load(m_employments);
    const long year = NoteYear();
    auto stored = Select(list, [](const StagedEmployment&) { return true; });
    Detail::AddBenefits(stored.values, Load(m_benefits));
    const std::vector<int> rowOf = PairEmployments(items, stored.values);
    const std::vector<StagedEmployment> before = stored.values;
    SetKeys(items, stored.values, rowOf);
    for (std::size_t row = 0; row < before.size(); ++row) // a key that an item needs
        if (stored.values[row].key != before[row].key) {
            list.MoveTo(stored.places[row]);
            list.SetKey(stored.values[row].key);
            list.Update();
        }
    const std::vector<long> ids = BringIntoLine(
        list, items, stored.places, rowOf, [&](CMTD_Employments& row, std::size_t) { row.SetMTD_TaxYearID(year); },
        m_counts);
    list.UpdateAll(Quarry::Saving::WithNext);
    WriteBenefits(ids, items, before);
}

/// One list holds the benefits of all employments; those of an employment that is gone are withdrawn with it.
void StagingWriter::WriteBenefits(const std::vector<long>& employmentIds, const std::vector<StagedEmployment>& items,
                                  const std::vector<StagedEmployment>& rows)
{
    CMTD_EmploymentsCompanyBenefits& list = Load(m_benefits);
    std::unordered_map<long, Some<StagedBenefit>> stored;
    for (int place = 0; list.MoveTo(place); ++place) {
        Some<StagedBenefit>& own = stored[list.GetMTD_EmploymentsID()];
        own.values.push_back(Read(list));
        own.places.push_back(place);
    }
    const auto write = [&](long employment, const std::vector<StagedBenefit>& benefits) {
        const Some<StagedBenefit>& own = stored[employment];
        BringIntoLine(
            list, benefits, own.places, PairUp(benefits, own.values, 3, &BenefitTrait),
            [&](CMTD_EmploymentsCompanyBenefits& row, std::size_t) { row.SetMTD_EmploymentsID(employment); }, m_counts);
        stored.erase(employment);
    };
    for (std::size_t item = 0; item < items.size(); ++item)
        write(employmentIds[item], items[item].benefits);
    for (const StagedEmployment& row : rows)
        if (stored.contains(row.id))
            write(row.id, {});
    list.UpdateAll(Quarry::Saving::WithNext);
}

void StagingWriter::WritePensions(const std::vector<StagedPension>& all, std::span<const PensionKind> kinds)
{
    CMTD_PensionStateBenefits& list = Load(m_pensions);
    const long year = NoteYear();
    for (const PensionKind& kind : kinds) {
        Pensions items;
        std::copy_if(all.begin(), all.end(), std::back_inserter(items),
                     [&](const StagedPension& item) { return kind.isMeant(item.kind); });
        const auto stored = Select(list, [&](const StagedPension& row) { return kind.isMeant(row.kind); });
        BringIntoLine(
            list, items, stored.places, kind.pairUp(items, stored.values),
            [&](CMTD_PensionStateBenefits& row, std::size_t) { row.SetMTD_TaxYearID(year); }, m_counts);
    }
    list.UpdateAll(Quarry::Saving::WithNext);
}

void StagingWriter::WritePensions(const std::vector<StagedPension>& items) { WritePensions(items, kPensionKinds); }
void StagingWriter::WritePrivatePensions(const std::vector<StagedPension>& items)
{
    WritePensions(items, {&kPensionKinds[0], 1});
}
void StagingWriter::WriteStateBenefits(const std::vector<StagedPension>& items)
{
    WritePensions(items, {&kPensionKinds[1], 1});
}
void StagingWriter::WriteStatePensions(const std::vector<StagedPension>& items)
{
    WritePensions(items, {&kPensionKinds[2], 1});
}

void StagingWriter::WriteAllowances(const std::vector<StagedAllowance>& items)
{
    CMTD_TaxFreeAllowances& list = Load(m_allowances);
    const long year = NoteYear();
    const auto stored = Select(list, [](const StagedAllowance&) { return true; });
    BringIntoLine(
        list, items, stored.places, PairUp(items, stored.values, 2, &AllowanceTrait),
        [&](CMTD_TaxFreeAllowances& row, std::size_t) { row.SetMTD_TaxYearID(year); }, m_counts);
    list.UpdateAll(Quarry::Saving::WithNext);
}

void StagingWriter::WriteNationalInsurance(const StagedNationalInsurance& figures)
{
    Brix::CMTD_NIC& list = Load(m_nationalInsurance);
    const long year = NoteYear();
    const bool isNew = !list.MoveFirst();
    if (isNew && !figures.class1Earnings.IsValid() && !figures.class2Due.IsValid() && !figures.isMaximumReached)
        return;
    if (isNew) {
        list.AddNew();
        list.SetMTD_TaxYearID(year);
    }
    Fill(list, figures);
    if (!list.IsDirty())
        return;
    list.SetUpdated(COleDateTime::GetCurrentTime());
    CountChanged(list, isNew ? m_counts.added : m_counts.changed);
    list.Update(Quarry::Saving::WithNext);
}

StagedYear StagingWriter::GetYear()
{
    return Detail::YearOf(Load(m_employments), Load(m_benefits), Load(m_pensions), Load(m_allowances),
                          Load(m_nationalInsurance));
}

} // namespace HmrcApi
