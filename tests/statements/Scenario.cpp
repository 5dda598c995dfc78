#include "Scenario.h"

#include <algorithm>
#include <array>
#include <regex>

#include "Brix/Check.h"
#include "Brix/PracticeKey.h"
#include "MorvUt/context/Ordering.h"
#include "MorvUt/hmrc/access/AuthorisationStore.h"
#include "MorvUt/hmrc/access/GatewayState.h"
#include "MorvUt/hmrc/access/SharedPace.h"
#include "MorvUt/hmrc/fetch/FetchRun.h"
#include "MorvUt/MorvUt.h"
#include "Shellkit/PracticeKey.h"
#include "support/Practice.h"
#include "support/SampleValues.h"

namespace
{

using namespace Brix;
using Quarry::CDataList;
using Quarry::Where;

constexpr char kGateway[] = "gateway";

/// What the connection, which becomes the current one, sends meanwhile: each statement once.
template<class Work>
std::vector<std::string> SentBy(std::unique_ptr<Cellar::CConnection> connection, Work work)
{
    Quarry::SetConnection(std::move(connection));
    const auto statements = std::make_shared<std::vector<std::string>>();
    Quarry::GetConnection().OnSent([statements](std::string_view sent) {
        static const std::regex cursor("cursor\\d+"); // has a number of the run
        const std::string statement = std::regex_replace(std::string(sent), cursor, "cursor");
        if (std::find(statements->begin(), statements->end(), statement) == statements->end())
            statements->emplace_back(statement);
    });
    work();
    Quarry::GetConnection().OnSent(nullptr);
    return *statements;
}

bool IsInKey(const Quarry::Table& table, const Quarry::Column& column)
{
    return ("," + std::string(table.key) + ",").find("," + std::string(column.name) + ",") != std::string::npos;
}

/// Two rows at once, all columns of one, a deletion.
void WriteAndRead(const Quarry::Table& table)
{
    CDataList rows(table);
    rows.Open();
    for (int i = 0; i < 2; ++i) {
        rows.AddNew();
        for (const Quarry::Column& column : table.columns)
            if (IsInKey(table, column) && rows.IsNull(column.ordinal) && !table.keyMayBeNull)
                rows.Set(column.ordinal,
                         column.type == Cellar::ColumnType::Text ? Cellar::Value(std::to_string(i)) : Cellar::Value(i));
    }
    rows.UpdateAll();
    rows.MoveFirst();
    for (const Quarry::Column& column : table.columns)
        if (!IsInKey(table, column))
            rows.Set(column.ordinal, ::Test::SampleValue(column.type, 2));
    rows.Update();
    rows.Delete();
    rows.AddNew();
    rows.CopyRow();
}

void AskWithEveryCondition()
{
    constexpr int kCode = CClient::kCode;
    CDataList rows(CClient::Declaration());
    const Where conditions[] = {{kCode, "A"},
                                {kCode, nullptr},
                                Where::NotNull(kCode),
                                Where::Less(kCode, "A"),
                                Where::AtMost(kCode, "A"),
                                Where::Greater(kCode, "A"),
                                Where::AtLeast(kCode, "A"),
                                Where::Between(kCode, "A", "B"),
                                Where::In(0, {1, 2}),
                                Where::In(0, {})};
    for (const Where& condition : conditions)
        rows.Open({condition}, {{kCode, true}, {CClient::kName}}, {{kCode, CClient::kName}, 5});
    rows.Count({conditions[0], conditions[2]});
    CDataList(CNewEmploy::Declaration())
        .Open({Where::Under(CNewEmploy::kTaxFormID, CTaxForm::Declaration(), {{CTaxForm::kYear, 2024}})});
    CDataList(CNewEmploy::Declaration())
        .Open({Where::UnderFirst(CNewEmploy::kTaxFormID, CTaxForm::Declaration(), {{CTaxForm::kYear, 2024}})});
}

template<class Owner>
Owner NewRow()
{
    Owner owner;
    owner.AddNew();
    return owner;
}

void AskForOrderingNumbers()
{
    const auto form = NewRow<CTaxForm>();
    GetCGTAcqOrderingNumber(NewRow<CCGT>());
    GetEmployUKImcomeDetailsOrderingNumber(NewRow<CEmployUKIncome>());
    GetNewInterestJointIncomeOrderingNumber(NewRow<CJointIncomeSourceTaxYear>());
    GetNewInterestPaymentOrderingNumber(NewRow<CNewInterest>());
    GetPensionContributionPaymentOrderingNumber(NewRow<CPlan>());
    GetPensionStateBenefitDetailsOrderingNumber(NewRow<CPensionStateBenefits>());
    for (const auto ask : {GetNewEmployOrderingNumber, GetNewInterestOrderingNumber, GetNewInterestUTOrderingNumber,
                           GetOtherOutgoingsOrderingNumber, GetPensionContributionsOrderingNumber,
                           GetPensionStateBenefitsOrderingNumber, GetPropertyOrderingNumber})
        ask(form);
}

void KeepTokens()
{
    using HmrcApi::CAuthorisationStore;
    CAuthorisationStore::CreateGatewayID(kGateway);
    CAuthorisationStore store(kGateway);
    store.SetAccessToken({1, 2});
    store.SetRefreshToken({3, 4});
    store.SetService("https://localhost");
    store.SetAuthorisationStatus(HmrcApi::IAuthorisationStore::Authorised);
    store.UpdateTokens();
    store.UpdateLoaded();
    store.Rehearse();
    store.LockStore();
    store.UnlockStore();
    CAuthorisationStore::DeleteGatewayId(kGateway);
    HmrcApi::ReadGatewayState(kGateway);
    HmrcApi::ListGateways();
}

void FetchForEverybody()
{
    HmrcApi::FetchRun run(2024, true);
    run.ListDone();
    run.End();
    HmrcApi::FetchRun(2024, false).End();
    HmrcApi::TakeSharedSecond();
}

void ThinTheLog()
{
    HmrcApi::Logger().Log("Request", {}, {}, {}, {});
    HmrcApi::ThinLog(1, COleDateTime(2100, 1, 1, 0, 0, 0));
}

void LockTables()
{
    Quarry::CTransaction outer;
    Quarry::CTransaction inner;
    Quarry::GetConnection().LockTable("BRIXClient");
    inner.Commit();
    Quarry::CTransaction undone;
    Quarry::GetConnection().ExecuteDirect("DELETE FROM [BRIXClient]");
    undone.Rollback();
}

void GoOnFromOtherIds()
{
    Cellar::CConnection& connection = Quarry::GetConnection();
    const Quarry::Table& table = Brix::CClient::Declaration();
    Quarry::CTransaction undone;
    Quarry::SkipIds(table, Quarry::LastId(table, connection) + 7, connection);
    if (const auto last = connection.GetDialect().LastOfIdentity("MTDAudit", "lID"); !last.IsEmpty())
        connection.Query(last, {});
    if (const auto move = connection.GetDialect().MoveIdentity("MTDAudit", "lID", 7); !move.empty())
        connection.Script(move);
}

/// Of a new owner with a source that has one a year before; into 2004, and then into 2005.
template<class Owner>
void CarryWorkForward(bool isPartnership)
{
    Cellar::CConnection& connection = Quarry::GetConnection();
    auto row = NewRow<Owner>();
    row.Update();
    const TrackerOwner owner{row.GetID(), isPartnership};
    CSource source;
    for (const short year : std::array<short, 2>{2003, 2004}) {
        source.AddNew();
        source.SetSourceID(year + (isPartnership ? 10'000 : 0));
        SetOwner(source, owner);
        source.SetYear(year);
        source.SetSourceTypeID(2);
        source.SetDescription("Books");
    }
    source.UpdateAll();
    for (const long tracker : {0, 4})
        CopyDefaultSourceToSource(connection, source.GetSourceID(), tracker, 2, true, 2004, false);
    int created = 0;
    CarryForwardSources(connection, created, 2005, owner.id, isPartnership);
    CarryForwardClientEnquiresAndTrackerSources(connection, owner.id, 2005, isPartnership);
}

std::string Catalog(std::size_t tables, std::size_t columnsOfTheLast)
{
    std::string script = "on SELECT TABLE_NAME, COLUMN_NAME*\ncolumns TABLE_NAME:nvarchar COLUMN_NAME:nvarchar\n";
    for (std::size_t i = 0; i < tables; ++i) {
        const Quarry::Table& table = *AllTables()[i];
        const std::size_t count =
            i + 1 == tables ? std::min(columnsOfTheLast, table.columns.size()) : table.columns.size();
        for (const Quarry::Column& column : table.columns.first(count))
            script += std::string("row ") + table.sqlName + "|" + column.name + "\n";
        if (table.versioned)
            script += std::string("row ") + table.sqlName + "|nVersion\n";
    }
    return script;
}

} // namespace

/// What screens show besides the schedule that they edit.
void AskForScreens()
{
    TXCountryComboData::GetCountries();
    BankNames();
    EntitiesOf(ClientId(7));
    EntitiesOf(PartnershipId(7));
    EntitiesOfJointSource(7);
}

/// Users in both modes, features, and the list of all that is locked.
void LockUsersAndFeatures()
{
    Cellar::CConnection& connection = Quarry::GetConnection();
    CUserLockFile::InitUserLocking(connection);
    for (const int isUnlimited : {0, 1}) {
        SetUnlimitedSameUserLogin(isUnlimited);
        CMorvLockFile file;
        file.AddLock("ann");
        file.IsValidState();
        file.GetNumUsers();
        file.RemoveLock();
    }
    SetUnlimitedSameUserLogin(0);
    const std::vector<HeldLock> locks = ListLocks(connection);
    for (const HeldLock& lock : locks)
        ClearLock(connection, lock, "ann");
}

std::vector<std::string> SendEverything(std::unique_ptr<Cellar::CConnection> connection)
{
    return SentBy(std::move(connection), [] {
        constexpr std::array<std::uint8_t, 32> kKey{7};
        Shellkit::SetPracticeKey(kKey);
        for (const Quarry::Table* const table : AllTables())
            if (*table->className)
                WriteAndRead(*table);
        AskWithEveryCondition();
        AskForOrderingNumbers();
        KeepTokens();
        FetchForEverybody();
        ThinTheLog();
        CarryWorkForward<CClient>(false);
        CarryWorkForward<CPartnership>(true);
        LockTables();
        GoOnFromOtherIds();
        LockUsersAndFeatures();
        AskForScreens();
        CheckPractice(Quarry::GetConnection());
        IsPracticeKey(Quarry::GetConnection(), {SchemaState::Current, kSchemaVersion, {}});
        Shellkit::SetPracticeKey({});
    });
}

std::vector<std::string> SendUpgrade(std::unique_ptr<Cellar::CConnection> connection)
{
    return SentBy(std::move(connection), [] { UpgradeSchema(Quarry::GetConnection()); });
}

std::string WholePractice()
{
    return Catalog(AllTables().size(), 99) + ::Test::ReadFile(STATEMENTS_ROOT "/tests/statements/answers.txt");
}

std::string OlderPractice()
{
    return Catalog(AllTables().size() - 1, 3) + "on SELECT * FROM *\ncolumns nVersion:int\nrow 1\n";
}
