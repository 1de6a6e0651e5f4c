/// @file
/// What the functions of RecordedChanges.cpp share. See there.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <mutex>
#include <optional>
#include <string>

#include <sys/types.h>

namespace Quorvex::Velmora::RecordedChanges
{

/// Where an open file or folder is.
[[nodiscard]] std::string pathOf(int descriptor);

/// The full form of a path that is relative to an open folder.
[[nodiscard]] std::string pathAt(int folder, const char* path);

/// The number of a file in its file system; 0 if it does not exist.
[[nodiscard]] std::uint64_t numberOf(int descriptor);
[[nodiscard]] std::uint64_t numberAt(const std::string& path);

/// A call of the system that changes something. While one is made, no other thread can make one, so that the record
/// has their order. The process may end here: see VELMORA_DIES_AT_CHANGE.
class Change
{
public:
    /// @param paths  what is changed. The call is recorded if one of them is in the folder to be recorded.
    Change(std::initializer_list<std::string> paths);

    [[nodiscard]] bool isRecorded() const { return recorded; }

    /// Whether the process is to end in the middle of this call; see die().
    [[nodiscard]] bool isLast() const { return last; }

    /// Adds a line to the record, if the call is recorded.
    void add(std::initializer_list<std::string> words) const;

    /// The same for bytes that the call has put into a file.
    void addBytes(std::uint64_t file, std::int64_t offset, const void* bytes, ssize_t count) const;

    /// The same, if the bytes are known to the file only.
    void addRange(int descriptor, std::int64_t offset, std::int64_t count) const;

private:
    bool recorded = false;
    bool last = false;
    std::optional<std::scoped_lock<std::recursive_mutex>> held;
};

/// Ends the process as SIGKILL does.
[[noreturn]] void die();

} // namespace Quorvex::Velmora::RecordedChanges
