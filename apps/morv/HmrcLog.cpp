// hmrc log.

#include "HmrcCommands.h"
#include "MorvUt/hmrc/access/LogReader.h"

namespace Morv
{

namespace
{

Json LineJson(const HmrcApi::LogLine& line)
{
    return {{"when", MomentOf(line.when)}, {"user", line.user},       {"workstation", line.workstation},
            {"session", line.session},     {"chain", line.chain},     {"event", line.event},
            {"interface", line.interface}, {"request", line.request}, {"response", line.response},
            {"detail", line.detail}};
}

} // namespace

void ShowLog(const HmrcArguments& arguments, const CommonOptions& options)
{
    const PracticeSession session(arguments.practice, options, Login::Needed);
    const auto lines = HmrcApi::ReadLog(arguments.chain);
    if (options.json) {
        Json list = Json::array();
        for (const HmrcApi::LogLine& line : lines)
            list.push_back(LineJson(line));
        return PrintJson(list);
    }
    if (lines.empty())
        return PrintText(arguments.chain.empty() ? "The log is empty." : "The log has no line of this chain.");
    TextTable table({"When", "User", "Event", "Interface", "Request", "Response", "Detail", "Chain"});
    for (const HmrcApi::LogLine& line : lines)
        table.Add({ShownMoment(line.when), line.user, line.event, line.interface, line.request, line.response,
                   line.detail, line.chain});
    table.Print();
}

} // namespace Morv
