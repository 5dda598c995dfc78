#include "MorvUt/hmrc/staging/Pairing.h"

#include <unordered_map>

namespace HmrcApi
{
namespace
{

/// The free rows of one trait, first come first served.
struct Queue
{
    std::vector<int> rows;
    std::size_t next = 0;
};

} // namespace

std::vector<int> PairUp(std::size_t items, std::size_t rows, int rounds,
                        const std::function<Trait(int round, std::size_t item)>& ofItem,
                        const std::function<Trait(int round, std::size_t row)>& ofRow)
{
    std::vector<int> rowOf(items, kNoRow);
    std::vector<bool> isTaken(rows);
    std::size_t open = items;
    for (int round = 0; round < rounds && open > 0; ++round) {
        std::unordered_map<std::string, Queue> free;
        for (std::size_t row = 0; row < rows; ++row)
            if (!isTaken[row])
                if (Trait trait = ofRow(round, row))
                    free[std::move(*trait)].rows.push_back(static_cast<int>(row));
        for (std::size_t item = 0; item < items && !free.empty(); ++item) {
            if (rowOf[item] != kNoRow)
                continue;
            const Trait trait = ofItem(round, item);
            const auto found = trait ? free.find(*trait) : free.end();
            if (found == free.end() || found->second.next == found->second.rows.size())
                continue;
            rowOf[item] = found->second.rows[found->second.next++];
            isTaken[static_cast<std::size_t>(rowOf[item])] = true;
            --open;
        }
    }
    return rowOf;
}

std::string Joined(std::initializer_list<std::string> parts)
{
    std::string text;
    for (const std::string& part : parts)
        text += std::to_string(part.size()) + ':' + part;
    return text;
}

std::string TextOf(const Kiln::CAmt& amount)
{
    return amount.IsValid() ? std::to_string(amount.GetValue()) : amount.IsNull() ? "-" : "?";
}

std::string TextOf(const Kiln::CDate& date) { return date.IsValid() ? date.FormatIso().Str() : "-"; }

} // namespace HmrcApi
