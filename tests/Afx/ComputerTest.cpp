#include "Afx/Computer.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/Case.h"
#include "support/TestSupport.h"

TEST(GetComputerName, HasFifteenBytesOfTheFirstLabel)
{
    const ::Test::Case<const char*, const char*> rows[] = {
        {"anna.practice.example", "anna", "first label"},
        {"workstation-0015", "workstation-001", "sixteen bytes"},
        {"workstation-00é", "workstation-00", "the last character would be cut"},
        {"workstation-0é", "workstation-0é", "the last character just fits"},
        {".example", "Unknown", "nothing before the point"},
    };
    for (const auto& row : rows) {
        Afx::SetComputerName(row.in);
        EXPECT_EQ(Afx::GetComputerName(), row.out) << row.why;
    }
    Afx::SetComputerName({});
    EXPECT_FALSE(Afx::GetComputerName().IsEmpty());
}

TEST(ReadTextFile, FindsTheNameInAnyCaseAndReadsAnyEncoding)
{
    const std::string folder = ::Test::TempDir() + "/";
    ::Test::WriteFile("INSLIST.TXT", "\xEF\xBB\xBFRéunion\r\n");
    ::Test::WriteFile("old.txt", "R\xE9union");
    ::Test::WriteFile("empty.txt", "");
    EXPECT_EQ(Afx::ReadTextFile(folder + "InsList.txt"), "Réunion\r\n");
    EXPECT_EQ(Afx::ReadTextFile(folder + "old.txt"), "Réunion");
    EXPECT_EQ(Afx::ReadTextFile(folder + "empty.txt"), "");
    EXPECT_EQ(Afx::ReadTextFile(folder + "missing.txt"), std::nullopt);
    EXPECT_EQ(Afx::ReadTextFile(folder + "missing/file.txt"), std::nullopt);
    EXPECT_EQ(Afx::ReadTextFile(::Test::TempDir()), std::nullopt) << "a folder";
    ::Test::WriteFile("inslist.txt", "exact");
    EXPECT_EQ(Afx::ReadTextFile(folder + "inslist.txt"), "exact") << "the exact name first";
}

TEST(GetProgramDirectory, HoldsTheRunningProgram)
{
    EXPECT_TRUE(std::filesystem::exists((Afx::GetProgramDirectory() + "/AfxTests").GetString()) ||
                std::filesystem::exists((Afx::GetProgramDirectory() + "/AfxTests.exe").GetString()));
}
