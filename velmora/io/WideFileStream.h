// File streams on wide paths, on every platform and under every locale of the host.
#pragma once

#include <boost/filesystem/path.hpp>

#include <velmora/text/Unicode.h>
// The C++ library of mingw opens streams on wide paths, but Boost expects that only from the library with this macro.
#if defined(__MINGW32__) && !defined(_CPPLIB_VER)
#define _CPPLIB_VER 405
#include <boost/filesystem/fstream.hpp>
#undef _CPPLIB_VER
#else
#include <boost/filesystem/fstream.hpp>
#endif

#include <filesystem>
#include <ios>
#include <locale>
#include <string>
#include <system_error>

namespace Quorvex::Velmora::IO
{

/// @return the platform's form of a wide path; empty, which opens nothing, if the string cannot be the name of a file.
inline boost::filesystem::path toStreamPath(const std::wstring& path)
{
    if (path.find(L'\0') != std::wstring::npos)
        return {};
#ifdef _WIN32
    return path;
#else
    return Common::Unicode::toUtf8Strict(path).value_or(std::string());
#endif
}

/// @return the same for a file to read; empty for a folder too. Linux opens folders, and then every read fails; Windows
///     does not.
inline boost::filesystem::path toReadablePath(const std::wstring& path)
{
    boost::filesystem::path result = toStreamPath(path);
#ifndef _WIN32
    std::error_code ignored;
    if (std::filesystem::is_directory(result.native(), ignored))
        return {};
#endif
    return result;
}

/// Opens a stream for bytes. The stream gets no buffer, because its users read and write large pieces.
template <class FileStream>
void openUnbuffered(FileStream& stream, const std::wstring& path, std::ios::openmode mode)
{
    // The host's global locale may convert characters.
    stream.imbue(std::locale::classic());
    stream.rdbuf()->pubsetbuf(nullptr, 0);
    stream.open(toStreamPath(path), mode | std::ios::binary);
}

} // namespace Quorvex::Velmora::IO
