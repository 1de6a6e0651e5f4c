/// @file
/// The C boundary: the table of functions that the managed half of the bridge fills in once, and what crosses by them.
///
/// Mirrored field by field in managed/Velmora.Bridge/Boundary: TessaportEntryPoints.cs, RequestNumber.cs,
/// RequestArguments.cs, Reply.cs and NativeString.cs. A change raises the version on both sides.
///
/// Strings are UTF-16 with their length; no one searches for a terminator.
#pragma once

#include <cstddef>
#include <cstdint>

namespace Quorvex::Velmora::Tessaport
{

constexpr std::uint32_t EntryPointsVersion = 2;

/// The requests. A new one goes before Count, here and in RequestNumber.cs.
enum class VelmoraRequest : std::uint32_t {
    CreateService,
    CreateServiceForWindow,
    Discover,
    GetVersion,
    GetDrives,
    GetChildFolders,
    GetFolderContents,
    AddFiles,
    GetOrCreateFolder,
    CanAddFiles,
    IsFileInWorkspace,
    SyncFiles,
    DeleteItems,
    GetItemsByWorkspacePaths,
    GetItemsByRelativePaths,
    FileClosedWithinRunningProcess,
    GetPropertyDefinitions,
    GetProperties,
    GetCommands,
    ExecuteCommand,
    GetPermanentIds,
    GetItemsByPermanentIds,
    GetFullPath,
    GetCommandImage,
    /// How many requests there are.
    Count,
};

/// Names a managed object, which is kept alive until the handle is released. 0 is the null object.
using VelmoraHandle = std::int64_t;

/// A string that the native side owns for the time of the call.
struct VelmoraString {
    const char16_t* data;
    std::uint64_t length;
};

/// A command context, for the time of the call.
struct VelmoraContext {
    void* window;
    VelmoraHandle item;
    const VelmoraHandle* items;
    std::uint64_t itemCount;
};

/// The arguments of any request, for the time of the call. Those that a request does not have are zero.
struct VelmoraArguments {
    /// The folder, parent or command that the request is about.
    VelmoraHandle target;
    const VelmoraHandle* handles;
    std::uint64_t handleCount;
    const VelmoraString* strings;
    std::uint64_t stringCount;
    /// A drive's identifier: 16 bytes, in the order of its text form.
    const std::uint8_t* identifier;
    const VelmoraContext* context;
    void* window;
    std::int64_t number;
};

/// What a call leaves for the native side, which gives it back through releaseReply.
struct VelmoraReply {
    std::uint8_t* data;
    std::uint64_t size;
    /// How many of the reply's handles, counted from the first, the native side has taken over. The others are released
    /// with the reply.
    std::uint64_t handlesTaken;
    /// Takes a full piece of a long list. A native side that wants its list in pieces sets it before the call; without
    /// it, the list comes as one. A piece is valid until this function returns; the last one comes as the reply. A
    /// result other than 0 ends the request. Lets no exception out.
    std::int32_t (*takePiece)(VelmoraReply* piece);
    void* taker;
    /// How many records a list announces, before its first piece; 0 when it does not say. Only a hint.
    std::uint64_t expectedCount;
};

#if defined(_WIN32) && !defined(_WIN64)
#error "The bridge is built for 64-bit processes."
#endif

struct TessaportEntryPoints {
    // What this side was built for, set before the start; the managed half refuses anything else.
    std::uint32_t version;
    std::uint32_t size;
    std::uint32_t argumentsSize;
    std::uint32_t requestCount;

    /// Makes a request of a service. The two that create one, GetFullPath and GetCommandImage have none (0).
    ///
    /// @return 0, with the result in the reply; or the number (1 to 6) of the row of the exception table that fits the
    /// managed exception, whose message is then the reply's only string.
    std::int32_t (*request)(
        VelmoraRequest number, VelmoraHandle service, const VelmoraArguments* arguments, VelmoraReply* reply);
    void (*releaseHandle)(VelmoraHandle handle);
    void (*releaseHandles)(const VelmoraHandle* handles, std::uint64_t count);
    void (*releaseReply)(VelmoraReply* reply);
    std::int64_t (*countHandles)();
};

static_assert(sizeof(VelmoraString) == 16 && sizeof(VelmoraContext) == 32 && sizeof(VelmoraArguments) == 72 &&
              sizeof(VelmoraReply) == 48);
static_assert(sizeof(TessaportEntryPoints) == 16 + 5 * 8 && offsetof(TessaportEntryPoints, request) == 16);

/// An empty table that asks for what this side was built for.
[[nodiscard]] constexpr TessaportEntryPoints expectedEntryPoints() noexcept
{
    return {EntryPointsVersion, sizeof(TessaportEntryPoints), sizeof(VelmoraArguments),
        static_cast<std::uint32_t>(VelmoraRequest::Count), nullptr, nullptr, nullptr, nullptr, nullptr};
}

/// The first function of the managed half: fills in the table, in which the native side has set what it expects, and
/// binds the sync application's assembly in `apiFolder`. On success the reply has four strings: the runtime's name and
/// version, the version of the managed half, the path of the bound assembly and its version.
using StartBridge = std::int32_t (*)(TessaportEntryPoints* table, const VelmoraString* apiFolder, VelmoraReply* reply);

} // namespace Quorvex::Velmora::Tessaport
