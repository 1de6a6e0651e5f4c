// Opening shared libraries, and finding the one that this code stands in.
#pragma once

#include <filesystem>
#include <string>

namespace Quorvex::Velmora::Tessaport
{

/// A shared library that stays loaded to the end of the process.
class NativeLibrary
{
public:
    /// A library that cannot be opened has no symbols.
    [[nodiscard]] static NativeLibrary open(const std::filesystem::path& path);

    /// The function of that name, or null.
    template <class Function>
    [[nodiscard]] Function symbol(const char* name) const
    {
        return reinterpret_cast<Function>(address(name));
    }

    [[nodiscard]] bool isOpen() const noexcept { return handle != nullptr; }

    /// Why the library could not be opened; empty when it could.
    [[nodiscard]] const std::string& error() const noexcept { return failure; }

private:
    [[nodiscard]] void* address(const char* name) const;

    void* handle = nullptr;
    std::string failure;
};

/// Folder of the library, or the program, that this code was linked into.
[[nodiscard]] std::filesystem::path libraryFolder();

} // namespace Quorvex::Velmora::Tessaport
