// A temporary folder of a test and helpers that read and write files in it.
#pragma once

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include <velmora/text/Unicode.h>

namespace Quorvex::Velmora::TestSupport
{

inline std::filesystem::path toPath(std::wstring_view path)
{
#ifdef _WIN32
    return path;
#else
    return Common::Unicode::toUtf8(path);
#endif
}

/// An empty folder with a non-ASCII name that exists during the lifetime of the object.
class TemporaryFolder
{
public:
    TemporaryFolder()
    {
        static std::atomic<unsigned> counter{0};
        const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
        root = std::filesystem::temp_directory_path() /
               toPath(L"velmora-\x4E2D\xE9-" + std::to_wstring(now) + L"-" + std::to_wstring(counter++));
        std::filesystem::create_directories(root);
    }
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(root, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const noexcept { return root; }

    /// The path of a file in the folder, in the form that the library takes.
    [[nodiscard]] std::wstring file(std::wstring_view name) const
    {
        return Common::Unicode::fromUtf8((root / toPath(name)).u8string());
    }

private:
    std::filesystem::path root;
};

using Bytes = std::vector<unsigned char>;

inline Bytes readFile(std::wstring_view path)
{
    std::ifstream stream(toPath(path), std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

inline std::string readText(const std::filesystem::path& path)
{
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

inline void writeFile(std::wstring_view path, std::string_view bytes)
{
    std::ofstream stream(toPath(path), std::ios::binary | std::ios::trunc);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

inline void writeFile(std::wstring_view path, const Bytes& bytes)
{
    writeFile(path, std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
}

} // namespace Quorvex::Velmora::TestSupport
