#include "Shellkit/detail/KeyFileStore.h"

#include <filesystem>

#include "Afx/Platform.h"
#include "Afx/system/FilePath.h"

#include <sddl.h>

namespace Shellkit::Detail
{
namespace
{

class File
{
public:
    explicit File(HANDLE handle) noexcept : m_handle(handle) {}
    ~File() { Close(); }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    explicit operator bool() const noexcept { return m_handle != INVALID_HANDLE_VALUE; }
    HANDLE Get() const noexcept { return m_handle; }
    void Close() noexcept
    {
        if (m_handle != INVALID_HANDLE_VALUE)
            CloseHandle(m_handle);
        m_handle = INVALID_HANDLE_VALUE;
    }

private:
    HANDLE m_handle;
};

std::error_code LastError() { return {static_cast<int>(::GetLastError()), std::system_category()}; }

/// Rights for the file's owner and the system, nothing inherited from the folder.
constexpr wchar_t kOwnerOnly[] = L"D:P(A;;FA;;;OW)(A;;FA;;;SY)";

} // namespace

/// The rights of an existing file are the administrator's business here: they are not examined.
OwnFile ReadOwnFile(const std::string& path, std::size_t limit, const std::string&)
{
    OwnFile result;
    const File file(CreateFileW(Afx::ToPath(path).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD size = 0;
    result.text.resize(limit + 1);
    if (!file || !::ReadFile(file.Get(), result.text.data(), static_cast<DWORD>(result.text.size()), &size, nullptr)) {
        result.error = LastError();
        size = 0;
    }
    result.text.resize(size);
    return result;
}

bool MakeOwnFile(const std::string& path, std::string_view text, bool)
{
    SECURITY_ATTRIBUTES attributes{sizeof(SECURITY_ATTRIBUTES), nullptr, FALSE};
    if (!ConvertStringSecurityDescriptorToSecurityDescriptorW(kOwnerOnly, SDDL_REVISION_1,
                                                              &attributes.lpSecurityDescriptor, nullptr))
        return false;
    const std::filesystem::path widePath = Afx::ToPath(path);
    File file(CreateFileW(widePath.c_str(), GENERIC_WRITE, 0, &attributes, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
    LocalFree(attributes.lpSecurityDescriptor);
    if (!file)
        return false;
    DWORD written = 0;
    const auto size = static_cast<DWORD>(text.size());
    const bool done = ::WriteFile(file.Get(), text.data(), size, &written, nullptr) && written == size &&
                      FlushFileBuffers(file.Get());
    file.Close();
    if (!done)
        DeleteFileW(widePath.c_str());
    return done;
}

} // namespace Shellkit::Detail
