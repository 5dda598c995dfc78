#include <gtest/gtest.h>

#include "Afx/system/Computer.h"
#include "Afx/system/Settings.h"
#include "Afx/time/Clock.h"
#include "support/TestSupport.h"

namespace Test
{

void RemoveTempDir();

namespace
{

class Surroundings : public testing::EmptyTestEventListener
{
    void OnTestStart(const testing::TestInfo&) override
    {
        Reset();
        auto windows = std::make_unique<Afx::HeadlessWindowSystem>();
        windows->OnUnexpected([](const Afx::HeadlessWindowSystem::Shown& shown) {
            ADD_FAILURE() << "message box or dialog without a script that it takes: " << shown.text;
            return Afx::SafeAnswer(shown.style);
        });
        Afx::WindowSystem::Install(std::move(windows));
        Afx::Settings::SetPath((TempDir() + "/settings.ini").c_str());
    }
    void OnTestEnd(const testing::TestInfo&) override
    {
        Reset();
        if (const auto* windows = dynamic_cast<Afx::HeadlessWindowSystem*>(Afx::WindowSystem::Current())) {
            EXPECT_EQ(windows->AnswersLeft(), 0u) << "message boxes that the test has scripted, but that never came";
            EXPECT_EQ(windows->ScriptsLeft(), 0u) << "dialogs that the test has scripted, but that never opened";
        }
        Afx::WindowSystem::Install(nullptr);
        RemoveTempDir();
    }
    static void Reset()
    {
        Afx::Clock::Set({});
        Afx::Clock::SetSleep({});
        Afx::SetComputerName({});
    }
};

} // namespace
} // namespace Test

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    testing::UnitTest::GetInstance()->listeners().Append(new Test::Surroundings);
    return RUN_ALL_TESTS();
}
