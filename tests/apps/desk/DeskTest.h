#pragma once

// The desktop program on a sample practice, worked by scripts.

#include <string>
#include <vector>

#include "Afx/windows/ListCtrl.h"
#include "Afx/windows/PropertySheet.h"
#include "apps/morv/Program.h"
#include "Desk.h"
#include "layouts/Clients.h"
#include "layouts/ClientYear.h"
#include "layouts/SignIn.h"
#include "MorvUt/hmrc/access/ClientData.h"
#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "MorvUt/users/UserData.h"
#include "Shellkit/PracticeKey.h"
#include "support/Databases.h"
#include "support/Hands.h"
#include "support/Practice.h"

class DeskTest : public testing::Test
{
protected:
    using Hands = ::Test::Hands;
    using Script = ::Test::Acts;

    static constexpr char kPassword[] = "correct horse";
    static constexpr char kYear[] = "2017/18"; // of the sample's returns

    explicit DeskTest(::Test::Database kind = ::Test::Database::Embedded) : m_use(kind) {}
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
    void Run(Script inClients, const char* user = "alice")
    {
        InNext([this, user](Hands& hands) {
            hands.Choose(IDC_SIGN_IN_USER, std::string(user) == "alice" ? 0 : 1);
            hands.Type(IDC_SIGN_IN_PASSWORD, kPassword);
            if (!m_hasPassword)
                hands.Type(IDC_SIGN_IN_AGAIN, kPassword);
            m_hasPassword = true;
            hands.Click(IDOK);
        });
        InNext([inClients](Hands& hands) {
            inClients(hands);
            hands.Click(IDCANCEL);
        });
        Desk::Run({::Test::ReplacedAll(m_practice, "'", ""), m_base, "/help"});
    }
    /// The same in the tax year of one client, or partnership.
    void RunIn(const char* code, Script inYear, const char* user = "alice")
    {
        Run(
            [code, inYear](Hands& hands) {
                hands.Pick(IDC_CLIENTS_YEAR, kYear);
                hands.Type(IDC_CLIENTS_SEARCH, code);
                ASSERT_EQ(Rows(hands, IDC_CLIENTS_LIST).size(), 1u);
                InNext([inYear](Hands& year) {
                    inYear(year);
                    year.Click(IDCANCEL);
                });
                hands.Press(VK_RETURN);
            },
            user);
    }
    /// The rows of a list: texts with " | " between them.
    static std::vector<std::string> Rows(const Hands& hands, unsigned id)
    {
        const auto& list = dynamic_cast<const CListCtrl&>(hands.Control(id));
        std::vector<std::string> rows;
        for (int row = 0; row < list.GetItemCount(); ++row) {
            std::string text;
            for (int column = 0; column < static_cast<int>(list.GetColumns().size()); ++column)
                text += (column == 0 ? "" : " | ") + list.GetItemText(row, column).Str();
            rows.push_back(text);
        }
        return rows;
    }
    static void NextPage(Hands& hands) { hands.Press(VK_TAB, Afx::kControl); }
    static std::string Query(const Cellar::SqlText& select) { return ::Test::Practice::Query(select); }
    static std::string Text(const Hands& hands, unsigned id) { return hands.Control(id).Text().Str(); }

    Desk::DeskApp m_app;
    ::Test::UseDatabase m_use;
    std::string m_practice = MakePractice(); // as programs are told of it, in quotes where it needs them
    std::string m_base;
    bool m_hasPassword = false;

private:
    static std::string MakePractice() { return ::Test::SamplePractice(); }
};
