#include "MorvUt/hmrc/access/LogReader.h"

#include <algorithm>
#include <string_view>

#include "Afx/text/Ascii.h"
#include "Cellar/BufferedRowList.h"
#include "HmrcApi/answers/Mask.h"
#include "Quarry/Session.h"

namespace HmrcApi
{
namespace
{

constexpr char kAll[] = "SELECT * FROM MTDLog ORDER BY lID";
constexpr char kChain[] = "SELECT * FROM MTDLog WHERE strChainID = %s ORDER BY lID";

/// 36 characters, of which eight digits may look like a National Insurance number.
bool IsGuid(std::string_view text) noexcept
{
    constexpr std::string_view kShape = "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx";
    return text.size() == kShape.size() && std::equal(text.begin(), text.end(), kShape.begin(), [](char c, char shape) {
               return shape == '-' ? c == '-' : Afx::HexValue(c) >= 0;
           });
}

LogLine LineOf(const Cellar::CBufferedRowList& row)
{
    const auto text = [&row](const char* column) { return Mask(row.GetText(column).Str()); };
    const auto id = [&](const char* column) {
        const CString stored = row.GetText(column);
        return IsGuid(stored.View()) ? stored.Str() : text(column);
    };
    return {row.GetDateTime("dtLogged"),
            text("strUserID"),
            text("strWorkstation"),
            id("strSessionID"),
            id("strChainID"),
            text("strEvent"),
            text("strInterface"),
            text("strRequest"),
            text("strResponse"),
            text("strDetail")};
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
