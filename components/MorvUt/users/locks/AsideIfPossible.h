#pragma once

// For rows that no rollback should take.

#include <optional>

#include "Cellar/Connection.h"

/// While it lives, statements stand aside from the open levels where they still can; where these have begun, statements
/// share their fate.
class AsideIfPossible
{
public:
    explicit AsideIfPossible(Cellar::CConnection& connection)
    {
        if (!connection.HasBegun())
            m_aside.emplace(connection);
    }

private:
    std::optional<Cellar::CConnection::Aside> m_aside;
};
