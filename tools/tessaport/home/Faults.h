#pragma once

#include <array>
#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "tools/tessaport/home/ServiceFile.h"
#include "tools/tessaport/output/JsonFwd.h"

namespace Quorvex::Velmora::Tool
{

/// A request of the service: its name in the state file, and another one that users may type.
struct RequestName {
    const char* name;
    const char* alias;
    const char* meaning;
};

inline constexpr std::array<RequestName, 20> RequestNames{{
    {"discover", nullptr, "look for the drives"},
    {"getVersion", nullptr, "the version of the service"},
    {"getDrives", nullptr, "the drives"},
    {"getChildFolders", nullptr, "the folders in a folder"},
    {"getFolderContents", nullptr, "what is in a folder"},
    {"addFiles", nullptr, "add files to a folder"},
    {"getOrCreateFolder", nullptr, "create a folder"},
    {"canAddFiles", nullptr, "whether files can be added"},
    {"areFilesInWorkspace", "isFileInWorkspace", "whether files are in a workspace"},
    {"syncFiles", "sync", "sync items"},
    {"deleteItems", "deleteFilesOrFolders", "delete items"},
    {"getItemsByWorkspacePaths", nullptr, "items by their paths"},
    {"getItemsByRelativePaths", nullptr, "items of a drive by their paths"},
    {"fileClosedWithinRunningProcess", nullptr, "a file was closed"},
    {"getPropertyDefinitions", nullptr, "the properties of a drive"},
    {"getProperties", "getStringPropertyValues", "the properties of items"},
    {"getCommands", nullptr, "the commands for items"},
    {"executeCommand", nullptr, "run a command"},
    {"getPermanentIds", nullptr, "permanent ids of items"},
    {"getItemsByPermanentIds", nullptr, "items by their permanent ids"},
}};

/// The kind of a failure with no exception of its own.
inline constexpr const char* PlainFailure = "error";

struct FailureKind {
    const char* name;
    const char* meaning;
};

/// All kinds: the plain failure, then the states in which every request fails.
std::vector<FailureKind> failureKinds();

struct RequestFailure {
    std::string text;
    std::string kind = PlainFailure;
    std::optional<int> times; ///< Every time without it.
};

/// What was set for a request.
struct RequestFault {
    std::string request;
    std::optional<std::chrono::milliseconds> delay;
    std::optional<RequestFailure> failure;
};

/// The name in the state file of a request that a user typed, in upper or lower case.
///
/// @throws Failure with the names that exist.
std::string requestNamed(const std::string& typed);

/// What is set in a state file.
///
/// @throws Failure if an entry is unknown: an older or newer version may have written it.
std::vector<RequestFault> faultsIn(const ServiceFile& file, const Json& content);

/// Sets a delay or a failure; what else is set for the request stays.
void setDelay(Json& content, const std::string& request, std::chrono::milliseconds delay);
void setFailure(Json& content, const std::string& request, const RequestFailure& failure);

/// Removes what is set for a request, or for all of them.
void clearFault(Json& content, const std::string& request);
void clearFaults(Json& content);

/// What a fault does, for people: "answers after 5s", "fails 2 more times: quota exceeded".
std::string descriptionOf(const RequestFault& fault);

/// The faults as the state file has them; an empty object if nothing is set.
Json faultsAsJson(const Json& content);

} // namespace Quorvex::Velmora::Tool
