#include "Cellar/detail/Levels.h"

#include <algorithm>
#include <cassert>
#include <stdexcept>

#include "Cellar/DatabaseError.h"

namespace Cellar::Detail
{

void Levels::Begin(const Begun& begun)
{
    if (m_aside > 0)
        throw std::logic_error("a transaction is begun within statements that stand aside from transactions");
    const int level = GetCount() + 1;
    m_levels.reserve(m_levels.size() + 1); // what follows the savepoint cannot fail
    if (m_state == State::Started)
        m_driver.SetSavepoint(level);
    m_levels.push_back({begun});
}

void Levels::BeginWrite(const Subject& subject)
{
    const bool hadBegun = HasBegun();
    Begin({Intent::Write, subject});
    try {
        BeforeWrite();
        m_driver.LockForWriting(subject);
    } catch (...) {
        try {
            if (hadBegun) {
                Rollback();
            } else { // it has written nothing yet, and is over whatever the engine says
                m_state = State::Waiting;
                Pop();
                m_driver.Rollback();
            }
        } catch (...) { // a lost connection: what counts is the error that was first
        }
        throw;
    }
}

void Levels::StandAside()
{
    if (HasBegun())
        throw std::logic_error("the open transaction has begun: nothing can be written beside it");
    ++m_aside;
}

void Levels::Commit()
{
    assert(!m_levels.empty() && "commit without a transaction");
    if (m_levels.empty())
        return;
    RefuseWhenLost();
    if (m_state == State::Started) {
        try {
            if (m_levels.size() == 1)
                m_driver.Commit();
            else
                m_driver.ReleaseSavepoint(GetCount());
        } catch (...) {
            AfterFailure(); // a full disk may have ended the transaction
            throw;
        }
    }
    const bool hasWritten = m_levels.back().hasWritten;
    Pop();
    if (!m_levels.empty() && hasWritten)
        m_levels.back().hasWritten = true;
}

void Levels::Rollback()
{
    if (m_levels.empty())
        return;
    ++m_epoch;
    const int level = GetCount();
    const State state = m_state;
    Pop(); // first: the level is over whatever the engine says
    // Lost is also what could not be undone in part: the engine may have it open still.
    if (state == State::Waiting || (state == State::Lost && (level > 1 || !IsOpen())))
        return;
    try {
        if (level == 1)
            m_driver.Rollback();
        else
            m_driver.RollbackToSavepoint(level);
    } catch (...) {
        if (!m_levels.empty())
            m_state = State::Lost; // what the outer levels hold is not certain any more
        throw;
    }
}

bool Levels::HasWrites() const noexcept
{
    return m_state != State::Lost &&
           std::any_of(m_levels.begin(), m_levels.end(), [](const Level& level) { return level.hasWritten; });
}

std::vector<Begun> Levels::GetAll() const
{
    std::vector<Begun> all;
    for (const Level& level : m_levels)
        all.push_back(level.begun);
    return all;
}

void Levels::BeforeWrite()
{
    RefuseWhenLost();
    if (m_levels.empty() || m_state == State::Started || m_aside > 0)
        return;
    m_driver.BeginWrite();
    try {
        for (int level = 2; level <= GetCount(); ++level)
            m_driver.SetSavepoint(level);
    } catch (...) {
        m_driver.Rollback();
        throw;
    }
    m_state = State::Started;
}

void Levels::AfterWrite() noexcept
{
    if (!m_levels.empty() && m_aside == 0)
        m_levels.back().hasWritten = true;
}

void Levels::AfterFailure() noexcept
{
    if (m_state == State::Started && !IsOpen())
        m_state = State::Lost;
}

bool Levels::IsOpen() const noexcept
{
    try {
        return m_driver.InTransaction();
    } catch (...) { // no answer: the connection is gone, and the transaction with it
        return false;
    }
}

void Levels::RefuseWhenLost() const
{
    if (m_state == State::Lost)
        throw DatabaseError(DatabaseError::Category::Other, "",
                            "the database has undone this transaction after an earlier error, nothing of it was "
                            "saved; close it and begin again",
                            "");
}

void Levels::Pop() noexcept
{
    m_levels.pop_back();
    if (!m_levels.empty())
        return;
    m_state = State::Waiting;
    ++m_epoch;
}

} // namespace Cellar::Detail
