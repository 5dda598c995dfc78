// Users and what they may do, in stories: acts, and below each what it shows.

#include <functional>
#include <map>

#include "Afx/system/Application.h"
#include "Cellar/DatabaseError.h"
#include "MorvUt/users/StaffRights.h"
#include "UsersTest.h"

namespace
{

class UserStories : public UsersTest
{
protected:
    /// "login Bob": what is known of who is logged in then.
    std::string Act(const std::string& line)
    {
        const std::size_t blank = std::min(line.find(' '), line.size());
        m_rest = line.substr(std::min(blank + 1, line.size()));
        std::string shown;
        try {
            shown = m_acts.at(line.substr(0, blank))();
        } catch (const Cellar::DatabaseError&) {
            shown = "refused by the database; " + ShownUser();
        }
        EXPECT_EQ(Afx::ResourceContext::Current(), nullptr) << "the caller's resources are back";
        return shown.empty() ? "" : shown + '\n';
    }

private:
    struct App : CWinApp
    {
        void OnUserChanged() override { heard = CUserData::m_strUser; }
        CString heard;
    };

    static std::string Shown(const std::vector<int>& rights)
    {
        std::string text = "rights";
        for (const int number : rights)
            text += ' ' + std::to_string(number);
        return text;
    }
    std::string ShownUser() const
    {
        const CUserData& user = TheUser();
        std::string text = CUserData::m_strUser.Str() + " (" + user.GetFullUserName() + "), ";
        if (m_app.heard != CUserData::m_strUser || !user.HasUserLoggedIn())
            text += "of which nobody is told, ";
        text += Shown(Allowed()) + ", groups " + user.GetGroupInList().Str();
        for (const auto& group : CUserData::m_UserGroups)
            text += ' ' + std::to_string(group.m_nID);
        text += ", among";
        for (int i = 0; i < CUserData::m_arrUsers.GetSize(); ++i)
            text += ' ' + CUserData::m_arrUsers[i].Str() + " (" + CUserData::m_arrUserFullnames[i].Str() + ')';
        return text;
    }
    /// What the functions for any user say.
    std::string RightsOfAnother() const
    {
        static constexpr std::pair<int, int (*)(CString)> kQueries[] = {
            {27, CUserData::UserHasReviewToolUse},
            {28, CUserData::UserHasReviewToolViewEventsLog},
            {29, CUserData::UserHasReviewToolStartOrCompleteReviewsAssignedToAnotherUser},
            {30, CUserData::UserHasReviewToolFinaliseReviews},
            {31, CUserData::UserHasReviewToolEditTolerances},
            {74, CUserData::IsTaxExchangeAllowedForUser},
        };
        std::vector<int> rights;
        for (const auto& [number, query] : kQueries)
            if (query(m_rest.c_str()))
                rights.push_back(number);
        return Shown(rights);
    }
    std::string RightsOfStaff() const
    {
        std::vector<int> rights;
        for (const StaffRight& right : FindStaff(m_rest.c_str())->rights)
            if (right.isAllowed)
                rights.push_back(right.number);
        return Shown(rights);
    }

    static std::string Staff()
    {
        std::string ids;
        for (const StaffMember& listed : ListStaff())
            ids += (ids.empty() ? "" : " ") + listed.id.Str();
        return ids;
    }

    const std::map<std::string, std::function<std::string()>> m_acts{
        {"sql", [this] { return Script(m_rest), ""; }},
        {"login", [this] { return CUserData::SetUser(m_rest.c_str()), ShownUser(); }},
        {"clear", [this] { return CUserData::ClearPermissions(), ShownUser(); }},
        {"has-group", [this] { return std::to_string(TheUser().HasGroup(m_rest.c_str())); }},
        {"of-another", [this] { return RightsOfAnother(); }},
        {"of-staff", [this] { return RightsOfStaff(); }},
        {"staff", [] { return Staff(); }},
        {"why-not-new", [this] { return WhyNotNewStaff(m_rest.c_str(), "Another", "").Str(); }},
    };
    std::string m_rest; // of the act
    App m_app;
};

ON_BOTH_DATABASES(UserStories);

TEST_P(UserStories, GoAsTold)
{
    ::Test::ExpectTranscript(USERS_STORIES "users.txt", [this](const std::string& act) { return Act(act); });
}

} // namespace
