// What commands do when they are interrupted, and without the modules that they need.

#include <stdlib.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "apps/morv/Program.h"
#include "Cellar/Connection.h"
#include "support/Test.h"

namespace
{

using namespace Test;

TEST(Commands, ASignInThatIsInterruptedLeavesTheGrantAsItWas)
{
    const HmrcSandbox sandbox;
    const std::string practice = AuthorisedPractice(sandbox);
    const auto connection = Cellar::CConnection::Open(CString(practice));
    const auto isAuthorised = [&] {
        return Cellar::ToLong(connection->Queryf("SELECT nAuthorisedStatus FROM MTDAuthorisation").rows[0][0]) != 0;
    };
    ASSERT_TRUE(isAuthorised());
    RunningMorv signIn("hmrc authorise " + practice + " --gateway gateway-1 --browser true --base " + sandbox.Base());
    while (isAuthorised())
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    signIn.Signal(15);
    EXPECT_EQ(signIn.Wait().exit, -15);
    EXPECT_TRUE(isAuthorised());
}

#ifdef MORV_HTTP_LIBRARY
/// While it lives morv takes this library from a folder where no module stands beside it.
class WithoutModule
{
public:
    explicit WithoutModule(const std::string& library)
    {
        std::filesystem::copy_file(library, TempDir() + library.substr(library.rfind('/')),
                                   std::filesystem::copy_options::overwrite_existing);
        setenv("LD_LIBRARY_PATH", TempDir().c_str(), 1);
    }
    ~WithoutModule() { unsetenv("LD_LIBRARY_PATH"); }
    WithoutModule(const WithoutModule&) = delete;
    WithoutModule& operator=(const WithoutModule&) = delete;
};

TEST(Commands, WithoutAModuleTheRulesGoOnAndTheRestNamesIt)
{
    HmrcSandbox sandbox("EVERYTHING");
    const std::string practice = AuthorisedPractice(sandbox);
    const Row<const char*, std::string, int> rows[] = {
        {MORV_HTTP_LIBRARY, FetchLine(practice, sandbox) + " --json", 4, "Http"},
        {MORV_HTTP_LIBRARY, "hmrc authorise " + practice + " --gateway gateway-1 --base " + sandbox.Base(), 4, "Http"},
        {MORV_HTTP_LIBRARY, "doctor " + practice, 1, "Http"},
        {MORV_DATABASE_LIBRARY, "client list " + practice, 3, "Sqlite"},
    };
    for (const auto& [library, line, exit, module] : rows) {
        const WithoutModule without(library);
        EXPECT_EQ(RunMorv("calc GetTaxYear 2018-04-06").exit, 0);
        const Ended ended = RunMorv(line);
        EXPECT_EQ(ended.exit, exit) << line;
        EXPECT_NE((ended.out + ended.err).find(TempDir() + "/MorvUt" + module + '-'), std::string::npos) << ended.out;
    }
}

TEST(Commands, WithoutTheCipherModuleNoKeyIsCalledWrong)
{
    const std::string practice = SamplePractice(), fresh = TempDir() + "/fresh.db", module = MORV_CIPHER_MODULE,
                      copy = TempDir() + module.substr(module.rfind('/'));
    const WithoutModule without(MORV_CIPHER_LIBRARY);
    for (int round = 0; round < 2; ++round) { // missing, then cut short
        EXPECT_EQ(RunMorv("calc GetTaxYear 2018-04-06").exit, 0);
        for (const auto& [line, exit] :
             {std::pair("doctor " + practice, 1), {"client list " + practice, 3}, {"practice create " + fresh, 3}}) {
            const Ended ended = RunMorv(line);
            EXPECT_EQ(ended.exit, exit) << line;
            EXPECT_NE((ended.out + ended.err).find(copy), std::string::npos) << ended.out << ended.err;
            EXPECT_NE((ended.out + ended.err).find("Install"), std::string::npos) << ended.out << ended.err;
        }
        EXPECT_FALSE(std::filesystem::exists(fresh));
        std::filesystem::copy_file(module, copy, std::filesystem::copy_options::overwrite_existing);
        std::filesystem::resize_file(copy, std::filesystem::file_size(copy) / 2);
    }
}

#endif

} // namespace
