// Fetches a client's records from HMRC, makes the schedules that the return lacks, lists what differs.
// usage: fetch FILE GATEWAY BASE      BASE: the sandbox's address; without it HMRC would be asked

#include <iostream>

#include "Example.h"

namespace
{

void ShowFetch(const HmrcApi::FetchResult& result)
{
    if (result.stopped != HmrcApi::FetchResult::Stopped::No)
        std::cout << "nothing was asked: " << result.Reason() << '\n';
    for (const HmrcApi::FetchedGroup& group : result.groups)
        std::cout << group.name << ": " << HmrcApi::NameOf(group.state) << '\n';
    for (const auto& group : result.errors->GetGroups())
        for (const HmrcApi::CAPIError& error : group.errors)
            std::cout << error.GetCode() << ": " << error.GetMessageText() << ". "
                      << HmrcApi::ActionFor(error.GetCode(), error.GetHttpStatus(), error.GetField()) << '\n';
    std::cout << result.counts.items << " items, " << result.staged.added << " new\n";
}

void ShowDifferences(const std::vector<HmrcApi::Difference>& differences)
{
    for (const HmrcApi::Difference& difference : differences) {
        std::cout << difference.number << ". " << difference.item << '\n';
        for (const HmrcApi::DifferenceRow& row : difference.rows)
            std::cout << "   " << row.caption << ": return " << row.ReturnText() << ", HMRC " << row.HmrcText() << '\n';
    }
}

/// What a user does to the first employment of the return.
void TypePay(ClientId client, TaxYear year, const char* text)
{
    Kiln::CAmt pay;
    Brix::CNewEmploy schedules;
    if (!pay.Parse(text) || !schedules.Open({{Brix::CNewEmploy::kClientID, client.Get()},
                                             {Brix::CNewEmploy::kYear, year.GetRealTaxYear()}}))
        return;
    schedules.SetPay(pay);
    schedules.Update();
}

void Work(ClientId client, TaxYear year, const std::string& gateway)
{
    TaxYearHelpers::SetCurrentTaxYear(year); // a fetch is for the year that the user works in
    const HmrcApi::FetchResult result = HmrcApi::FetchFromHmrc(client, gateway);
    ShowFetch(result);

    const HmrcApi::CreateResult made = HmrcApi::CreateFromHmrc(client, year);
    std::cout << made.created.employments << " employments, " << made.created.pensionsAndBenefits
              << " pensions and benefits made\n";
    for (const CString& note : made.created.notes)
        std::cout << "   " << note << '\n';

    std::cout << HmrcApi::FindDifferences(client, year).size() << " differences\n";
    TypePay(client, year, "22,551.50");
    ShowDifferences(HmrcApi::FindDifferences(client, year));
}

int Run(const std::string& path, const std::string& gateway, const std::string& base)
{
    if (!HmrcApi::CClientData::SetLoopbackOverride(base)) {
        std::cerr << base << " is no address of this computer\n";
        return 2;
    }
    if (const std::string problem = OpenPractice(path, "alice"); !problem.empty()) {
        std::cerr << problem << '\n';
        return 1;
    }
    const auto client = FindClient("C0001");
    if (client)
        Work(ClientId(client->id), TaxYear(2018), gateway);
    return client ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    return RunExample([&] {
        Afx::WindowSystem::Install(std::make_unique<Afx::ConsoleWindowSystem>()); // messages go to standard error
        return argc == 4 ? Run(argv[1], argv[2], argv[3]) : Usage("usage: fetch FILE GATEWAY BASE");
    });
}
