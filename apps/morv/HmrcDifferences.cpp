// hmrc differences, hmrc history.

#include "HmrcCommands.h"
#include "MorvUt/hmrc/review/Differences.h"
#include "MorvUt/hmrc/review/Review.h"
#include "MorvUt/hmrc/schedules/StagedWords.h"
#include "MorvUt/taxyear/TaxYearHelpers.h"
#include "Quarry/Session.h"
#include "Trailmark/MTDAudit.h"
#include "Who.h"

namespace Morv
{

namespace
{

constexpr const char* kStates[] = {"open", "accepted", "rejected", "skipped"};

Json RowJson(const HmrcApi::DifferenceRow& row)
{
    const bool isDate = row.kind == HmrcApi::DifferenceRow::Kind::Date;
    return {{"caption", TextOf(row.caption)},
            {"return", isDate ? DateOf(row.returnDate) : PenceOf(row.returnAmount)},
            {"hmrc", isDate ? DateOf(row.hmrcDate) : PenceOf(row.hmrcAmount)},
            {"estimate", row.estimate}};
}

Json DifferenceJson(const HmrcApi::Difference& difference)
{
    Json rows = Json::array();
    for (const auto& row : difference.rows)
        rows.push_back(RowJson(row));
    const bool isEmployment = difference.schedule == HmrcApi::Difference::Schedule::Employment;
    return {{"number", difference.number},     {"schedule", isEmployment ? "employment" : "pensionOrBenefit"},
            {"item", TextOf(difference.item)}, {"state", kStates[static_cast<int>(difference.state)]},
            {"hash", difference.Hash()},       {"rows", rows}};
}

void Print(const HmrcApi::Difference& difference)
{
    const bool isOpen = difference.state == HmrcApi::Difference::State::Open;
    PrintLine("%s. %s%s", std::to_string(difference.number), difference.item,
              isOpen ? std::string() : std::string(" (") + kStates[static_cast<int>(difference.state)] + ')');
    for (const auto& row : difference.rows)
        PrintLine("   %s: return %s, HMRC %s%s", row.caption, row.ReturnText(), row.HmrcText(),
                  row.estimate ? HmrcApi::kForecastMark : "");
}

CommandError Refusal(const HmrcApi::ReviewResult& result, std::int64_t number)
{
    using Outcome = HmrcApi::ReviewResult::Outcome;
    struct Words
    {
        Outcome outcome;
        const char* code;
        const char* action;
    };
    constexpr Words kWords[] = {
        {Outcome::Refused, "REFUSED", "Ask whoever administers the practice, or work on a return that may be changed."},
        {Outcome::Gone, "NO_SUCH_DIFFERENCE", "List the differences again."},
        {Outcome::Changed, "FIGURES_CHANGED", "List the differences again, look, and decide anew."},
        {Outcome::NoSchedule, "NO_SCHEDULE",
         "Give the schedule that is meant its works number, correct the schedules by hand, or reject."},
    };
    for (const Words& words : kWords)
        if (words.outcome == result.outcome)
            return {Exit::Refused, words.code,
                    "difference " + std::to_string(number) + ": " + Printable(result.message.View()), words.action};
    throw std::logic_error("done, not refused");
}

void Decide(const ClientId& client, std::int64_t number, HmrcApi::Decision decision, const std::string& hash,
            const CommonOptions& options)
{
    const HmrcApi::ReviewResult result = [&] {
        const QuietMessages quiet; // the refusal is told once
        return HmrcApi::Decide(client, TaxYearHelpers::GetCurrentTaxYear(), number, decision, hash);
    }();
    if (result.outcome != HmrcApi::ReviewResult::Outcome::Done)
        throw Refusal(result, number);
    if (options.json)
        PrintJson(DifferenceJson(result.difference));
    else
        Print(result.difference);
}

} // namespace

void Differences(const HmrcArguments& arguments, const CommonOptions& options)
{
    const PracticeSession session(arguments.practice, options, Login::Needed);
    const ClientId client(ClientOf(arguments.client).id);
    if (arguments.accept != 0)
        return Decide(client, arguments.accept, HmrcApi::Decision::Accept, arguments.as, options);
    if (arguments.reject != 0)
        return Decide(client, arguments.reject, HmrcApi::Decision::Reject, {}, options);
    if (arguments.skip != 0)
        return Decide(client, arguments.skip, HmrcApi::Decision::Skip, {}, options);
    const auto differences = HmrcApi::FindDifferences(client, TaxYearHelpers::GetCurrentTaxYear());
    if (options.json) {
        Json list = Json::array();
        for (const auto& difference : differences)
            list.push_back(DifferenceJson(difference));
        return PrintJson({{"differences", list}});
    }
    if (differences.empty())
        PrintText("No differences between HMRC's figures and the return.");
    for (const auto& difference : differences)
        Print(difference);
}

void History(const HmrcArguments& arguments, const CommonOptions& options)
{
    const PracticeSession session(arguments.practice, options, Login::Needed);
    const auto lines = Trailmark::ReadAudit(ClientId(ClientOf(arguments.client).id), Quarry::GetConnection());
    if (options.json) {
        Json list = Json::array();
        for (const Trailmark::AuditLine& line : lines)
            list.push_back({{"when", MomentOf(line.when)},
                            {"user", TextOf(line.user)},
                            {"action", TextOf(line.action)},
                            {"year", line.year == 0 ? Json() : Json(line.year)},
                            {"item", TextOf(line.item)},
                            {"hmrc", TextOf(line.hmrc)},
                            {"return", TextOf(line.ofReturn)}});
        return PrintJson(list);
    }
    TextTable table({"When", "User", "Decision", "Year", "Item", "HMRC", "Return"});
    for (const Trailmark::AuditLine& line : lines)
        table.Add({ShownMoment(line.when), line.user.Str(), line.action.Str(),
                   line.year == 0 ? std::string() : std::to_string(line.year), line.item.Str(), line.hmrc.Str(),
                   line.ofReturn.Str()});
    table.Print();
}

} // namespace Morv
