#include "MorvUt/hmrc/fetch/FetchRun.h"

#include <optional>

#include "Brix/Records.h"
#include "Cellar/BufferedRowList.h"
#include "Quarry/Session.h"

namespace HmrcApi
{
namespace
{

constexpr double kRemembered = 0.5; // days

constexpr char kSelectRun[] = "SELECT [dtBegan] FROM [MTDFetchRun] WHERE [lYear] = %ld";
constexpr char kInsertRun[] = "INSERT INTO [MTDFetchRun] ( [lYear], [dtBegan] ) VALUES ( %ld, %t )";
constexpr char kDeleteRun[] = "DELETE FROM [MTDFetchRun] WHERE [lYear] = %ld";

/// When the run that has not ended began; nothing without one, or when that is too long ago.
std::optional<COleDateTime> FindRun(Cellar::CConnection& connection, long year)
{
    Cellar::CBufferedRowList row(connection, kSelectRun, year);
    if (!row.MoveFirst())
        return std::nullopt;
    const COleDateTime began = row.GetDateTime("dtBegan");
    const double age = COleDateTime::GetCurrentTime().GetOleDate() - began.GetOleDate();
    return began.GetStatus() == COleDateTime::valid && age >= 0 && age <= kRemembered ? std::optional(began)
                                                                                      : std::nullopt;
}

void BeginAnew(Cellar::CConnection& connection, long year, const COleDateTime& now)
{
    connection.ExecuteDirectf(kDeleteRun, year);
    connection.AddUnlessThere(kInsertRun, year, now); // where another began just now
}

} // namespace

FetchRun::FetchRun(short year, bool isNew) : m_year(year), m_began(COleDateTime::GetCurrentTime())
{
    const Quarry::CIgnoreDirectSQL ignore;
    Cellar::CConnection& connection = Quarry::GetConnection();
    const Cellar::CConnection::Aside aside(connection);
    if (const auto began = isNew ? std::nullopt : FindRun(connection, year)) {
        m_began = *began;
        m_isGoneOnWith = true;
    } else {
        BeginAnew(connection, year, m_began);
    }
}

std::vector<ClientId> FetchRun::ListDone() const
{
    using Quarry::Where;
    using Years = Brix::CMTD_TaxYear;
    std::vector<ClientId> done;
    Years years;
    for (years.Open({{Years::kYear, m_year}, Where::AtLeast(Years::kComplete, m_began)}); !years.IsEOL();
         years.MoveNext())
        done.emplace_back(years.GetClientID());
    return done;
}

void FetchRun::End()
{
    const Quarry::CIgnoreDirectSQL ignore;
    Cellar::CConnection& connection = Quarry::GetConnection();
    const Cellar::CConnection::Aside aside(connection);
    connection.ExecuteDirectf(kDeleteRun, long{m_year});
}

} // namespace HmrcApi
