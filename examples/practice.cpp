// Opens a practice: reads clients, writes in transactions, takes ids, meets another program.
// usage: practice FILE

#include <iostream>

#include "Example.h"

namespace
{

void ShowClient(const char* code)
{
    Brix::CClient client;
    if (!client.Open({{Brix::CClient::kCode, code}}))
        std::cout << "there is no client " << code << '\n';
    else
        std::cout << client.GetCode() << ' ' << client.GetName() << ", UTR " << client.GetUTR() << '\n';
}

void ShowStatement()
{
    const Cellar::RowSet found = Quarry::GetConnection().Queryf(
        "SELECT [strCode], [strName] FROM [BRIXClient] WHERE [strName] LIKE %s ORDER BY [strCode]", "%ash%");
    for (const auto& row : found.rows)
        std::cout << Cellar::ToText(row[0]) << ' ' << Cellar::ToText(row[1]) << '\n';
}

void ShowNames()
{
    using Brix::CClient;
    using Quarry::Where;
    for (Quarry::CCursor<CClient> client({Where::Between(CClient::kCode, "C0003", "C0005")}, {{CClient::kName}},
                                         {.columns = {CClient::kCode, CClient::kName}});
         client.Next();)
        std::cout << client->GetCode() << ' ' << client->GetName() << '\n';
    std::cout << CClient().Count({{CClient::kTrust, false}, {CClient::kActive, true}}) << " active individuals\n";
}

void CompareWith(const std::string& path)
{
    const auto archive = Cellar::CConnection::Open(path); // beside the current practice
    Brix::CClient then, now;
    if (then.Open(*archive, {{Brix::CClient::kCode, "C0001"}}) && now.Open({{Brix::CClient::kCode, "C0001"}}))
        std::cout << then.GetName() << " is now " << now.GetName() << '\n';
}

void Rename(const char* code, const char* name)
{
    Brix::CClient client;
    if (!client.Open({{Brix::CClient::kCode, code}}))
        return;
    client.SetName(name);
    client.Update();
}

void ShowTransactions()
{
    {
        Quarry::CTransaction sheet; // a sheet is open
        Rename("C0001", "Harriet Bell");
        {
            Quarry::CTransaction dialog; // and a dialog in it, which the user cancels
            Rename("C0002", "Tobias Bell");
        }
        ShowClient("C0001");
        ShowClient("C0002");
    } // the sheet is cancelled too: no Commit
    ShowClient("C0001");
}

void ShowAside()
{
    Cellar::CConnection& practice = Quarry::GetConnection();
    Quarry::CTransaction sheet;
    {
        const Cellar::CConnection::Aside aside(practice); // nothing is written in the sheet yet
        practice.ExecuteDirectf("UPDATE [BRIXClient] SET [strModifiedBy] = %s WHERE [strCode] = %s", "alice", "C0001");
    }
    Rename("C0001", "Harriet Bell");
    try {
        const Cellar::CConnection::Aside aside(practice);
    } catch (const std::logic_error& refused) {
        std::cout << refused.what() << '\n';
    }
    sheet.Rollback();
    Brix::CClient client;
    client.Open({{Brix::CClient::kCode, "C0001"}});
    std::cout << client.GetName() << ", modified by " << client.GetModifiedBy() << '\n';
}

void ShowIds()
{
    const Quarry::Table& clients = Brix::CClient::Declaration();
    std::cout << "alone " << Quarry::NewId(clients) << ", " << Quarry::NewId(clients);
    {
        Quarry::CTransaction transaction;
        std::cout << "; in a transaction " << Quarry::NewId(clients) << ", " << Quarry::NewId(clients);
        transaction.Commit();
    }
    std::cout << "; alone again " << Quarry::NewId(clients) << '\n';
}

void ShowBusy(const std::string& path)
{
    const auto other = Cellar::CConnection::Open(path); // as another program has it
    other->SetBusyTimeout(0);                           // 5000 ms unless told
    Quarry::CTransaction here(Cellar::Intent::Write);
    try {
        other->ExecuteDirectf("UPDATE [BRIXClient] SET [bActive] = %d WHERE [strCode] = %s", 0, "C0001");
    } catch (const Cellar::DatabaseError& error) {
        const bool isBusy = error.GetCategory() == Cellar::DatabaseError::Category::Busy;
        std::cout << (isBusy ? "busy: " : "") << error.GetReason() << '\n';
    }
}

void ShowDialects()
{
    constexpr char kStatement[] = "INSERT [BRIXGroup] ([strName], [dtMade]) VALUES (N'All %%', GETUTCDATE())";
    for (const Cellar::Dialect* dialect :
         {&Cellar::SqliteDialect(), &Cellar::PostgresDialect(), &Cellar::SqlServerDialect()})
        std::cout << dialect->Translate(kStatement).text << '\n';
}

int Work(const std::string& path)
{
    if (const std::string problem = OpenPractice(path, "alice"); !problem.empty()) {
        std::cerr << problem << '\n';
        return 1;
    }
    ShowClient("C0001");
    ShowClient("X1");
    ShowStatement();
    ShowNames();
    CompareWith(path);
    ShowTransactions();
    ShowAside();
    ShowIds();
    ShowBusy(path);
    ShowDialects();
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    return RunExample([&] { return argc == 2 ? Work(argv[1]) : Usage("usage: practice FILE"); });
}
