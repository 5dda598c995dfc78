#include "Quarry/Session.h"

#include <algorithm>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "Afx/text/TextFold.h"
#include "Quarry/detail/IdBlocks.h"

namespace Quarry
{
namespace
{

struct RollbackListener
{
    int number;
    std::function<void()> function;
};

struct Session
{
    std::unique_ptr<Cellar::CConnection> connection;
    std::vector<RollbackListener> rollbackListeners;
    int lastNumber = 0;
    std::map<const Table*, Detail::IdBlock> idBlocks;
};

Session& Current()
{
    static auto& session = *new Session;
    return session;
}

void TellCachesToReload()
{
    const std::vector<RollbackListener> listeners = Current().rollbackListeners;
    for (const RollbackListener& listener : listeners) {
        const auto& still = Current().rollbackListeners;
        if (std::any_of(still.begin(), still.end(), [&](const auto& l) { return l.number == listener.number; }))
            listener.function();
    }
}

/// Tables of the data model that caches are made from all have this prefix.
bool NamesDataModel(std::string_view statement) { return Afx::FoldUpper(statement).find("BRIX") != std::string::npos; }

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
    Current().idBlocks.clear();
    if (HasConnection()) {
        Current().connection->OnRollback(&TellCachesToReload);
        Current().connection->OnDirectStatement([](std::string_view statement) {
            if (NamesDataModel(statement))
                TellCachesToReload();
        });
    }
    TellCachesToReload();
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

Detail::IdBlock& Detail::BlockOf(const Table& table) { return Current().idBlocks[&table]; }

int GetTransactionLevel() noexcept { return HasConnection() ? Current().connection->GetLevel() : 0; }

int AddRollbackListener(std::function<void()> listener)
{
    const int number = ++Current().lastNumber;
    Current().rollbackListeners.push_back({number, std::move(listener)});
    return number;
}

void RemoveRollbackListener(int number)
{
    std::erase_if(Current().rollbackListeners, [&](const RollbackListener& l) { return l.number == number; });
}

CIgnoreDirectSQL::CIgnoreDirectSQL() : m_suspend(GetConnection()) {}
CIgnoreDirectSQL::~CIgnoreDirectSQL() = default;

} // namespace Quarry
