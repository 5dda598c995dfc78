// What answers do to the practice, step by step: each file of `transcripts` is the story of one.

#include <iterator>
#include <sstream>

#include "MorvUt/hmrc/HmrcTest.h"
#include "MorvUt/hmrc/review/Review.h"
#include "MorvUt/hmrc/schedules/CreateFromHmrc.h"

namespace
{

/// Items of one reference, one for each letter.
std::string Items(const std::string& letters)
{
    std::string items;
    for (const char letter : letters) {
        const int place = letter & 31; // from 1
        const std::string works = place > 13 ? " -" : " W" + std::to_string(place > 9 ? 0 : place);
        const std::string pay = std::to_string(place * 100);
        items += letter >= 'a' ? "employment 1/A" + works + ' ' + pay + " CarBenefit=" + pay + "; "
                               : "pension 1/A" + works + ' ' + pay + "; ";
    }
    return items;
}

class Story : public HmrcTest
{
protected:
    Story()
    {
        ::Test::SetNow(2018, 9, 1);
        ::Test::Windows().OnUnexpected([](const auto& shown) { return Afx::SafeAnswer(shown.style); });
    }

    /// By the file of that name.
    void Tell(const char* file)
    {
        ::Test::ExpectTranscript(std::string("MorvUt/hmrc/transcripts/") + file + ".txt",
                                 [this](const std::string& command) { return Run(command); });
    }

private:
    /// "fetch ITEMS", "change FROM => TO" (of the answer fetched last), "letters ANSWER ...",
    /// "part NAME JSON" (of the individual interfaces; without JSON: nothing yet), "by-utr", "nic JSON", "retrieve
    /// TYPE", "now DAY" (of September), "rights NUMBER ...", "read-only 0", "create", "forget", "staged", "schedules",
    /// "differences", "accept PLACE", "reject PLACE", "skip PLACE", "audit", "sql STATEMENT" or "query SELECT".
    std::string Run(const std::string& command)
    {
        const std::string verb = command.substr(0, command.find(' ')), rest = command.substr(verb.size());
        if (verb == "fetch")
            return Fetched(rest.substr(rest.empty() ? 0 : 1));
        if (verb == "change")
            return Changed(rest.substr(1, rest.find(" => ") - 1), rest.substr(rest.find(" => ") + 4));
        if (verb == "part")
            m_parts[rest.substr(1, rest.find(' ', 1) - 1)] = rest.substr(std::min(rest.size(), rest.find(' ', 1)));
        if (verb == "by-utr")
            return FetchedByUtr();
        if (verb == "letters")
            return Lettered(rest);
        if (verb == "retrieve")
            return Retrieve(static_cast<HmrcApi::IEndpointOverride::ResponseType>(std::stoi(rest)));
        if (verb == "create")
            return Created();
        if (verb == "accept" || verb == "reject" || verb == "skip")
            return Decided(verb, std::stoul(rest));
        if (verb == "rights") {
            std::istringstream numbers(rest);
            Allow({std::istream_iterator<int>(numbers), {}});
        }
        if (verb == "audit")
            return "audited: " +
                   Query("SELECT strAction, nYear, strUserID, strItem, strHMRC, strReturn FROM MTDAudit ORDER BY lID") +
                   '\n';
        if (verb == "nic") {
            NicOf nic(m_client, rest);
            Fetch(nic);
        }
        if (verb == "read-only")
            CUserData::SetReadOnly(std::stoi(rest));
        if (verb == "forget")
            Forget();
        if (verb == "sql")
            Script(::Test::WithAmounts(rest));
        if (verb == "now")
            ::Test::SetNow(2018, 9, std::stoi(rest));
        return verb == "staged"        ? Staged()
               : verb == "schedules"   ? Schedules()
               : verb == "differences" ? Differences()
               : verb == "query"       ? Asked(rest) + '\n'
                                       : std::string();
    }

    /// What changed; the same answer again changes nothing.
    std::string Fetched(const std::string& items)
    {
        m_answer = Answer(items);
        const HmrcApi::StagedCounts counts = Fetch(m_answer);
        const std::string errors = Errors();
        EXPECT_EQ(Fetch(m_answer), HmrcApi::StagedCounts{}) << items;
        return Text(counts) + errors + '\n';
    }

    /// Of what is listed now; the second of two who decide on the same is told.
    std::string Decided(const std::string& verb, std::size_t place)
    {
        using enum HmrcApi::Decision;
        const HmrcApi::Decision decision = verb == "accept" ? Accept : verb == "reject" ? Reject : Skip;
        const auto listed = HmrcApi::FindDifferences(m_client, TaxYear(kYear)).at(place - 1);
        const auto decide = [&](const std::string& hash) {
            return HmrcApi::Decide(m_client, TaxYear(kYear), listed.number, decision, hash);
        };
        EXPECT_NE(decide("0").message, "") << "other figures";
        const HmrcApi::ReviewResult result = decide(listed.Hash());
        EXPECT_EQ(decide({}).message.IsEmpty(), decision == Skip && result.message.IsEmpty());
        return result.message.IsEmpty() ? "done\n" : result.message.Str() + '\n';
    }

    std::string FetchedByUtr()
    {
        EmploymentsOf first(m_client, m_parts), second(m_client, m_parts);
        const HmrcApi::StagedCounts counts = Fetch(first);
        const std::string errors = Errors();
        EXPECT_EQ(Fetch(second), HmrcApi::StagedCounts{}) << "the same again";
        EXPECT_EQ(first.HasDifferences(), !Differences().empty());
        return Text(counts) + errors + '\n' + Told(first.GetNotes());
    }

    /// What the change does, and what differs then; the answer before leaves all as it was.
    std::string Changed(const std::string& from, const std::string& to)
    {
        const std::string answer = m_answer, before = Staged(),
                          changed = Replaced(answer, from, to == "nothing" ? "" : to);
        PayeOf prepop(m_client, changed);
        const HmrcApi::StagedCounts counts = Fetch(prepop);
        const std::string differences = Differences();
        EXPECT_TRUE(prepop.HasNewData());
        EXPECT_EQ(prepop.HasDifferences(), !differences.empty());
        EXPECT_EQ(Fetch(changed), HmrcApi::StagedCounts{}) << "the same again";
        Fetched(answer);
        Quarry::GetConnection().Script("DELETE FROM BRIXMTD_Employments WHERE bWithdrawn = 1;"
                                       "DELETE FROM BRIXMTD_EmploymentsCompanyBenefits WHERE bWithdrawn = 1;"
                                       "DELETE FROM BRIXMTD_PensionStateBenefits WHERE bWithdrawn = 1");
        EXPECT_EQ(Staged() + Differences(), before) << "back to what it was";
        return Text(counts) + '\n' + differences;
    }

    /// Answer after answer, each scheduled: what each changed and what differs then; at last the keys with works
    /// numbers in the order in which the rows were made, and the number of schedules.
    std::string Lettered(const std::string& answers)
    {
        std::string text;
        std::istringstream words(answers);
        for (std::string letters; words >> letters;) {
            text += Fetched(Items(letters));
            Created();
            text += Differences();
        }
        text += Query("SELECT bWithdrawn, strKey || '=' || COALESCE(strWorksNumber, '') FROM BRIXMTD_Employments "
                      "ORDER BY lID") +
                Query("SELECT bWithdrawn, strWorksNumber FROM BRIXMTD_PensionStateBenefits ORDER BY lID") +
                "; schedules " +
                Query("SELECT (SELECT COUNT(*) FROM BRIXNewEmploy) + COUNT(*) FROM BRIXPensionStateBenefits") + '\n';
        Forget();
        return text;
    }

    static std::string Text(const HmrcApi::StagedCounts& counts)
    {
        return "new " + std::to_string(counts.added) + ", changed " + std::to_string(counts.changed) + ", withdrawn " +
               std::to_string(counts.withdrawn);
    }

    /// Why it is refused; or how many schedules, and what is told: nothing is made twice, and it is known beforehand
    /// whether anything is.
    std::string Created()
    {
        HmrcApi::CPAYEPrepop before(m_client, TaxYear(kYear), {}, HmrcApi::IEndpointOverride::Live);
        const bool hasEmployments = before.DoNewEmploymentsExist(),
                   hasPensions = before.DoNewPensionStateBenefitsExist();
        const HmrcApi::CreateResult result = HmrcApi::CreateFromHmrc(m_client, TaxYear(kYear));
        if (!result.ok) {
            EXPECT_EQ(::Test::Windows().Messages().back().text, result.message.Str());
            return result.message.Str() + '\n';
        }
        const HmrcApi::CreatedSchedules& created = result.created;
        const HmrcApi::CreatedSchedules again = Create();
        EXPECT_EQ(again.employments + again.pensionsAndBenefits, 0);
        EXPECT_EQ(hasEmployments, created.employments > 0);
        EXPECT_EQ(hasPensions, created.pensionsAndBenefits > 0);
        return "employments " + std::to_string(created.employments) + ", pensions and benefits " +
               std::to_string(created.pensionsAndBenefits) + '\n' + Told(created.notes);
    }

    static std::string Told(const std::vector<CString>& notes)
    {
        std::string text;
        for (const CString& note : notes)
            text += "  " + note.Str() + '\n';
        return text;
    }

    std::string m_answer; // the last one
    std::map<std::string, std::string> m_parts;
};

ON_BOTH_DATABASES(Story);

} // namespace

TEST_P(Story, ByUtr) { Tell("by-utr"); }
TEST_P(Story, OfChanges) { Tell("changes"); }
TEST_P(Story, OfKeys) { Tell("keys"); }
TEST_P(Story, OfNewSchedules) { Tell("new-schedules"); }
TEST_P(Story, OfOtherPrograms) { Tell("other-programs"); }
TEST_P(Story, OfRetrievals) { Tell("retrieval"); }
TEST_P(Story, OfReviews) { Tell("review"); }
TEST_P(Story, OfStaging) { Tell("staging"); }
