#pragma once

// Clients and partnerships by what a user types.

#include <string>
#include <vector>

#include "MorvUt/context/ClientView.h"

namespace Desk
{

/// One that was found; `status` is the word of the current tax year.
struct FoundClient
{
    ClientView client;
    CString status;
};

struct FoundClients
{
    std::vector<FoundClient> shown;
    std::size_t all = 0;      // how many fit; only with a text
    bool isThereMore = false; // than are shown
};

/// The first clients by name are read by themselves, so that a practice of 100,000 opens at once. The first text that
/// is searched for reads names, codes and references of all, once. Both throw Cellar::DatabaseError.
class ClientFinder
{
public:
    /// At most `limit` by name, of those whose name, code or UTR hold each word of `text`, in any case.
    FoundClients Find(const CString& text, std::size_t limit);
    /// What was read is read anew: another program may have added somebody.
    void Forget();

private:
    struct Entry
    {
        std::string key; // folded: name, code, UTR
        ClientView client;
    };

    void ReadAll();

    std::vector<Entry> m_all; // by key
    bool m_isRead = false;
};

} // namespace Desk
