#pragma once

// Which row is which item: by the best that they have in common.

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Kiln/CAmt.h"
#include "Kiln/CDate.h"

namespace HmrcApi
{

inline constexpr int kNoRow = -1;

/// A text by which an item and a row are the same in one round; nothing: this round cannot tell them.
using Trait = std::optional<std::string>;

/// Pairs items with rows, each row once: the row of each item, or kNoRow. In each round an item takes the first row
/// with its trait that is still free, items in their order, rows in theirs. The best kind of likeness comes first, for
/// every item, before the next. Linear in both.
std::vector<int> PairUp(std::size_t items, std::size_t rows, int rounds,
                        const std::function<Trait(int round, std::size_t item)>& ofItem,
                        const std::function<Trait(int round, std::size_t row)>& ofRow);

/// The same for an answer's items and the rows stored of them: rows that HMRC still sent come before withdrawn ones.
/// `traitOf(round, value, isRow)` is asked for both.
template<class T, class TraitOf>
std::vector<int> PairUp(const std::vector<T>& items, const std::vector<T>& rows, int rounds, TraitOf traitOf)
{
    std::vector<int> order;
    for (const bool isWithdrawn : {false, true})
        for (std::size_t row = 0; row < rows.size(); ++row)
            if (rows[row].isWithdrawn == isWithdrawn)
                order.push_back(static_cast<int>(row));
    const auto rowAt = [&](std::size_t place) { return static_cast<std::size_t>(order[place]); };
    std::vector<int> rowOf = PairUp(
        items.size(), rows.size(), rounds,
        [&](int round, std::size_t item) { return traitOf(round, items[item], false); },
        [&](int round, std::size_t place) { return traitOf(round, rows[rowAt(place)], true); });
    for (int& row : rowOf)
        if (row != kNoRow)
            row = order[static_cast<std::size_t>(row)];
    return rowOf;
}

/// Several texts as one; no two lists give the same.
std::string Joined(std::initializer_list<std::string> parts);
/// Ten-thousandths; another text for each status without a figure.
std::string TextOf(const Kiln::CAmt& amount);
/// The day; a text of its own for no date.
std::string TextOf(const Kiln::CDate& date);

} // namespace HmrcApi
