#include "SamplePractice.h"

#include "Brix/Records.h"

#include <array>
#include <string>

namespace Morv
{

namespace
{

// Tax year of HMRC's published example data, and the one the sample's returns are for.
constexpr short kSampleYear = 2018;

enum class Kind
{
    Individual,
    Trust,
    Estate
};

struct SampleClient
{
    const char* name;
    Kind kind = Kind::Individual;
    bool hasNINumber = true;
    bool hasGoodUTR = true;
    bool isActive = true;
    bool isDormant = false;
    const char* died = nullptr; // ISO date
};

constexpr std::array<SampleClient, kSampleClients> kClients{{
    {"Harriet Ashworth"},
    {"Tobias Penhallow"},
    {"Margaret Ellison"},
    {"Cecil Drummond"},
    {"Priya Raman"},
    {"Oscar Lindqvist", Kind::Individual, false},       // no National Insurance number yet
    {"Beatrice Okafor", Kind::Individual, true, false}, // UTR mistyped
    {"Walter Greenhalgh", Kind::Individual, true, true, true, false, "2017-11-03"},
    {"Imogen Farquhar", Kind::Individual, true, true, false}, // no longer a client
    {"Desmond Achebe", Kind::Individual, true, true, true, true},
    {"The Larkspur Settlement", Kind::Trust, false},
    {"Estate of Edith Marlowe", Kind::Estate, false},
}};

// A UTR whose check digit is right: weights 6 7 8 9 10 5 4 3 2 over the nine digits of `serial`.
std::string MakeUTR(int serial)
{
    constexpr int kWeights[] = {6, 7, 8, 9, 10, 5, 4, 3, 2};
    constexpr char kCheck[] = "21987654321";
    CString digits;
    digits.Format("%09d", serial % 1000000000);
    int sum = 0;
    for (int i = 0; i < 9; ++i)
        sum += (digits[i] - '0') * kWeights[i];
    return kCheck[sum % 11] + digits.Str();
}

std::string MakeNINumber(int serial)
{
    CString text;
    text.Format("AA%06d%c", serial % 1000000, static_cast<char>('A' + serial % 4));
    return text.Str();
}

void AddTaxForm(long clientId, bool isDormant)
{
    Brix::CTaxForm form;
    form.AddNew();
    form.SetClientID(clientId);
    form.SetYear(kSampleYear);
    form.SetDormant(isDormant);
    form.Update();
}

void AddClient(int number, const SampleClient& sample)
{
    CString code;
    code.Format("C%04d", number);
    std::string utr = MakeUTR(100000000 + number * 7919);
    if (!sample.hasGoodUTR)
        utr[9] = utr[9] == '9' ? '0' : static_cast<char>(utr[9] + 1);
    Brix::CClient client;
    client.AddNew();
    client.SetCode(code);
    client.SetName(sample.name);
    client.SetUTR(CString(utr));
    client.SetNINumber(sample.hasNINumber ? CString(MakeNINumber(number)) : CString());
    client.SetTrust(sample.kind != Kind::Individual);
    client.SetEntityType(sample.kind == Kind::Estate ? "Estate" : sample.kind == Kind::Trust ? "Trust" : "Individual");
    client.SetActive(sample.isActive);
    if (sample.died)
        client.SetDeath(Cellar::ToDate(Cellar::Value(sample.died)));
    client.Update();
    if (sample.kind == Kind::Individual && sample.isActive)
        AddTaxForm(client.GetID(), sample.isDormant);
}

/// What holds for the sample's year: accounts need not be itemised below these turnovers.
void AddReferenceYear()
{
    const Kiln::CAmt now = Kiln::CAmt::FromPence(85'000'00), before = Kiln::CAmt::FromPence(15'000'00);
    Brix::CPFile year;
    year.AddNew();
    year.SetYear(kSampleYear);
    year.SetTurnoverSole(now);
    year.SetTurnoverSoleOld(before);
    year.SetTurnoverPartnership(now);
    year.SetTurnoverPartnershipOld(before);
    year.Update();
}

void AddPartnership(const char* code, const char* name, int serial, bool isLLP)
{
    Brix::CPartnership partnership;
    partnership.AddNew();
    partnership.SetCode(code);
    partnership.SetName(name);
    partnership.SetUTR(CString(MakeUTR(serial)));
    partnership.SetActive(true);
    partnership.SetLLP(isLLP);
    partnership.Update();
}

constexpr int kLastPermission = 99;
bool IsHmrcPermission(int number) { return number >= 87 && number <= 89; }

void AddUser(const char* id, const char* fullName, bool isListed, const char* role)
{
    Brix::CUser user;
    user.AddNew();
    user.SetUserID(id);
    user.SetFullName(fullName);
    user.SetListed(isListed);
    user.SetRole(role);
    user.Update();
}

void AddPermissions(const char* id, bool withHmrc)
{
    Brix::CUserPermissions permissions;
    for (int number = 1; number <= kLastPermission; ++number) {
        permissions.AddNew();
        permissions.SetUserID(id);
        permissions.SetPermission(number);
        permissions.SetAllowed(withHmrc || !IsHmrcPermission(number));
        permissions.Update();
    }
}

void AddRole(const char* role)
{
    Brix::CUserRole roles;
    roles.AddNew();
    roles.SetRole(role);
    roles.Update();
    Brix::CUserRolePermissions permissions;
    for (int number = 1; number <= kLastPermission; ++number) {
        permissions.AddNew();
        permissions.SetRole(role);
        permissions.SetPermission(number);
        // Managers see and change everything but the practice's own settings (49 to 55).
        permissions.SetAllowed(number < 49 || number > 55);
        permissions.Update();
    }
}

long AddGroup(const char* name)
{
    Brix::CGroup group;
    group.AddNew();
    group.SetName(name);
    group.Update();
    return group.GetID();
}

void AddToGroup(const char* user, long group)
{
    Brix::CGroupUser member;
    member.AddNew();
    member.SetUserID(user);
    member.SetGroupID(group);
    member.Update();
}

void AddUsers()
{
    const long everyone = AddGroup("All Staff");
    const long tax = AddGroup("Tax");
    AddGroup("Audit");
    AddUser("alice", "Alice Thornbury", true, "");
    AddPermissions("alice", true);
    AddToGroup("alice", everyone);
    AddUser("ben", "Ben Castellan", true, "");
    AddPermissions("ben", false);
    AddToGroup("ben", tax);
    AddRole("Manager");
    AddUser("cara", "Cara Whitlock", true, "Manager");
    AddToGroup("cara", tax);
}

void SetOptions(short payeInterface, bool retrieval)
{
    Brix::COptions options;
    if (!options.Open())
        options.AddNew();
    options.SetPAYEInterface(payeInterface);
    options.SetHMRCRetrieval(retrieval);
    options.Update();
}

} // namespace

void FillNewPractice() { SetOptions(1, false); }

void FillSamplePractice(int clients)
{
    SetOptions(1, true);
    for (int number = 1; number <= clients; ++number) {
        if (number <= kSampleClients) {
            AddClient(number, kClients[static_cast<std::size_t>(number - 1)]);
            continue;
        }
        CString name;
        name.Format("Sample Client %d", number);
        AddClient(number, SampleClient{name});
    }
    AddPartnership("P0001", "Ash & Birch", 500000001, false);
    AddPartnership("P0002", "Cedar Advisory LLP", 500000002, true);
    AddReferenceYear();
    AddUsers();
}

} // namespace Morv
