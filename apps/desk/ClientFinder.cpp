#include "ClientFinder.h"

#include <algorithm>
#include <map>

#include "Afx/text/TextFold.h"
#include "Afx/windows/WindowSystem.h"
#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "Quarry/DataCursor.h"

namespace Desk
{
namespace
{

using Brix::CClient;
using Brix::CPartnership;

// What a line of the list and the search need; the row id first.
const std::vector<int> kClientColumns{
    0, CClient::kCode, CClient::kName, CClient::kUTR, CClient::kTrust, CClient::kEntityType};
const std::vector<int> kFirmColumns{0, CPartnership::kCode, CPartnership::kName, CPartnership::kUTR,
                                    CPartnership::kLLP};

std::string KeyOf(const ClientView& client)
{
    return Afx::FoldLower(client.name.Str() + '\n' + client.code.Str() + '\n' + client.utr.Str());
}

template<class Owner>
void AppendFirst(std::vector<ClientView>& views, const std::vector<int>& columns, std::size_t limit)
{
    Owner owner;
    for (owner.Open({}, {{Owner::kName}}, {columns, static_cast<int>(limit)}); !owner.IsEOL(); owner.MoveNext())
        views.push_back(ViewOf(owner));
}

std::vector<std::string> WordsOf(const CString& text)
{
    std::vector<std::string> words;
    for (int at = 0; at >= 0;)
        if (const CString word = text.Tokenize(" ", at); at >= 0)
            words.push_back(Afx::FoldLower(word.View()));
    return words;
}

/// The words of these rows' statuses, by their ids.
template<class Owner>
void ReadWords(std::map<long, CString>& words, std::vector<long> ids, short year)
{
    std::sort(ids.begin(), ids.end());
    for (const std::vector<long>& piece : Quarry::Where::InPieces(ids)) {
        std::vector<StatusFacts> facts;
        Owner owner;
        for (owner.Open({Quarry::Where::In(0, piece)}, {{0}}); !owner.IsEOL(); owner.MoveNext())
            facts.push_back(StatusFactsOf(owner));
        for (const ClientStatus& status : StatusOf(std::move(facts), year))
            words[status.GetId()] = status.Word();
    }
}

void AddStatus(std::vector<FoundClient>& found)
{
    std::vector<long> clients, firms;
    for (const FoundClient& one : found)
        (one.client.IsPartnership() ? firms : clients).push_back(one.client.id);
    std::map<long, CString> ofClients, ofFirms;
    ReadWords<CClient>(ofClients, clients, GetCurrentRealTaxYear());
    ReadWords<CPartnership>(ofFirms, firms, GetCurrentRealTaxYear());
    for (FoundClient& one : found)
        one.status = (one.client.IsPartnership() ? ofFirms : ofClients)[one.client.id];
}

} // namespace

void ClientFinder::Forget()
{
    m_all.clear();
    m_isRead = false;
}

void ClientFinder::ReadAll()
{
    if (m_isRead)
        return;
    const CWaitCursor wait;
    const auto add = [this](const ClientView& view) { m_all.push_back({KeyOf(view), view}); };
    for (Quarry::CCursor<CClient> client({}, {}, {kClientColumns}); client.Next();)
        add(ViewOf(*client));
    for (Quarry::CCursor<CPartnership> firm({}, {}, {kFirmColumns}); firm.Next();)
        add(ViewOf(*firm));
    std::sort(m_all.begin(), m_all.end(), [](const Entry& a, const Entry& b) { return a.key < b.key; });
    m_isRead = true;
}

FoundClients ClientFinder::Find(const CString& text, std::size_t limit)
{
    FoundClients found;
    const std::vector<std::string> words = WordsOf(text);
    if (words.empty() && !m_isRead) {
        std::vector<ClientView> views;
        AppendFirst<CClient>(views, kClientColumns, limit + 1);
        AppendFirst<CPartnership>(views, kFirmColumns, limit + 1);
        std::sort(views.begin(), views.end(),
                  [](const ClientView& a, const ClientView& b) { return KeyOf(a) < KeyOf(b); });
        found.all = views.size();
        for (std::size_t i = 0; i < std::min(limit, views.size()); ++i)
            found.shown.push_back({views[i], {}});
    } else {
        ReadAll();
        for (const Entry& entry : m_all) {
            const auto holds = [&](const std::string& word) { return entry.key.find(word) != std::string::npos; };
            if (!std::all_of(words.begin(), words.end(), holds))
                continue;
            if (++found.all <= limit)
                found.shown.push_back({entry.client, {}});
        }
    }
    found.isThereMore = found.all > found.shown.size();
    AddStatus(found.shown);
    return found;
}

} // namespace Desk
