/// @file
/// Opens shared libraries, and finds the one that contains this code.
#pragma once

#include <filesystem>
#include <string>

namespace Quorvex::Velmora::Tessaport
{

/// A shared library that stays loaded until the process ends.
class NativeLibrary
{
public:
    /// Opens a library. One that cannot be opened has no symbols.
    [[nodiscard]] static NativeLibrary open(const std::filesystem::path& path);

    /// Returns the function of that name, or null.
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

/// The folder of the library, or of the program, that this code is linked into.
[[nodiscard]] std::filesystem::path libraryFolder();

} // namespace Quorvex::Velmora::Tessaport
