#include "velmora/platform/WindowsPath.h"

#include <windows.h>

#include <velmora/platform/CanonicalPath.h>

namespace Quorvex::Velmora::Common::WindowsPath
{
namespace
{

constexpr std::wstring_view LongPrefix = L"\\\\?\\";
constexpr std::size_t DriveLength = 2;

bool startsWith(std::wstring_view text, std::wstring_view beginning)
{
    return text.substr(0, beginning.size()) == beginning;
}

std::wstring fullPath(const std::wstring& path)
{
    const DWORD size = GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    std::wstring full(size, L'\0');
    full.resize(size == 0 ? 0 : GetFullPathNameW(path.c_str(), size, full.data(), nullptr));
    return full;
}

// Returns the form that the system accepts in any length. It is taken literally, so "." and ".." are resolved first.
std::wstring systemPath(std::wstring_view path)
{
    if (startsWith(path, LongPrefix))
        return std::wstring(path);
    const std::wstring full = fullPath(std::wstring(path));
    return hasDriveLetter(full) ? std::wstring(LongPrefix) + full : full;
}

class File
{
public:
    explicit File(const std::wstring& path)
        : handle(CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
              OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr))
    {
    }
    ~File()
    {
        if (isOpen())
            CloseHandle(handle);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    [[nodiscard]] bool isOpen() const noexcept { return handle != INVALID_HANDLE_VALUE; }

    // Returns an empty string if the file is not on a drive with a letter.
    [[nodiscard]] std::wstring pathOnDrive() const
    {
        const DWORD size = GetFinalPathNameByHandleW(handle, nullptr, 0, FILE_NAME_NORMALIZED | VOLUME_NAME_DOS);
        std::wstring path(size, L'\0');
        path.resize(GetFinalPathNameByHandleW(handle, path.data(), size, FILE_NAME_NORMALIZED | VOLUME_NAME_DOS));
        if (!startsWith(path, LongPrefix) || !hasDriveLetter(std::wstring_view(path).substr(LongPrefix.size())))
            return {};
        return path.substr(LongPrefix.size());
    }

private:
    HANDLE handle;
};

} // namespace

bool exists(std::wstring_view path)
{
    return !path.empty() && GetFileAttributesW(systemPath(path).c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool remove(std::wstring_view path)
{
    if (path.empty())
        return false;
    const std::wstring name = systemPath(path);
    return DeleteFileW(name.c_str()) != 0 || RemoveDirectoryW(name.c_str()) != 0;
}

std::wstring followed(std::wstring_view rooted)
{
    const std::wstring full = fullPath(std::wstring(rooted));
    if (!hasDriveLetter(full))
        return std::wstring(rooted);
    for (std::size_t end = full.size(); end != std::wstring::npos; end = full.find_last_of(L'\\', end - 1)) {
        // The drive itself comes last: its letter may be another name of a folder.
        const bool isDrive = end == DriveLength;
        const File file(std::wstring(LongPrefix) + full.substr(0, end) + (isDrive ? L"\\" : L""));
        if (file.isOpen()) {
            const std::wstring found = file.pathOnDrive();
            return found.empty() ? full : found + full.substr(end);
        }
    }
    return full;
}

} // namespace Quorvex::Velmora::Common::WindowsPath
