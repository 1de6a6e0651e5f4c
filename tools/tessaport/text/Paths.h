/// @file
/// Paths as users give them, as this platform opens them and as the sync application writes them.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace Quorvex::Velmora::Tool
{

/// The path that a UTF-8 string names, whatever the locale of the process is.
std::filesystem::path toPath(const std::string& text);

std::string toText(const std::filesystem::path& path);

/// Makes a path with either slash absolute and removes `.`, `..` and a slash at the end. Links are not followed.
///
/// @throws Failure if the path is empty, or relative to a current directory that no longer exists.
std::string absolutePath(const std::string& given);

/// Follows all links of an absolute path, as far as it exists.
std::string withoutLinks(const std::string& absolute);

/// The path itself and the folders that contain it, the nearest first.
std::vector<std::string> selfAndParents(const std::string& absolute);

/// The last name of a path.
std::string fileName(const std::string& path);

/// Replaces slashes by back-slashes, as the sync application writes paths.
std::string withBackslashes(std::string path);

} // namespace Quorvex::Velmora::Tool
