#pragma once

// Schedules of one client's year from its stored staging rows: what both routes to HMRC's records do alike.

#include <functional>

#include "MorvUt/hmrc/schedules/NewSchedules.h"
#include "MorvUt/hmrc/staging/StagedYear.h"
#include "Quarry/Keys.h"
#include "Quarry/Session.h"

namespace HmrcApi
{

/// `year`: real. Throws Cellar::DatabaseError.
class StagedSchedules
{
public:
    /// Rows and return, read once under the lock, with what is being made.
    struct Creation
    {
        Quarry::CTransaction transaction; // before anything is read
        StagedYear staged;
        NewScheduleWriter writer;

        Creation(ClientId client, short year);
    };

    StagedSchedules(ClientId client, short year) noexcept : m_client(client), m_year(year) {}

    bool IsEmploymentNew() const;
    bool IsPensionNew() const; // of any kind that becomes a schedule
    bool IsPensionNew(bool (*isOfKind)(long kind)) const;
    /// In a transaction of its own, or a level of the open one.
    void Create(const std::function<void(Creation&)>& work);
    void CreatePensions(bool (*isOfKind)(long kind));
    void CreateAll(); // forgets what was created before
    /// What was made and committed.
    const CreatedSchedules& GetCreated() const noexcept { return m_created; }

private:
    ClientId m_client;
    short m_year;
    CreatedSchedules m_created;
};

} // namespace HmrcApi
