#pragma once

// A new practice's file, until it is whole.

#include <string>

#include "Afx/system/SignalGuard.h"

namespace Morv
{

/// A file under a name of its own, beside the one that it is to be. It goes when it is given up, and a signal that ends
/// the program waits for that: who fills it stops soon (Afx::SignalGuard). Throws CommandError.
class PartFile
{
public:
    /// `what`, for messages: "backup". Refuses a name that is taken.
    PartFile(const std::string& file, const char* what);
    PartFile(const PartFile&) = delete;
    PartFile& operator=(const PartFile&) = delete;
    ~PartFile();

    const std::string& GetName() const noexcept { return m_name; }
    /// Gives it its name once it is on the disk. Another file of that name is never replaced.
    void Finish() const;
    /// To be thrown for what else keeps it from being written.
    [[noreturn]] void ThrowNotWritten(const std::string& why) const;

private:
    [[noreturn]] void ThrowExists() const;
    bool IsNameTaken() const;

    const Afx::SignalGuard m_guard; // until the file is gone, or has its name
    std::string m_file, m_name;
    const char* m_what;
};

} // namespace Morv
