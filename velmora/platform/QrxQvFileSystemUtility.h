// The file system operations that this library needs. Internal.
#pragma once

#include <string>

namespace Quorvex::Velmora::Common
{

/// Operations on paths, which are wide strings with either slash. None depends on the process's locale.
struct QrxQvFileSystemUtility {
    /// Returns whether there is a file or folder.
    [[nodiscard]] static bool exists(const std::wstring& path);

    /// Returns the current directory.
    ///
    /// @throws std::filesystem::filesystem_error when it does not exist any more.
    [[nodiscard]] static std::wstring currentPath();

    /// Returns the absolute path without "." and "..", with back-slashes on every platform: the form in which the sync
    /// application names items. Links are followed as far as the path exists.
    ///
    /// @param path  off Windows one with a drive letter is not looked up on the disk: it is the sync application's own.
    /// @param base  the folder to which a relative path belongs.
    [[nodiscard]] static std::wstring canonical(const std::wstring& path, const std::wstring& base);

    /// Returns the path without its last component, with the slashes that it has.
    ///
    /// Slashes at its end do not count: the parent of "D:\x\" is "D:\". A root ("/", "D:", "D:\", "\\server\share") is
    /// its own parent. The parent of a single name is empty.
    [[nodiscard]] static std::wstring parentPath(const std::wstring& path);

    /// Removes a file. Returns whether this succeeded.
    static bool remove(const std::wstring& path);

    /// Joins a folder and a name with the platform's slash, unless the folder ends with a slash.
    [[nodiscard]] static std::wstring combine(const std::wstring& folder, const std::wstring& name);

    /// Returns the user's folder for temporary files, in the platform's own form.
    ///
    /// @throws std::filesystem::filesystem_error when it does not exist.
    [[nodiscard]] static std::wstring tempPath();
};

} // namespace Quorvex::Velmora::Common
