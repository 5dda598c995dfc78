#include "MorvUt/ui/grids/ChangeOfBasis.h"

#include <algorithm>

using Kiln::CAmt;

namespace
{

constexpr std::size_t kResult = 3;

bool HoldSameFigures(const BasisColumn& a, const BasisColumn& b) noexcept
{
    return std::equal(a.begin(), a.end(), b.begin(),
                      [](const CAmt& x, const CAmt& y) { return x.GetValue() == y.GetValue(); });
}

} // namespace

std::vector<BasisFinding> CheckBasis(std::span<const BasisColumn> columns, std::span<const BasisColumn> loaded,
                                     const BasisChecks& checks)
{
    std::vector<BasisFinding> findings;
    const bool asksForChange = checks.change && checks.realYear >= kFirstYearOfBasisCheck;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (checks.negative && columns[i][kResult] < CAmt::kZero) {
            findings.push_back({BasisFinding::Kind::Negative, i});
            break;
        }
        if (asksForChange && !HoldSameFigures(columns[i], i < loaded.size() ? loaded[i] : BasisColumn{}))
            findings.push_back({BasisFinding::Kind::Changed, i});
    }
    return findings;
}
