#include "bench/bridge/PeerListings.h"

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

#include <velmora/api/TextAccess.h>
#include <velmora/api/UuidAccess.h>
#include <velmora/bridge/QvManagedTessaportService.h>
#include "bench/bridge/PeerRuntime.h"

namespace Quorvex::Velmora::Bench
{
namespace
{

using Common::QVBuffer;
using Common::QVString;
using TessaportAPI::Item;

using OfIndex = std::int32_t (*)(std::int32_t index);
using OfHandle = std::int32_t (*)(std::intptr_t handle);
using TextOfIndex = std::int32_t (*)(std::int32_t index, char16_t* target, std::int32_t capacity);
using PointerOfHandle = std::intptr_t (*)(std::intptr_t handle);
using Release = void (*)(std::intptr_t handle);

Release releaseHandle()
{
    static const auto release = peer<Release>("PerProperty", "Release");
    return release;
}

// The peers keep their ids in the same wrappers; only what releases them differs.
void setId(Item& item, std::intptr_t handle)
{
    static const Tessaport::TessaportEntryPoints table = [] {
        Tessaport::TessaportEntryPoints own{};
        own.releaseHandle = [](Tessaport::VelmoraHandle id) { releaseHandle()(static_cast<std::intptr_t>(id)); };
        return own;
    }();
    auto wrapper = std::make_shared<Tessaport::ItemIdWrapper>(table);
    wrapper->id.take(handle);
    Tessaport::QvManagedTessaportService::setInternalId(item.id, std::move(wrapper));
}

void makeManagedListing(unsigned count)
{
    static const auto made = peer<OfIndex>("PerProperty", "Make")(static_cast<std::int32_t>(count));
    if (made != static_cast<std::int32_t>(count))
        throw std::runtime_error("the peers hold another number of items");
}

QVString readText(TextOfIndex read, std::int32_t index)
{
    char16_t units[1024];
    const std::int32_t length = read(index, units, 1024);
    QVString text;
    const Common::TextAssignment assignment{&text, {units, static_cast<std::size_t>(length)}};
    Common::TextAccess::assign(&assignment, 1);
    return text;
}

QVString takeText(PointerOfHandle read, std::intptr_t item)
{
    static const auto free = peer<Release>("Naive", "FreeString");
    const std::intptr_t address = read(item);
    const std::u16string_view units = reinterpret_cast<const char16_t*>(address);
    QVString text;
    const Common::TextAssignment assignment{&text, units};
    Common::TextAccess::assign(&assignment, 1);
    free(address);
    return text;
}

QVString textOf(const nlohmann::json& value) { return value.get_ref<const std::string&>().c_str(); }

} // namespace

QVBuffer<Item> perPropertyListing(unsigned count)
{
    makeManagedListing(count);
    static const auto id = peer<std::intptr_t (*)(std::int32_t)>("PerProperty", "Id");
    static const auto driveId = peer<void (*)(std::int32_t, std::uint8_t*)>("PerProperty", "DriveId");
    static const auto isFolder = peer<OfIndex>("PerProperty", "IsFolder");
    static const auto isInWorkspace = peer<OfIndex>("PerProperty", "IsInWorkspace");
    static const auto isOnServer = peer<OfIndex>("PerProperty", "IsOnServer");
    static const auto lastModified = peer<std::int64_t (*)(std::int32_t)>("PerProperty", "LastModified");
    static const auto name = peer<TextOfIndex>("PerProperty", "Name");
    static const auto relativePath = peer<TextOfIndex>("PerProperty", "RelativePath");
    static const auto workspacePath = peer<TextOfIndex>("PerProperty", "WorkspacePath");
    QVBuffer<Item> items;
    items.Reserve(count);
    for (std::int32_t i = 0; i < static_cast<std::int32_t>(count); ++i) {
        Item& item = items.Append();
        std::uint8_t bytes[16];
        driveId(i, bytes);
        Common::UuidAccess::assign(item.driveId, bytes);
        setId(item, id(i));
        item.isFolder = isFolder(i) != 0;
        item.isInWorkspace = isInWorkspace(i) != 0;
        item.isOnServer = isOnServer(i) != 0;
        item.name = readText(name, i);
        item.relativePath = readText(relativePath, i);
        item.workspacePath = readText(workspacePath, i);
        item.lastModifiedDate = lastModified(i);
    }
    return items;
}

QVBuffer<Item> naiveListing(unsigned count)
{
    makeManagedListing(count);
    static const auto itemAt = peer<std::intptr_t (*)(std::int32_t)>("Naive", "Item");
    static const auto release = peer<Release>("Naive", "Release");
    static const auto id = peer<PointerOfHandle>("Naive", "Id");
    static const auto driveId = peer<PointerOfHandle>("Naive", "DriveId");
    static const auto isFolder = peer<OfHandle>("Naive", "IsFolder");
    static const auto isInWorkspace = peer<OfHandle>("Naive", "IsInWorkspace");
    static const auto isOnServer = peer<OfHandle>("Naive", "IsOnServer");
    static const auto lastModified = peer<std::int64_t (*)(std::intptr_t)>("Naive", "LastModified");
    static const auto name = peer<PointerOfHandle>("Naive", "Name");
    static const auto relativePath = peer<PointerOfHandle>("Naive", "RelativePath");
    static const auto workspacePath = peer<PointerOfHandle>("Naive", "WorkspacePath");
    QVBuffer<Item> items;
    for (std::int32_t i = 0; i < static_cast<std::int32_t>(count); ++i) {
        const std::intptr_t managed = itemAt(i);
        Item item;
        item.driveId = Common::QVUUID(takeText(driveId, managed).c_str());
        setId(item, id(managed));
        item.isFolder = isFolder(managed) != 0;
        item.isInWorkspace = isInWorkspace(managed) != 0;
        item.isOnServer = isOnServer(managed) != 0;
        item.name = takeText(name, managed);
        item.relativePath = takeText(relativePath, managed);
        item.workspacePath = takeText(workspacePath, managed);
        item.lastModifiedDate = lastModified(managed);
        items.Append(item);
        release(managed);
    }
    return items;
}

QVBuffer<Item> jsonListing(unsigned count)
{
    makeManagedListing(count);
    static const auto get = peer<std::intptr_t (*)(std::intptr_t*)>("JsonListing", "Get");
    static const auto free = peer<Release>("JsonListing", "Free");
    std::intptr_t size = 0;
    const std::intptr_t address = get(&size);
    const auto* const begin = reinterpret_cast<const char*>(address);
    const auto document = nlohmann::json::parse(begin, begin + size);
    free(address);
    QVBuffer<Item> items;
    items.Reserve(count);
    for (const auto& record : document) {
        Item& item = items.Append();
        item.driveId = Common::QVUUID(record["DriveId"].get_ref<const std::string&>().c_str());
        item.isFolder = record["IsFolder"];
        item.isInWorkspace = record["IsInWorkspace"];
        item.isOnServer = record["IsOnServer"];
        item.name = textOf(record["Name"]);
        item.relativePath = textOf(record["RelativePath"]);
        item.workspacePath = textOf(record["WorkspacePath"]);
    }
    return items;
}

} // namespace Quorvex::Velmora::Bench
