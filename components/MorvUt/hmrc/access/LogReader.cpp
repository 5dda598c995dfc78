#include "MorvUt/hmrc/access/LogReader.h"

#include "Cellar/BufferedRowList.h"
#include "HmrcApi/answers/Mask.h"
#include "Quarry/Session.h"

namespace HmrcApi
{
namespace
{

constexpr char kAll[] = "SELECT * FROM MTDLog ORDER BY lID";
constexpr char kChain[] = "SELECT * FROM MTDLog WHERE strChainID = %s ORDER BY lID";

LogLine LineOf(const Cellar::CBufferedRowList& row)
{
    const auto text = [&row](const char* column) { return Mask(row.GetText(column).Str()); };
    return {row.GetDateTime("dtLogged"), text("strUserID"), text("strWorkstation"), text("strSessionID"),
            text("strChainID"),          text("strEvent"),  text("strInterface"),   text("strRequest"),
            text("strResponse"),         text("strDetail")};
}

} // namespace

std::vector<LogLine> ReadLog(const std::string& chain)
{
    auto rows = chain.empty() ? Cellar::CBufferedRowList(Quarry::GetConnection(), kAll)
                              : Cellar::CBufferedRowList(Quarry::GetConnection(), kChain, chain);
    std::vector<LogLine> lines;
    for (; !rows.IsEOL(); rows.MoveNext())
        lines.push_back(LineOf(rows));
    return lines;
}

} // namespace HmrcApi
