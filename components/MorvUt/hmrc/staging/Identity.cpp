#include "MorvUt/hmrc/staging/Identity.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "MorvUt/hmrc/staging/Pairing.h"

namespace HmrcApi
{
namespace
{

/// What tells payers' items apart.
struct Payee
{
    std::string reference, worksNumber, start, figures;
    bool hasFigures, isWithdrawn;
};

Payee PayeeOf(const StagedEmployment& item)
{
    return {item.reference,
            item.worksNumber,
            item.start.IsValid() ? TextOf(item.start) : std::string(),
            Joined({TextOf(item.pay), TextOf(item.tax), TextOf(item.studentLoan), TextOf(item.end)}),
            item.pay.IsValid() || item.tax.IsValid(),
            item.isWithdrawn};
}

Payee PayeeOf(const StagedPension& item)
{
    return {item.reference,
            item.worksNumber,
            item.date.IsValid() ? TextOf(item.date) : std::string(),
            Joined({TextOf(item.amount), TextOf(item.tax)}),
            item.amount.IsValid() || item.tax.IsValid(),
            item.isWithdrawn};
}

template<class T>
std::vector<Payee> PayeesOf(const std::vector<T>& values)
{
    std::vector<Payee> payees;
    payees.reserve(values.size());
    for (const T& value : values)
        payees.push_back(PayeeOf(value));
    return payees;
}

std::unordered_map<std::string, int> CountByReference(const std::vector<Payee>& payees)
{
    std::unordered_map<std::string, int> counts;
    for (const Payee& payee : payees)
        counts[payee.reference] += payee.isWithdrawn ? 0 : 1;
    return counts;
}

/// The rounds that look alike from both sides.
constexpr int kSameSided = 6;

Trait SameSided(int round, const Payee& p)
{
    const auto if_ = [](bool isTold, std::string text) { return isTold ? Trait(std::move(text)) : Trait(); };
    switch (round) {
    case 0:
        return Joined({p.reference, p.worksNumber, p.start, p.figures});
    case 1:
        return if_(!p.start.empty(), Joined({p.reference, p.worksNumber, p.start}));
    case 2:
        return if_(p.hasFigures, Joined({p.reference, p.worksNumber, p.figures}));
    case 3:
        return Joined({p.reference, p.worksNumber});
    case 4: // from here on HMRC has changed the works number: only of what it still sent
        return if_(!p.start.empty() && !p.isWithdrawn, Joined({p.reference, p.start}));
    default:
        return if_(p.hasFigures && !p.isWithdrawn, Joined({p.reference, p.figures}));
    }
}

std::vector<int> PairPayees(const std::vector<Payee>& items, const std::vector<Payee>& rows)
{
    const auto itemsOf = CountByReference(items), rowsOf = CountByReference(rows);
    const auto traitOf = [&](int round, const Payee& payee, bool isRow) -> Trait {
        if (round < kSameSided)
            return SameSided(round, payee);
        if (payee.isWithdrawn)
            return {};
        const bool isAnySide = round == kSameSided ? isRow : !isRow; // the other side has no works number
        const auto isOne = [&](const auto& counts) {
            const auto found = counts.find(payee.reference);
            return found != counts.end() && found->second == 1;
        };
        const bool mayBe =
            round == kSameSided + 2 ? isOne(itemsOf) && isOne(rowsOf) : isAnySide || payee.worksNumber.empty();
        return mayBe ? Trait(payee.reference) : Trait();
    };
    std::vector<std::size_t> order(rows.size()); // what HMRC still sent comes before what it had withdrawn
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    std::stable_partition(order.begin(), order.end(), [&](std::size_t row) { return !rows[row].isWithdrawn; });
    std::vector<int> rowOf = PairUp(
        items.size(), rows.size(), kSameSided + 3,
        [&](int round, std::size_t item) { return traitOf(round, items[item], false); },
        [&](int round, std::size_t place) { return traitOf(round, rows[order[place]], true); });
    for (int& row : rowOf)
        if (row != kNoRow)
            row = static_cast<int>(order[static_cast<std::size_t>(row)]);
    return rowOf;
}

using Taken = std::unordered_set<std::string>;

std::string IdentityOf(const StagedEmployment& item) { return Joined({item.reference, item.worksNumber}); }

/// The first free key of a reference and works number; the counts remember how far each has come.
std::string NextKey(const StagedEmployment& item, std::unordered_map<std::string, int>& counts, Taken& taken)
{
    int& nth = counts[IdentityOf(item)];
    std::string key;
    do
        key = KeyOf(item.reference, item.worksNumber, ++nth);
    while (!taken.insert(key).second);
    return key;
}

/// Every long key that these items and rows can have, with the reference and works number that it stands for.
std::unordered_map<std::string, std::string> LongKeys(const std::vector<StagedEmployment>& items,
                                                      const std::vector<StagedEmployment>& rows)
{
    std::unordered_map<std::string, int> counts;
    std::unordered_map<std::string, std::string> keys;
    for (const auto* const list : {&items, &rows})
        for (const StagedEmployment& item : *list)
            keys.emplace(KeyOf(item.reference, item.worksNumber, ++counts[IdentityOf(item)]), IdentityOf(item));
    return keys;
}

/// Items of a shared reference: those that have a row first, so that what came first has the lower number.
std::vector<std::size_t> InOrderOfRows(const std::vector<int>& rowOf)
{
    std::vector<std::size_t> order(rowOf.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return static_cast<unsigned>(rowOf[a]) < static_cast<unsigned>(rowOf[b]); // kNoRow comes last
    });
    return order;
}

} // namespace

std::vector<int> PairEmployments(const std::vector<StagedEmployment>& items, const std::vector<StagedEmployment>& rows)
{
    return PairPayees(PayeesOf(items), PayeesOf(rows));
}

std::vector<int> PairPrivatePensions(const std::vector<StagedPension>& items, const std::vector<StagedPension>& rows)
{
    return PairPayees(PayeesOf(items), PayeesOf(rows));
}

std::string KeyOf(const std::string& reference, const std::string& worksNumber, int nth)
{
    if (worksNumber.empty())
        return reference + " #" + std::to_string(nth + 1); // a bare reference stands for one item alone
    const std::string text = reference + ' ' + worksNumber;
    return nth == 1 ? text : text + " #" + std::to_string(nth);
}

void SetKeys(std::vector<StagedEmployment>& items, std::vector<StagedEmployment>& rows, const std::vector<int>& rowOf)
{
    std::unordered_map<std::string, int> sharing, counts;
    for (const StagedEmployment& item : items)
        ++sharing[item.reference];
    Taken taken;
    for (StagedEmployment& item : items) {
        item.key = sharing[item.reference] == 1 ? item.reference : std::string();
        if (!item.key.empty())
            taken.insert(item.key);
    }
    const auto longKeys = LongKeys(items, rows);
    std::vector<bool> isSent(rows.size());
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (rowOf[i] == kNoRow)
            continue;
        const std::string& own = rows[static_cast<std::size_t>(rowOf[i])].key;
        isSent[static_cast<std::size_t>(rowOf[i])] = true;
        const auto known = longKeys.find(own);
        if (items[i].key.empty() && known != longKeys.end() && known->second == IdentityOf(items[i]) &&
            taken.insert(own).second)
            items[i].key = own;
    }
    for (const std::size_t i : InOrderOfRows(rowOf))
        if (items[i].key.empty())
            items[i].key = NextKey(items[i], counts, taken);
    for (std::size_t row = 0; row < rows.size(); ++row)
        if (!isSent[row] && !rows[row].key.empty() && !taken.insert(rows[row].key).second)
            rows[row].key = NextKey(rows[row], counts, taken);
}

} // namespace HmrcApi
