#pragma once

// Nested transactions over one engine transaction.

#include <cstdint>
#include <vector>

#include "Cellar/detail/Driver.h"

namespace Cellar::Detail
{

/// The open levels of a connection. The engine's transaction begins with the first write; the outermost level is that
/// transaction, each further one a savepoint in it.
class Levels
{
public:
    explicit Levels(Driver& driver) noexcept : m_driver(driver) {}

    void Begin(const Begun& begun = {});
    /// Begins a level that means to write: the engine's transaction starts at once. When it throws, nothing changed.
    void BeginWrite(const Subject& subject);
    void Commit();
    void Rollback();
    int GetCount() const noexcept { return static_cast<int>(m_levels.size()); }
    std::vector<Begun> GetAll() const; // outermost first
    bool HasWrites() const noexcept;
    bool HasBegun() const noexcept { return !m_levels.empty() && m_state != State::Waiting; }
    /// Moves on when a level is rolled back and when the outermost one ends.
    std::uint64_t GetEpoch() const noexcept { return m_epoch; }

    /// From here to StepBack (calls nest) statements are no part of the levels. Throws std::logic_error once the levels
    /// have begun.
    void StandAside();
    void StepBack() noexcept { --m_aside; }
    bool IsAside() const noexcept { return m_aside > 0; }

    /// Before a statement that may write: opens the transaction when levels are open. When it throws, nothing changed.
    void BeforeWrite();
    void AfterWrite() noexcept; // the statement went through
    /// After a failed statement: the engine may have ended the transaction by itself.
    void AfterFailure() noexcept;

private:
    enum class State : std::uint8_t
    {
        Waiting, // no write yet, nothing sent
        Started,
        Lost // the engine ended the transaction, or could not undo a part of it; its levels wait for their owners
    };
    struct Level
    {
        Begun begun;
        bool hasWritten = false;
    };
    bool IsOpen() const noexcept; // the engine's transaction
    void RefuseWhenLost() const;
    void Pop() noexcept;

    Driver& m_driver;
    std::vector<Level> m_levels;
    State m_state = State::Waiting;
    std::uint64_t m_epoch = 0;
    int m_aside = 0;
};

} // namespace Cellar::Detail
