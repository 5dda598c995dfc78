#include "Trailmark/MTDAudit.h"

#include <cstdio>
#include <exception>

#include "Cellar/BufferedRowList.h"
#include "Cellar/Transaction.h"

namespace Trailmark
{

CMTDAuditCache::CMTDAuditCache(ClientId client, Cellar::CConnection& connection) noexcept
    : m_client(client), m_connection(connection)
{}

CMTDAuditCache::~CMTDAuditCache()
{
    try {
        Flush();
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "%zu lines of the audit could not be written: %s\n", m_lines.size(), problem.what());
    }
}

void CMTDAuditCache::Add(const CString& action, short year, const CString& user, const CString& item,
                         const CString& hmrc, const CString& ofReturn)
{
    m_lines.push_back({action, year, user, item, hmrc, ofReturn});
}

void CMTDAuditCache::Flush()
{
    if (m_lines.size() > 1 && !m_connection.IsAside()) { // one statement is whole by itself
        Cellar::CTransaction transaction(m_connection);
        Write();
        transaction.Commit();
    } else {
        Write();
    }
    m_lines.clear();
}

void CMTDAuditCache::Write()
{
    for (const Line& line : m_lines)
        m_connection.ExecuteDirectf("INSERT INTO MTDAudit ( lClientID, strAction, nYear, strUserID, strItem, strHMRC, "
                                    "strReturn ) VALUES ( %ld, %s, %d, %s, %s, %s, %s )",
                                    m_client.Get(), line.action, line.year, line.user, line.item, line.hmrc,
                                    line.ofReturn);
}

std::vector<AuditLine> ReadAudit(ClientId client, Cellar::CConnection& connection)
{
    std::vector<AuditLine> lines;
    Cellar::CBufferedRowList rows(connection,
                                  "SELECT dtWritten, strAction, nYear, strUserID, strItem, strHMRC, strReturn "
                                  "FROM MTDAudit WHERE lClientID = %ld ORDER BY lID",
                                  client.Get());
    for (; !rows.IsEOL(); rows.MoveNext())
        lines.push_back({rows.GetDateTime("dtWritten"), rows.GetText("strAction"), rows.GetShort("nYear"),
                         rows.GetText("strUserID"), rows.GetText("strItem"), rows.GetText("strHMRC"),
                         rows.GetText("strReturn")});
    return lines;
}

} // namespace Trailmark
