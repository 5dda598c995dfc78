#pragma once

// Clients for a practice that needs many.

#include "Brix/Records.h"
#include "Quarry/Session.h"

namespace Test
{

/// Adds clients who can be fetched for, in one transaction. Answers the id of the last.
inline long AddClients(int count)
{
    Quarry::CTransaction transaction(Cellar::Intent::Write);
    Brix::CClient clients;
    for (int number = 1; number <= count; ++number) {
        CString text;
        text.Format("AA%06dA", 100000 + number);
        clients.AddNew();
        clients.SetCode(text);
        clients.SetName(text);
        clients.SetNINumber(text);
        clients.SetUTR("2234567890");
        clients.Update();
    }
    transaction.Commit();
    return clients.IsEOL() ? 0 : clients.GetID();
}

} // namespace Test
