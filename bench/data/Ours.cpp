#include <stdexcept>

#include "data/Data.h"
#include "MorvUt/MorvUt.h"
#include "Places.h"

namespace
{

long g_told = 0;
void CountEmployments(const Quarry::DataChange& change) { g_told += change.newRow->GetLong(0) != 0; }

} // namespace

void MakePractice(const std::string& path, int clients)
{
    OpenPractice(path);
    Quarry::CTransaction transaction(Cellar::Intent::Write);
    Quarry::ReserveIds(Brix::CClient::Declaration(), clients, Quarry::GetConnection());
    Brix::CClient client;
    for (int number = 1; number <= clients; ++number) {
        CString text;
        text.Format("C%06d", number);
        client.AddNew();
        client.SetCode(text);
        client.SetName("Harriet Ashworth " + text);
        client.SetUTR("1100007919");
        client.SetNINumber("AA000001A");
        client.SetEntityType("Individual");
        client.SetModified(COleDateTime(2024, 4, 6, 12, 0, 0));
        client.SetModifiedBy("alice");
    }
    client.UpdateAll();
    transaction.Commit();
}

void OpenOurs(const std::string& path)
{
    Quarry::SetConnection(nullptr);
    Quarry::SetConnection(Cellar::CConnection::Open(CString(path)));
    const Brix::SchemaVersion version = Brix::ReadSchemaVersion(Quarry::GetConnection());
    if (version.state != Brix::SchemaState::Current || !Brix::IsPracticeKey(Quarry::GetConnection(), version))
        throw std::runtime_error("the practice was not opened");
}

long ReadThreeColumns()
{
    using Brix::CClient;
    long read = 0;
    for (Quarry::CCursor<CClient> client({}, {}, {.columns = {0, CClient::kCode, CClient::kName}}); client.Next();)
        read += client->GetID() + client->GetCode().GetLength() + client->GetName().GetLength();
    return read;
}

long ReadWholeList()
{
    Brix::CClient client;
    client.Open();
    return client.GetCount();
}

long OpenById(long id)
{
    Brix::CClient client;
    client.Open({{0, id}});
    return client.GetID();
}

void AddEmployments(int count)
{
    Quarry::AddDataChangedListenerForInsert(Brix::CNewEmploy::kTableNumber, "BRIX", CountEmployments);
    const long before = g_told;
    Quarry::CTransaction transaction(Cellar::Intent::Write);
    Brix::CNewEmploy employ;
    for (int number = 0; number < count; ++number) {
        employ.AddNew();
        employ.SetTaxFormID(1);
        employ.SetClientID(1);
        employ.SetYear(2018);
        employ.SetOrdering(number);
        employ.SetGUID("6F9619FF-8B86-D011-B42D-00C04FC964FF");
        employ.SetEmployerName("Acme Widgets");
        employ.SetPAYEReference("123/AB456");
        employ.SetStart(Kiln::CDate(2017, 4, 6));
        employ.SetPay(Kiln::CAmt::FromPence(2'400'000));
        employ.SetTax(Kiln::CAmt::FromPence(250'000));
        employ.Update();
    }
    transaction.Commit();
    if (g_told != before + count)
        throw std::runtime_error("nobody was told");
}

struct ClientChange::Rows
{
    Brix::CClient client;
    bool isFirst = true;
};

ClientChange::ClientChange(long id) : m_rows(std::make_unique<Rows>()) { m_rows->client.Open({{0, id}}); }
ClientChange::~ClientChange() = default;

void ClientChange::Save()
{
    m_rows->isFirst = !m_rows->isFirst;
    m_rows->client.SetName(m_rows->isFirst ? "Harriet Ashworth" : "Harriet Bell");
    m_rows->client.Update();
}
