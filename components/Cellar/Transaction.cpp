#include "Cellar/Transaction.h"

#include <cstdio>
#include <stdexcept>
#include <utility>

namespace Cellar
{

CTransaction::CTransaction(CConnection& connection, Intent intent, const Subject& subject)
    : m_connection(connection.Watch()), m_level(0)
{
    connection.Begin(intent, subject);
    m_level = connection.GetLevel();
}

CTransaction::~CTransaction()
{
    try {
        Rollback();
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "rolling back: %s\n", exception.what());
    }
}

void CTransaction::Commit()
{
    const auto connection = m_connection.lock();
    if (m_level == 0 || !connection || (*connection)->GetLevel() != m_level)
        throw std::logic_error("another transaction than the innermost one is committed");
    (*connection)->Commit();
    m_level = 0;
}

void CTransaction::Rollback()
{
    const int level = std::exchange(m_level, 0);
    const auto connection = m_connection.lock();
    if (level != 0 && connection)
        (*connection)->RollbackTo(level);
}

} // namespace Cellar
