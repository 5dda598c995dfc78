#pragma once

// Who decided what: about figures of HMRC's, and about locks.

#include <string>
#include <vector>

#include "Afx/text/CString.h"
#include "Afx/time/DateTime.h"
#include "Cellar/Connection.h"
#include "Quarry/Keys.h"
#include "Trailmark/Export.h"

namespace Trailmark
{

/// Gathers what is done for one client and writes it to the audit, at the latest in the end. What concerns no client
/// (locks) is client 0's.
///
/// The lines share the fate of the transaction that is open when they are written: what is rolled back has not
/// happened.
class TRAILMARK_API CMTDAuditCache
{
public:
    /// `connection` must outlive it.
    CMTDAuditCache(ClientId client, Cellar::CConnection& connection) noexcept;
    /// Writes what is left; a failure is told on standard error.
    ~CMTDAuditCache();
    CMTDAuditCache(const CMTDAuditCache&) = delete;
    CMTDAuditCache& operator=(const CMTDAuditCache&) = delete;

    /// What was done ("accept"), for which real tax year (0: none), by which user id; on which item, from which value
    /// of HMRC's, to or beside which value of the return's.
    void Add(const CString& action, short year, const CString& user, const CString& item, const CString& hmrc,
             const CString& ofReturn);
    /// Writes all lines or none (aside from open levels: each by itself). Throws Cellar::DatabaseError; they are kept
    /// then.
    void Flush();

private:
    struct Line
    {
        CString action;
        short year;
        CString user, item, hmrc, ofReturn;
    };
    void Write();

    ClientId m_client;
    Cellar::CConnection& m_connection;
    std::vector<Line> m_lines;
};

/// One line of the audit, as it was written.
struct AuditLine
{
    COleDateTime when; // local time of the database
    CString action;
    short year = 0; // 0: none
    CString user, item, hmrc, ofReturn;
};

/// What the audit holds for a client (0: for none), in the order written. Throws Cellar::DatabaseError.
TRAILMARK_API std::vector<AuditLine> ReadAudit(ClientId client, Cellar::CConnection& connection);

} // namespace Trailmark
