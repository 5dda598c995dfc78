#include "Afx/system/Computer.h"
#include "Afx/system/Files.h"

#include <filesystem>

#include "support/Test.h"

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
    for (const char* const unreadable : {"missing.txt", "missing/file.txt", ""})
        EXPECT_EQ(Afx::ReadTextFile(folder + unreadable), std::nullopt) << unreadable;
#ifndef _WIN32
    for (const char* const name : {"list.Txt", "lisT.txt", "LiST.txt", "liST.txt", "LISt.txt", "LIST.txt", "LIst.txt"})
        ::Test::WriteFile(name, name);
    EXPECT_EQ(Afx::ReadTextFile(folder + "list.txt"), "LIST.txt") << "of several the first in byte order";
    EXPECT_EQ(Afx::ReadTextFile(folder + "liST.txt"), "liST.txt") << "but the exact name before all";
#endif
}

TEST(GetProgramDirectory, HoldsTheRunningProgram)
{
    EXPECT_TRUE(std::filesystem::exists((Afx::GetProgramDirectory() + "/AfxTests").GetString()) ||
                std::filesystem::exists((Afx::GetProgramDirectory() + "/AfxTests.exe").GetString()));
}
