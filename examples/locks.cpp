// Logs in, files a batch that only one user at a time may file, and looks who keeps others out.
// usage: locks FILE

#include "Example.h"

namespace
{

constexpr int kBatchFiling = 7; // a feature's number, the program's own

void ShowLocks(Cellar::CConnection& practice)
{
    for (const HeldLock& lock : ListLocks(practice))
        std::cout << LockKindName(lock.kind) << ' ' << lock.key << ": " << lock.user << " at " << lock.workstation
                  << (lock.isAlive == true ? ", running\n" : "\n");
}

void FileBatch(Cellar::CConnection& practice)
{
    CFeatureLock lock(kBatchFiling, practice);
    CString holder;
    if (!lock.Lock(&holder)) { // the user was told who has it, and where
        std::cout << "not now: " << holder << '\n';
        return;
    }
    ShowLocks(practice);
    BounceCommitBeginTrans(); // what the sheet has written so far is in the practice now
}

/// Another program has the lock meanwhile.
void FileInVain(const char* path)
{
    const auto other = Cellar::CConnection::Open(path);
    CFeatureLock lock(kBatchFiling, *other);
    if (lock.Lock())
        FileBatch(Quarry::GetConnection());
}

void Say(unsigned text)
{
    std::cout << Afx::FillPlaces(LibraryText(text).View(), {CUserData::m_strUser.Str(), "Morv"}) << '\n';
}

int Work(const char* path)
{
    Afx::SetComputerName("DESK1"); // so that it prints the same everywhere,
    std::cout << std::unitbuf;     // and in turn with messages
    if (const std::string why = OpenPractice(path, "alice"); !why.empty()) {
        std::cerr << why << '\n';
        return 1;
    }
    Cellar::CConnection& practice = Quarry::GetConnection();
    CUserLockFile::InitUserLocking(practice);
    CMorvLockFile& login = GetMorvLockFile();
    if (login.AddLock(CUserData::m_strUser) != CUserLockFile::Held) {
        Say(IDS_USER_NOT_RECORDED);
        return 1;
    }
    if (!login.HasOwnRow()) // at another workstation, or left behind
        Say(IDS_USER_ALREADY_USING);
    std::cout << login.GetNumUsers() << " at work\n";
    {
        const Quarry::CTransaction sheet; // open, and nothing is written yet
        FileBatch(practice);
    }
    FileInVain(path);
    login.RemoveLock();
    ShowLocks(practice);
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    return RunExample([&] { return argc == 2 ? Work(argv[1]) : Usage("usage: locks FILE"); });
}
