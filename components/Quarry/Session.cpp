#include "Quarry/Session.h"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "Afx/text/TextFold.h"
#include "Quarry/detail/Companion.h"

namespace Quarry
{
namespace
{

constexpr char kCurrent[] = "BRIX";

struct RollbackListener
{
    int number;
    std::string database;
    std::function<void()> function;
};

struct Session
{
    std::unique_ptr<Cellar::CConnection> connection;
    std::vector<RollbackListener> rollbackListeners;
    int lastNumber = 0;
};

Session& Current()
{
    static auto& session = *new Session;
    return session;
}

bool IsCurrent(const Cellar::CConnection& connection) noexcept { return Current().connection.get() == &connection; }

/// As listeners know it.
std::string NameOf(Cellar::CConnection& connection)
{
    return IsCurrent(connection) ? kCurrent : Detail::CompanionOf(connection).database;
}

void TellCachesToReload(const std::string& database)
{
    const std::vector<RollbackListener> listeners = Current().rollbackListeners;
    for (const RollbackListener& listener : listeners) {
        const auto& still = Current().rollbackListeners;
        if (listener.database == database &&
            std::any_of(still.begin(), still.end(), [&](const auto& l) { return l.number == listener.number; }))
            listener.function();
    }
}

/// Tables of the data model that caches are made from all have this prefix.
bool NamesDataModel(std::string_view statement) { return Afx::FoldUpper(statement).find("BRIX") != std::string::npos; }

void Hook(Cellar::CConnection& connection)
{
    connection.OnRollback([&connection] { TellCachesToReload(NameOf(connection)); });
    connection.OnDirectStatement([&connection](std::string_view statement) {
        if (NamesDataModel(statement))
            TellCachesToReload(NameOf(connection));
    });
}

} // namespace

Cellar::CConnection& GetConnection()
{
    if (!HasConnection())
        throw Cellar::DatabaseError(Cellar::DatabaseError::Category::LostConnection, "", "no practice is open", "");
    return *Current().connection;
}

bool HasConnection() noexcept { return Current().connection != nullptr; }

void SetConnection(std::unique_ptr<Cellar::CConnection> connection)
{
    Current().connection = std::move(connection);
    if (HasConnection())
        Hook(*Current().connection);
    TellCachesToReload(kCurrent);
}

void SetDatabase(Cellar::CConnection& connection, const char* database)
{
    if (std::string_view(database) == kCurrent)
        throw std::logic_error("another practice is given the name of the current one");
    Detail::CompanionOf(connection).database = database;
    Hook(connection);
}

void BeginTransaction() { GetConnection().Begin(); }

void Commit()
{
    if (GetTransactionLevel() > 0) {
        GetConnection().Commit();
        return;
    }
#ifndef NDEBUG
    throw std::logic_error("commit without an open transaction");
#endif
}

void Rollback()
{
    if (GetTransactionLevel() == 0)
        return;
    GetConnection().Rollback();
}

Detail::Companion& Detail::CompanionOf(Cellar::CConnection& connection)
{
    std::shared_ptr<void>& companion = connection.Companion();
    if (!companion)
        companion = std::make_shared<Companion>();
    return *static_cast<Companion*>(companion.get());
}

const char* Detail::DatabaseOf(Cellar::CConnection& connection, const Table& table)
{
    if (IsCurrent(connection))
        return table.database;
    const std::string& name = CompanionOf(connection).database;
    return name.empty() ? nullptr : name.c_str();
}

int GetTransactionLevel() noexcept { return HasConnection() ? Current().connection->GetLevel() : 0; }

int AddRollbackListener(std::function<void()> listener, const char* database)
{
    const int number = ++Current().lastNumber;
    Current().rollbackListeners.push_back({number, database, std::move(listener)});
    return number;
}

void RemoveRollbackListener(int number)
{
    std::erase_if(Current().rollbackListeners, [&](const RollbackListener& l) { return l.number == number; });
}

CIgnoreDirectSQL::CIgnoreDirectSQL() : CIgnoreDirectSQL(GetConnection()) {}
CIgnoreDirectSQL::CIgnoreDirectSQL(Cellar::CConnection& connection) : m_suspend(connection) {}
CIgnoreDirectSQL::~CIgnoreDirectSQL() = default;

} // namespace Quarry
