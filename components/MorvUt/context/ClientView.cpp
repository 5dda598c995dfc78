#include "MorvUt/context/ClientView.h"

#include <cstdint>
#include <stdexcept>

#include "Afx/text/Numbers.h"
#include "Afx/text/TextFold.h"
#include "MorvUt/context/status/ClientStatus.h"
#include "MorvUt/identifiers/TaxIdentifiers.h"
#include "MorvUt/res/Strings.h"
#include "Quarry/DataCursor.h"
#include "Quarry/Session.h"

namespace
{

struct KindName
{
    KindOfClient kind;
    const char* name;
    const char* entityType; // of a client; null: a partnership
};

constexpr KindName kKinds[] = {
    {KindOfClient::Individual, "individual", "Individual"},
    {KindOfClient::Trust, "trust", "Trust"},
    {KindOfClient::Estate, "estate", "Estate"},
    {KindOfClient::Partnership, "partnership", nullptr},
    {KindOfClient::Llp, "llp", nullptr},
};

const KindName& RowOf(KindOfClient kind) noexcept
{
    for (const KindName& row : kKinds)
        if (row.kind == kind)
            return row;
    return kKinds[0];
}

/// 0 when the text is no row id: a plain number of 32 bits.
long IdOf(const std::string& text)
{
    const long id = Afx::ParseWhole<std::int32_t>(text).value_or(0);
    return id > 0 && text.front() != '0' ? id : 0;
}

template<class Rows>
std::vector<ClientView> FindAll(const std::string& codeOrId)
{
    Rows rows;
    std::vector<ClientView> exactly, inAnyCase; // as the database compares
    for (rows.Open({{Rows::kCode, codeOrId}}); !rows.IsEOL(); rows.MoveNext())
        (rows.GetCode() == codeOrId.c_str() ? exactly : inAnyCase).push_back(ViewOf(rows));
    if (!exactly.empty())
        return exactly;
    const long id = IdOf(codeOrId);
    return id != 0 && rows.Open({{0, id}}) ? std::vector{ViewOf(rows)} : inAnyCase;
}

std::optional<ClientView> OnlyOne(const std::vector<ClientView>& found)
{
    return found.size() == 1 ? std::optional(found.front()) : std::nullopt;
}

template<class Rows>
bool HasCode(const CString& code)
{
    return Rows().Open({{Rows::kCode, code}}); // the database compares without regard to case
}

CString WhyNotCode(const CString& code)
{
    return HasCode<Brix::CClient>(code) || HasCode<Brix::CPartnership>(code) ? LibraryText(IDS_CLIENT_EXISTS)
                                                                             : CString();
}

void Fill(Brix::CClient& row, const ClientView& wanted)
{
    row.SetNINumber(wanted.nationalInsuranceNumber);
    row.SetTrust(wanted.kind != KindOfClient::Individual);
    row.SetEntityType(RowOf(wanted.kind).entityType);
}

void Fill(Brix::CPartnership& row, const ClientView& wanted) { row.SetLLP(wanted.kind == KindOfClient::Llp); }

template<class Rows>
ClientView Add(const ClientView& wanted)
{
    Rows row;
    row.AddNew();
    row.SetCode(wanted.code);
    row.SetName(wanted.name);
    row.SetUTR(wanted.utr);
    row.SetActive(true);
    Fill(row, wanted);
    row.Update();
    return ViewOf(row);
}

/// Walks over the clients, or the partnerships, and reads what hangs on them page by page. As long as the walk goes on
/// the engine keeps the state of the data, so that all pages show the same.
template<class Owner, class Visit>
void VisitAll(short year, const Visit& visit)
{
    constexpr std::size_t kPage = 1000;
    std::vector<ClientView> views;
    std::vector<StatusFacts> facts;
    const auto visitPage = [&] {
        const std::vector<ClientStatus> statuses = StatusOf(facts, year);
        for (std::size_t i = 0; i < views.size(); ++i)
            visit(views[i], statuses[i]);
        views.clear();
        facts.clear();
    };
    for (Quarry::CCursor<Owner> owner; owner.Next();) {
        views.push_back(ViewOf(*owner));
        facts.push_back(StatusFactsOf(*owner));
        if (views.size() == kPage)
            visitPage();
    }
    visitPage();
}

} // namespace

const char* NameOf(KindOfClient kind) noexcept { return RowOf(kind).name; }

std::optional<KindOfClient> KindOfClientNamed(const std::string& name) noexcept
{
    for (const KindName& row : kKinds)
        if (Afx::EqualNoCase(row.name, name))
            return row.kind;
    return std::nullopt;
}

ClientView ViewOf(const Brix::CClient& client)
{
    const KindOfClient kind = !client.GetTrust() ? KindOfClient::Individual
                              : IsEstate(client) ? KindOfClient::Estate
                                                 : KindOfClient::Trust;
    return {client.GetID(), client.GetCode(), client.GetName(), kind, client.GetNINumber(), client.GetUTR()};
}

ClientView ViewOf(const Brix::CPartnership& partnership)
{
    return {partnership.GetID(),
            partnership.GetCode(),
            partnership.GetName(),
            partnership.GetLLP() ? KindOfClient::Llp : KindOfClient::Partnership,
            {},
            partnership.GetUTR()};
}

std::vector<ClientView> ListClients()
{
    std::vector<ClientView> list;
    ForEachClient([&](const ClientView& client) { list.push_back(client); });
    return list;
}

void ForEachClient(const std::function<void(const ClientView&)>& visit)
{
    for (Quarry::CCursor<Brix::CClient> client; client.Next();)
        visit(ViewOf(*client));
    for (Quarry::CCursor<Brix::CPartnership> partnership; partnership.Next();)
        visit(ViewOf(*partnership));
}

void ForEachStatus(short year, const std::function<void(const ClientView&, const ClientStatus&)>& visit)
{
    VisitAll<Brix::CClient>(year, visit);
    VisitAll<Brix::CPartnership>(year, visit);
}

std::vector<ClientView> FindClients(const std::string& codeOrId) { return FindAll<Brix::CClient>(codeOrId); }
std::vector<ClientView> FindPartnerships(const std::string& codeOrId) { return FindAll<Brix::CPartnership>(codeOrId); }
std::optional<ClientView> FindClient(const std::string& codeOrId) { return OnlyOne(FindClients(codeOrId)); }

CString WhyNotNewClient(const ClientView& wanted)
{
    const auto isBlank = [](CString text) { return text.Trim().IsEmpty(); };
    if (isBlank(wanted.code) || isBlank(wanted.name))
        return LibraryText(IDS_CLIENT_NEEDS_CODE_AND_NAME);
    if (!wanted.nationalInsuranceNumber.IsEmpty()) {
        if (wanted.kind != KindOfClient::Individual)
            return LibraryText(IDS_NINO_OF_INDIVIDUAL_ONLY);
        if (const CString why = WhyNotNINumber(wanted.nationalInsuranceNumber); !why.IsEmpty())
            return why;
    }
    if (!wanted.utr.IsEmpty())
        if (const CString why = WhyNotUTR(wanted.utr); !why.IsEmpty())
            return why;
    return WhyNotCode(wanted.code);
}

ClientView AddClient(const ClientView& wanted)
{
    Quarry::CTransaction transaction(Cellar::Intent::Write);
    if (const CString why = WhyNotNewClient(wanted); !why.IsEmpty())
        throw std::invalid_argument(why.Str());
    const ClientView added = wanted.IsPartnership() ? Add<Brix::CPartnership>(wanted) : Add<Brix::CClient>(wanted);
    transaction.Commit();
    return added;
}
