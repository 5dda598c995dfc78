#pragma once

// The desktop program on a sample practice, worked by scripts.

#include <set>
#include <string>

#include "Afx/windows/ListCtrl.h"
#include "Afx/windows/PropertySheet.h"
#include "apps/morv/Program.h"
#include "Desk.h"
#include "Lattice/GridStories.h"
#include "layouts/Clients.h"
#include "layouts/ClientYear.h"
#include "layouts/SignIn.h"
#include "MorvUt/hmrc/access/ClientData.h"
#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "MorvUt/users/UserData.h"
#include "Shellkit/PracticeKey.h"
#include "support/Databases.h"
#include "support/Practice.h"

class DeskTest : public testing::Test, protected ::Test::GridStories
{
protected:
    using Hands = ::Test::Hands;
    using Script = ::Test::Acts;

    static constexpr char kPassword[] = "correct horse";
    static constexpr char kYear[] = "2017/18"; // of the sample's returns

    explicit DeskTest(::Test::Database kind = ::Test::Database::Embedded) : m_use(kind)
    {
        Around("Clients", [this](Script inside) { Run(std::move(inside)); });
        Around("In", [this](const std::string& code, Script inside) { RunIn(code, std::move(inside)); });
        Around("As ben in", [this](const std::string& code, Script inside) { RunIn(code, std::move(inside), "ben"); });
        On("450 clients more", [] { ::Test::AddClients(450); });
        On("Stored", ::Test::Practice::InTable);
        On("Sql", ::Test::Practice::Script);
        On("Somebody else:", [](const std::string& sql) { ::Test::Practice::Open()->Script(sql); });
    }
    ~DeskTest() override
    {
        Quarry::RemoveAllListeners();
        Quarry::SetConnection(nullptr);
        Shellkit::SetPracticeKey({});
        HmrcApi::CClientData::SetLoopbackOverride({});
        CUserData::ClearPermissions();
        CCurrentTaxYearSingleton::Destroy();
    }

    static void InNext(Script script) { ::Test::InNext(std::move(script)); }
    /// Starts the program; a user signs in and works in the list of clients, which is closed then.
    void Run(Script inClients, const std::string& user = "alice")
    {
        InNext([this, user](Hands& hands) {
            hands.Choose(IDC_SIGN_IN_USER, user == "alice" ? 0 : 1);
            hands.Type(IDC_SIGN_IN_PASSWORD, kPassword);
            if (m_withPassword.insert(user).second)
                hands.Type(IDC_SIGN_IN_AGAIN, kPassword);
            hands.Click(IDOK);
        });
        InNext([inClients](Hands& hands) {
            inClients(hands);
            hands.Click(IDCANCEL);
        });
        Desk::Run({::Test::ReplacedAll(m_practice, "'", ""), m_base, "/help"});
    }
    /// The same in the tax year of one client, or partnership.
    void RunIn(const std::string& code, Script inYear, const std::string& user = "alice")
    {
        Run(
            [code, inYear](Hands& hands) {
                hands.Pick(IDC_CLIENTS_YEAR, kYear);
                hands.Type(IDC_CLIENTS_SEARCH, code);
                InNext([inYear](Hands& year) {
                    inYear(year);
                    year.Click(IDCANCEL);
                });
                hands.Press(VK_RETURN);
            },
            user);
    }
    static std::string Text(const Hands& hands, unsigned id) { return hands.Control(id).Text().Str(); }

    Desk::DeskApp m_app;
    ::Test::UseDatabase m_use;
    std::string m_practice = ::Test::SamplePractice(); // as programs are told of it, in quotes where it needs them
    std::string m_base;
    std::set<std::string> m_withPassword; // who has chosen one
};
