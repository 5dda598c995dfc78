#pragma once

// Clients and partnerships in one form, for lists and headings.

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Afx/text/CString.h"
#include "Brix/Records.h"
#include "MorvUt/context/status/StatusView.h"
#include "MorvUt/Export.h"

enum class KindOfClient
{
    Individual,
    Trust,
    Estate,
    Partnership,
    Llp
};

/// "individual", "trust", "estate", "partnership", "llp".
MORVUT_API const char* NameOf(KindOfClient kind) noexcept;
/// The kind of that name, in any case.
MORVUT_API std::optional<KindOfClient> KindOfClientNamed(const std::string& name) noexcept;

struct ClientView
{
    long id = 0; // of its own table
    CString code, name;
    KindOfClient kind = KindOfClient::Individual;
    CString nationalInsuranceNumber; // a partnership has none
    CString utr;

    bool IsPartnership() const noexcept { return kind == KindOfClient::Partnership || kind == KindOfClient::Llp; }
};

/// The current row.
MORVUT_API ClientView ViewOf(const Brix::CClient& client);
MORVUT_API ClientView ViewOf(const Brix::CPartnership& partnership);

// These read the current connection and throw Cellar::DatabaseError.

/// All clients, then all partnerships, each by its id.
MORVUT_API std::vector<ClientView> ListClients();
/// The same one by one: none is held. `visit` must not wait for a user.
MORVUT_API void ForEachClient(const std::function<void(const ClientView&)>& visit);
/// The same with the status of each in the real tax year, as StatusOfAll gives it: a thousand are read at a time, with
/// one statement for each table.
MORVUT_API void ForEachStatus(short year, const std::function<void(const ClientView&, const ClientStatus&)>& visit);
/// The clients whose code or number (row id) a user gave: exactly this code, else this number, else the code in any
/// case. An accountant's codes may be numbers, and then they are what is meant. Several where another program has given
/// one code twice.
MORVUT_API std::vector<ClientView> FindClients(const std::string& codeOrId);
MORVUT_API std::vector<ClientView> FindPartnerships(const std::string& codeOrId);
/// The only client of them; nothing where there are several.
MORVUT_API std::optional<ClientView> FindClient(const std::string& codeOrId);

/// Why these particulars cannot be a new client's or partnership's, for the user: no code or name, a code that one has
/// already (in any case), identifiers that are mistyped or that this kind has not. Identifiers are never repeated.
/// Empty when nothing is wrong.
MORVUT_API CString WhyNotNewClient(const ClientView& wanted);
/// Adds it, active, and answers it with its id. Throws std::invalid_argument with the answer of WhyNotNewClient, which
/// it asks within its transaction: two at once cannot make one code twice.
MORVUT_API ClientView AddClient(const ClientView& wanted);
