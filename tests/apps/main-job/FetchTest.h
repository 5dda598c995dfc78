#pragma once

// Fetches through the library from a sandbox in this process.

#include <map>
#include <set>
#include <string>

#include "apps/morv/Program.h"
#include "MorvUt/hmrc/fetch/FetchData.h"
#include "MorvUt/hmrc/HmrcTest.h"

/// What a fetch from the sandbox did.
struct Fetched
{
    HmrcApi::FetchResult result;
    std::map<std::string, int> asked; // requests that the sandbox saw, by the interface: "individual-paye", "oauth"
    unsigned waited = 0;              // milliseconds between tries
};

/// The practice of HmrcTest, authorised at the sandbox. Waits take no time.
class FetchTest : public testing::Test, protected HmrcPractice
{
protected:
    /// `scenario`: what the sandbox answers without Serve; nothing yet when empty.
    explicit FetchTest(const std::string& scenario = {});
    ~FetchTest() override;

    void Authorise();
    /// From now on HMRC holds figures that no earlier call had; `number` is what tells them from the others.
    void Serve(int number);
    Fetched Fetch();
    int StagedPaye() const; // the number that was staged last
    int StagedNationalInsurance() const;

    /// The rows of every table that has some, in each digit, as another program reads them: opening a practice writes.
    using Tables = std::map<std::string, std::string>;
    Tables Read() const;
    /// The names of the tables that differ, but those of `without`.
    static std::set<std::string> Changed(Tables before, Tables after, const std::set<std::string>& without);

    ::Test::HmrcSandbox m_sandbox;
    unsigned m_waited = 0;
};
