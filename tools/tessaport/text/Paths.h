// Paths as the user gives them, as this platform opens them and as the sync application writes them.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace Quorvex::Velmora::Tool
{

/// The file-system form of UTF-8 text, whatever the process's locale is.
std::filesystem::path toPath(const std::string& text);

std::string toText(const std::filesystem::path& path);

/// The absolute path of what the user wrote with either slash, without `.`, `..` and an end slash; links stay as they
/// are. @throws Failure when the current directory is gone and is needed.
std::string absolutePath(const std::string& given);

/// The same with all links followed, as far as the path exists.
std::string withoutLinks(const std::string& absolute);

/// The path itself and the folders that hold it, the nearest first.
std::vector<std::string> selfAndParents(const std::string& absolute);

/// The last name of a path.
std::string fileName(const std::string& path);

/// Back-slashes, as the sync application writes paths.
std::string withBackslashes(std::string path);

} // namespace Quorvex::Velmora::Tool
