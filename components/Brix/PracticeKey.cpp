#include "Brix/PracticeKey.h"

#include <algorithm>

#include "Shellkit/Bytes.h"
#include "Shellkit/Envelope.h"
#include "Shellkit/PracticeKey.h"

namespace Brix
{
namespace
{

using Cellar::DatabaseError;
using Cellar::SqlText;

constexpr char kCheckText[] = "the key of this practice";

enum class Secrets
{
    None,
    Opened, // one at least
    Shut
};

/// What the key that is set does to the secrets that are stored, in whatever table.
Secrets TrySecrets(Cellar::CConnection& connection)
{
    Secrets found = Secrets::None;
    for (const Quarry::Table* const table : AllTables()) {
        for (const Quarry::Column& column : table->columns) {
            if (column.type != Cellar::ColumnType::Binary)
                continue;
            const SqlText name = SqlText::Bracketed(column.name);
            const SqlText select = SqlText("SELECT ") + name + " FROM " + SqlText::Bracketed(table->sqlName) +
                                   " WHERE " + name + " IS NOT NULL";
            for (const auto& row : connection.Query(select, {}).rows) {
                const Cellar::Bytes envelope = Cellar::ToBytes(row.at(0));
                if (!Shellkit::IsEnvelope(envelope, Shellkit::KeyId::Practice))
                    continue;
                if (auto plain = Shellkit::Open(envelope)) {
                    Shellkit::Wipe(plain->data(), plain->size());
                    return Secrets::Opened;
                }
                found = Secrets::Shut;
            }
        }
    }
    return found;
}

/// Left to the next opening when the practice is busy or cannot be written.
void WriteKeyCheck(Cellar::CConnection& connection)
{
    try {
        const Cellar::SuspendDirectSQLEvents quiet(connection);
        connection.ExecuteDirectf("UPDATE [BRIXSchema] SET [vbKeyCheck] = %b WHERE [vbKeyCheck] IS NULL",
                                  MakeKeyCheck());
    } catch (const DatabaseError& error) {
        if (error.GetCategory() != DatabaseError::Category::Busy &&
            error.GetCategory() != DatabaseError::Category::ReadOnly)
            throw;
    }
}

} // namespace

Cellar::Value MakeKeyCheck()
{
    const auto envelope = Shellkit::Seal(Shellkit::KeyId::Practice, std::string_view(kCheckText));
    return envelope ? Cellar::Value(*envelope) : Cellar::Value();
}

Cellar::Value MakeKeyCheck(std::span<const std::uint8_t> key)
{
    const auto envelope = Shellkit::SealWith(key, Shellkit::AsBytes(kCheckText));
    return envelope ? Cellar::Value(*envelope) : Cellar::Value();
}

bool IsPracticeKey(Cellar::CConnection& connection, const SchemaVersion& version)
{
    if (!version.keyCheck.empty())
        return Shellkit::OpenText(version.keyCheck) == kCheckText;
    if (!Shellkit::HasPracticeKey() || TrySecrets(connection) == Secrets::Shut)
        return false;
    WriteKeyCheck(connection);
    return true;
}

} // namespace Brix
