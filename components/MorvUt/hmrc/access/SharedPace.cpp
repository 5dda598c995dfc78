#include "MorvUt/hmrc/access/SharedPace.h"

#include "Cellar/BufferedRowList.h"
#include "Cellar/DatabaseError.h"
#include "Quarry/Session.h"

namespace HmrcApi
{
namespace
{

constexpr long kRow = 1;
constexpr std::int64_t kSecond = 1000;
constexpr std::int64_t kFarthest = 60 * kSecond; // later than any run has taken: the clock was set back

constexpr char kSelectPace[] = "SELECT [dtNext], GETUTCDATE() AS [dtNow] FROM [MTDPace] WHERE [lID] = %ld";
constexpr char kInsert[] = "INSERT INTO [MTDPace] ( [lID], [dtNext] ) VALUES ( %ld, GETUTCDATE() )";
constexpr char kUpdate[] = "UPDATE [MTDPace] SET [dtNext] = %t WHERE [lID] = %ld AND [dtNext] ";

/// False when another run was quicker. Moments compare as what they were stored as.
bool Take(Cellar::CConnection& connection, const Cellar::Value& before, std::int64_t next)
{
    const bool isText = before.GetKind() == Cellar::Value::Kind::Text;
    const Cellar::SqlText statement =
        Cellar::SqlText(kUpdate) + (isText ? Cellar::SqlText("= %s") : Cellar::SqlText("= %t"));
    return connection.ExecuteDirectf(statement, COleDateTime(Afx::FromUnixMilliseconds(next)), kRow, before) != 0;
}

} // namespace

std::int64_t TakeSharedSecond()
{
    constexpr int kAttempts = 50; // each that fails let another run go on
    const Quarry::CIgnoreDirectSQL ignore;
    Cellar::CConnection& connection = Quarry::GetConnection();
    const Cellar::CConnection::Aside aside(connection);
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        Cellar::CBufferedRowList row(connection, kSelectPace, kRow);
        if (!row.MoveFirst()) {
            connection.AddUnlessThere(kInsert, kRow);
            continue;
        }
        const std::int64_t now = row.GetDateTime("dtNow").ToMilliseconds();
        const std::int64_t next = row.GetDateTime("dtNext").ToMilliseconds();
        const std::int64_t turn = next > now && next - now <= kFarthest ? next : now;
        if (Take(connection, row.Get("dtNext"), turn + kSecond))
            return turn - now;
    }
    throw Cellar::DatabaseError(Cellar::DatabaseError::Category::Busy, "",
                                "other programs take all turns at HMRC: try again", "");
}

} // namespace HmrcApi
