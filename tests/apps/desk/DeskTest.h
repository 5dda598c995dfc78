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
        Around("Clients", [this](const Script& inside) { Run(inside); });
        Around("In", [this](const std::string& code, const Script& inYear) {
            Run([=](Hands& hands) {
                auto& years = dynamic_cast<CComboBox&>(hands.Control(IDC_CLIENTS_YEAR));
                hands.Choose(IDC_CLIENTS_YEAR, years.FindStringExact(CComboBox::kNone, kYear));
                hands.Type(IDC_CLIENTS_SEARCH, code);
                ::Test::InNext([inYear](Hands& year) {
                    inYear(year);
                    year.Click(IDCANCEL);
                });
                hands.Press(VK_RETURN);
            });
        });
        On("As ben", [this] { m_user = "ben"; });
        On("Clients more:", [](const std::string& count) { ::Test::AddClients(std::stoi(count)); });
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

    /// Starts the program; a user signs in and works in the list of clients, which is closed then.
    void Run(const Script& inClients)
    {
        ::Test::InNext([this](Hands& hands) {
            hands.Choose(IDC_SIGN_IN_USER, m_user == "alice" ? 0 : 1);
            hands.Type(IDC_SIGN_IN_PASSWORD, kPassword);
            if (m_withPassword.insert(m_user).second)
                hands.Type(IDC_SIGN_IN_AGAIN, kPassword);
            hands.Click(IDOK);
        });
        ::Test::InNext([inClients](Hands& hands) {
            inClients(hands);
            hands.Click(IDCANCEL);
        });
        Desk::Run({::Test::ReplacedAll(m_practice, "'", ""), m_base, "/help"});
    }

    Desk::DeskApp m_app;
    ::Test::UseDatabase m_use;
    std::string m_practice = ::Test::SamplePractice(); // as programs are told of it, in quotes where it needs them
    std::string m_base, m_user = "alice";
    std::set<std::string> m_withPassword; // who has chosen one
};
