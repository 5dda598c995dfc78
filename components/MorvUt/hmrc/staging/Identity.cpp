#include "MorvUt/hmrc/staging/Identity.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "MorvUt/hmrc/staging/Payee.h"

namespace HmrcApi
{
namespace
{

enum Round
{
    kWhole,                        // nothing has changed; then what schedules are known by too, one round later
    kFirstOther = kSameRounds + 1, // from here on HMRC has changed the works number: only of what it still sent
    kByFigures,
    kBareItem,
    kBareRow,
    kOneOfEach,
    kRounds
};

std::vector<int> PairPayees(const std::vector<Payee>& items, const std::vector<Payee>& rows)
{
    const Counts itemsOf = CountByReference(items), rowsOf = CountByReference(rows);
    const auto traitOf = [&](int round, const Payee& payee, bool isRow) -> Trait {
        if (round == kWhole)
            return payee.rest.empty() ? Trait() : Joined({*SameTrait(0, payee), payee.rest});
        if (round < kFirstOther)
            return SameTrait(round - 1, payee);
        if (payee.isWithdrawn)
            return {};
        bool mayBe = false;
        switch (round) {
        case kFirstOther:
            return ByStart(payee);
        case kByFigures:
            return ByFigures(payee);
        case kBareItem:
            mayBe = isRow || payee.worksNumber.empty();
            break;
        case kBareRow:
            mayBe = !isRow || payee.worksNumber.empty();
            break;
        default:
            mayBe = CountOf(itemsOf, payee.reference) == 1 && CountOf(rowsOf, payee.reference) == 1;
        }
        return mayBe ? Trait(payee.reference) : Trait();
    };
    return PairUp(items, rows, kRounds, traitOf);
}

std::string RestOf(const StagedPension& item) { return Joined({item.payer, TextOf(item.end)}); }

std::string RestOf(const StagedEmployment& item)
{
    std::vector<std::string> benefits;
    for (const StagedBenefit& benefit : item.benefits)
        if (!benefit.isWithdrawn)
            benefits.push_back(Joined(
                {TypeText(benefit.type, benefit.number), TextOf(benefit.amount), benefit.isForecast ? "1" : "0"}));
    std::sort(benefits.begin(), benefits.end());
    const char* const offPayroll = !item.isOffPayroll ? "" : *item.isOffPayroll ? "1" : "0";
    std::string text = Joined({item.employer, offPayroll});
    for (const std::string& benefit : benefits)
        text += benefit;
    return text;
}

/// Two of one reference that differ by nothing else are told apart by the rest: the order of an answer means nothing.
template<class T>
std::vector<int> PairWhole(const std::vector<T>& items, const std::vector<T>& rows)
{
    std::vector<Payee> payees = PayeesOf(items), payeesOfRows = PayeesOf(rows);
    const Counts counts = CountByReference(payees);
    const auto addRest = [&](std::vector<Payee>& all, const std::vector<T>& values) {
        for (std::size_t i = 0; i < all.size(); ++i)
            if (CountOf(counts, all[i].reference) > 1)
                all[i].rest = RestOf(values[i]);
    };
    addRest(payees, items);
    addRest(payeesOfRows, rows);
    return PairPayees(payees, payeesOfRows);
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
    return PairWhole(items, rows);
}

std::vector<int> PairPrivatePensions(const std::vector<StagedPension>& items, const std::vector<StagedPension>& rows)
{
    return PairWhole(items, rows);
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
