// Takes the canonical path of any string. It must be rooted, have backslashes only and no empty, "." or ".."
// components, and be its own canonical path.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include <velmora/platform/CanonicalPath.h>
#include <velmora/platform/QrxQvFileSystemUtility.h>
#include <velmora/text/Unicode.h>

namespace
{

using namespace Quorvex::Velmora::Common;

void require(bool condition)
{
    if (!condition)
        std::abort();
}

void requireCanonical(const std::wstring& path)
{
    require(isRooted(path));
    require(path.find(L'/') == std::wstring::npos);
    const std::wstring components = path.substr(hasDriveLetter(path) ? 2 : 0) + L"\\";
    require(components == L"\\\\" || components.find(L"\\\\") == std::wstring::npos);
    require(components.find(L"\\.\\") == std::wstring::npos);
    require(components.find(L"\\..\\") == std::wstring::npos);
    require(lexicallyCanonical(path) == path);
}

} // namespace

// The first byte chooses between UTF-8 and wide characters of any value, unpaired surrogates included.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    std::wstring text;
    if (data[0] % 2 == 0) {
        text = Unicode::fromUtf8(std::string(reinterpret_cast<const char*>(data + 1), size - 1));
    } else {
        for (std::size_t i = 1; i + 1 < size; i += 2)
            text += static_cast<wchar_t>(data[i] | data[i + 1] << 8);
    }
    requireCanonical(QrxQvFileSystemUtility::canonical(text, L"/base/folder"));
    if (isRooted(text))
        requireCanonical(lexicallyCanonical(text));
    (void)QrxQvFileSystemUtility::parentPath(text);
    return 0;
}
