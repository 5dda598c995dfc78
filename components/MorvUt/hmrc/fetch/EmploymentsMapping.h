#pragma once

// The answers of HMRC's four individual interfaces in the terms of the staging rows, joined.

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "Afx/text/CString.h"
#include "HmrcApi/records/Summaries.h"
#include "MorvUt/hmrc/staging/StagedYear.h"

namespace HmrcApi
{

/// Which of the four had records; the others had nothing yet (404 NOT_FOUND), and what they would say stays as it is.
struct AnsweredParts
{
    bool history = false, income = false, benefits = false, tax = false;

    bool IsAny() const noexcept { return history || income || benefits || tax; }
};

/// The four, in the order in which they are asked.
enum class Part : std::uint8_t
{
    History,
    Income,
    Benefits,
    Tax
};
/// How many employments of a reference each of the four has.
using PartCounts = std::map<std::string, std::array<int, 4>>;

/// Calls `visit(key, part)` for each employment of an answer: the key is the PAYE reference, of the second with one
/// reference, and those that follow, with " #2" and so on behind it. Several of a reference are joined by their order.
void EachEmployment(const CEmploymentsResponse& response,
                    const std::function<void(const std::string& key, std::shared_ptr<const Employment_t> part)>& visit);

/// Adds what a part knows of an employment.
void AddPart(StagedEmployment& item, const Employment_t& part);

/// The sums of pensions and benefits, and of what becomes no schedule.
void AddIncome(StagedYear& year, const CIncomeSummaryResponse& response);
void AddTax(StagedYear& year, const CTaxSummaryResponse& response);

// What was sent, completed by what is stored: works numbers, dates and student loans, which only the other route knows,
// and what belongs to an interface that had nothing. An employment that HMRC sends again gets its row back.
std::vector<StagedEmployment> CompletedEmployments(const StagedYear& sent, const AnsweredParts& parts,
                                                   const StagedYear& stored);
std::vector<StagedPension> CompletedPensions(const StagedYear& sent, const AnsweredParts& parts,
                                             const StagedYear& stored);

/// For people: which of the four have nothing while others have, references of which they list a different number, and
/// sums that were sent and that `staged`, as it is afterwards, does not hold.
std::vector<CString> NotesOfParts(const StagedYear& sent, const AnsweredParts& parts, const PartCounts& counts,
                                  const StagedYear& staged);

} // namespace HmrcApi
