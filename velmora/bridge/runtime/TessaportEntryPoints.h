// The C boundary: the table of functions that the managed half of the bridge fills in once, and the types in their
// signatures. Mirrored field by field in managed/Velmora.Bridge/Boundary/TessaportEntryPoints.cs; a change of either
// raises the version in both.
//
// A request returns 0, or the number (1 to 6) of the row of the exception table that fits the managed exception, whose
// message is then the reply's only text. Texts are UTF-16 with their length; nothing is searched for a terminator.
#pragma once

#include <cstddef>
#include <cstdint>

namespace Quorvex::Velmora::Tessaport
{

constexpr std::uint32_t EntryPointsVersion = 1;

/// Names a managed object that is kept alive until the handle is released; 0 is the null object.
using VelmoraHandle = std::int64_t;

/// A text that the native side owns for the time of the call.
struct VelmoraText {
    const char16_t* data;
    std::uint64_t length;
};

/// What a call leaves for the native side, to be given back through releaseReply.
struct VelmoraReply {
    std::uint8_t* data;
    std::uint64_t size;
    /// How many of the reply's handles, from the front, the native side has taken over; the others go with the reply.
    std::uint64_t handlesTaken;
    /// Set before the call by a native side that takes a long list in pieces: called with each full piece, which it has
    /// only for the time of that call; the last piece comes as the reply. A result other than 0 ends the request.
    /// Pieces stay in the processor's cache, and a long list needs no memory for all of it twice. Lets no exception
    /// out.
    std::int32_t (*takePiece)(VelmoraReply* piece);
    void* taker;
    /// How many records a list announces, before its first piece; 0 when it does not say. Nothing but a hint.
    std::uint64_t expectedCount;
};

struct VelmoraContext {
    void* window;
    VelmoraHandle item;
    const VelmoraHandle* items;
    std::uint64_t itemCount;
};

#if defined(_WIN32) && !defined(_WIN64)
#error "The bridge is built for 64-bit processes."
#endif

struct TessaportEntryPoints {
    using Handle = VelmoraHandle;
    using Text = VelmoraText;
    using Reply = VelmoraReply;

    std::uint32_t version;
    std::uint32_t size;

    std::int32_t (*createService)(Handle* service, Reply* reply);
    std::int32_t (*createServiceForWindow)(void* window, Handle* service, Reply* reply);
    std::int32_t (*discover)(Handle service, Reply* reply);
    std::int32_t (*getVersion)(Handle service, Reply* reply);
    std::int32_t (*getDrives)(Handle service, Reply* reply);
    std::int32_t (*getChildFolders)(Handle service, Handle folder, Reply* reply);
    std::int32_t (*getFolderContents)(Handle service, Handle folder, Reply* reply);
    std::int32_t (*addFiles)(Handle service, Handle folder, const Text* paths, std::uint64_t count, Reply* reply);
    std::int32_t (*getOrCreateFolder)(Handle service, Handle parent, const Text* name, Reply* reply);
    std::int32_t (*canAddFiles)(Handle service, Handle folder, const Text* paths, std::uint64_t count, Reply* reply);
    std::int32_t (*isFileInWorkspace)(Handle service, const Text* path, Reply* reply);
    std::int32_t (*syncFiles)(Handle service, const Handle* ids, std::uint64_t count, Reply* reply);
    std::int32_t (*deleteItems)(Handle service, const Handle* ids, std::uint64_t count, Reply* reply);
    std::int32_t (*getItemsByWorkspacePaths)(Handle service, const Text* paths, std::uint64_t count, Reply* reply);
    std::int32_t (*getItemsByRelativePaths)(
        Handle service, const std::uint8_t* driveId, const Text* paths, std::uint64_t count, Reply* reply);
    std::int32_t (*fileClosedWithinRunningProcess)(
        Handle service, std::int32_t processId, const Text* path, Reply* reply);
    std::int32_t (*getPropertyDefinitions)(Handle service, const std::uint8_t* driveId, Reply* reply);
    std::int32_t (*getProperties)(Handle service, const Handle* ids, std::uint64_t idCount, const Text* properties,
        std::uint64_t propertyCount, Reply* reply);
    std::int32_t (*getCommands)(Handle service, const VelmoraContext* context, Reply* reply);
    std::int32_t (*executeCommand)(Handle service, Handle command, const VelmoraContext* context, Reply* reply);
    std::int32_t (*getPermanentIds)(Handle service, const Handle* ids, std::uint64_t count, Reply* reply);
    std::int32_t (*getItemsByPermanentIds)(Handle service, const Text* permanentIds, std::uint64_t count, Reply* reply);
    std::int32_t (*getFullPath)(const Text* path, Reply* reply);
    void (*releaseHandle)(Handle handle);
    void (*releaseHandles)(const Handle* handles, std::uint64_t count);
    void (*releaseReply)(Reply* reply);
    std::int64_t (*countHandles)();
};

static_assert(sizeof(VelmoraText) == 16 && sizeof(VelmoraReply) == 48 && sizeof(VelmoraContext) == 32);
static_assert(sizeof(TessaportEntryPoints) == 8 + 27 * 8 && offsetof(TessaportEntryPoints, createService) == 8);

/// The first function of the managed half: fills `table` in, whose version and size the native side has set, and binds
/// the sync application's assembly in `apiFolder`. On success the reply has four texts: the runtime's name and version,
/// the version of the managed half, the path of the bound assembly and its version.
using StartBridge = std::int32_t (*)(TessaportEntryPoints* table, const VelmoraText* apiFolder, VelmoraReply* reply);

} // namespace Quorvex::Velmora::Tessaport
