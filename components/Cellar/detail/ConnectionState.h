#pragma once

// What a connection consists of.

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Cellar/Connection.h"
#include "Cellar/detail/Arguments.h"
#include "Cellar/detail/Driver.h"
#include "Cellar/detail/Levels.h"
#include "Cellar/detail/Statements.h"

namespace Cellar
{

struct CConnection::State
{
    explicit State(Detail::OpenedDriver opened)
        : driver(std::move(opened.driver)), connectionText(opened.connectionText), levels(*driver), statements(*driver)
    {}

    std::unique_ptr<Detail::Driver> driver; // first, so that it ends last
    CString connectionText;
    Detail::Levels levels;
    Detail::Statements statements;
    std::function<void(std::string_view)> hook;
    std::function<void()> rollbackHook;
    std::vector<std::function<bool(bool isLast)>> waiting;
    int suspended = 0;

    /// New rows that wait for the next statement (ExecuteLater): all of the innermost level.
    struct Unsent
    {
        std::vector<std::string> statements; // T-SQL
        std::vector<Value> values;           // of all, in their order
    } unsent;

    /// Runs `action`; its errors get the statement, unless they are of one that waited for it.
    template<class Action>
    auto Reporting(std::string_view statement, Action action)
    {
        try {
            return action();
        } catch (const DatabaseError& error) {
            levels.AfterFailure();
            throw DatabaseError(error.GetCategory(), error.GetCode(), error.GetReason(),
                                error.GetStatement().empty() ? std::string(statement) : error.GetStatement());
        }
    }

    /// The statement, after all that must have happened before it is run.
    Detail::UsedStatement Ready(std::string_view statement, std::span<const Value> values)
    {
        Detail::UsedStatement used = statements.Use(statement);
        const PreparedText& prepared = used.GetPrepared();
        Detail::CheckArguments(prepared, values);
        SendUnsent();
        if (prepared.usesSessionId)
            driver->GetSessionId(); // it may write, which must not happen within the statement
        if (prepared.effect != Effect::Read)
            levels.BeforeWrite();
        used.Compile(*driver);
        return used;
    }

    /// Before anything else is sent, and before a level begins or ends.
    void SendUnsent()
    {
        if (unsent.statements.empty())
            return;
        const Unsent sent = std::exchange(unsent, {});
        Detail::UsedStatement used = sent.statements.size() == 1 ? statements.Use(sent.statements.front())
                                                                 : statements.UseTogether(sent.statements);
        Reporting(used.GetText(), [&] {
            used.Compile(*driver);
            used->Execute(sent.values);
        });
    }
};

} // namespace Cellar
