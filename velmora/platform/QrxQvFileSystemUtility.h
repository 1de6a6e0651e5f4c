// The file system as this library asks it. Internal.
#pragma once

#include <string>

namespace Quorvex::Velmora::Common
{

/// Paths are wide texts with either slash. No operation depends on the process's locale.
struct QrxQvFileSystemUtility {
    [[nodiscard]] static bool exists(const std::wstring& path);

    /// @throws std::filesystem::filesystem_error when the current directory is gone.
    [[nodiscard]] static std::wstring currentPath();

    /// The path made absolute against `base`, without "." and "..", with back-slashes on every platform: the form in
    /// which the sync application names items. Links are followed as far as the path exists. A path with a drive letter
    /// is the sync application's own and, off Windows, is not looked for on the disk.
    [[nodiscard]] static std::wstring canonical(const std::wstring& path, const std::wstring& base);

    /// The path without its last component, with the slashes that it has. Slashes at the end do not count: the parent
    /// of "D:\x\" is "D:\". A root ("/", "D:", "D:\", "\\server\share") is its own parent; the parent of a single name
    /// is empty.
    [[nodiscard]] static std::wstring parentPath(const std::wstring& path);

    /// Removes a file; false when there was none or it cannot be removed.
    static bool remove(const std::wstring& path);

    [[nodiscard]] static std::wstring combine(const std::wstring& folder, const std::wstring& name);

    /// The user's folder for temporary files, in the platform's own form.
    /// @throws std::filesystem::filesystem_error when there is none.
    [[nodiscard]] static std::wstring tempPath();
};

} // namespace Quorvex::Velmora::Common
