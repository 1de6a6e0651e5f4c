/// @file
/// The arguments of a request, packed for the C boundary.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <velmora/api/CommandContext.h>
#include <velmora/bridge/conversions/ToManaged.h>

namespace Quorvex::Velmora::Tessaport
{

/// Collects the arguments of one request and owns the memory that they need. Outlives the call.
///
/// Each member sets one field of VelmoraArguments, and throws what the conversion of its argument throws.
class RequestArguments
{
public:
    RequestArguments() = default;
    RequestArguments(const RequestArguments&) = delete;
    RequestArguments& operator=(const RequestArguments&) = delete;

    RequestArguments& setFolder(const TessaportAPI::ItemId& folder);
    RequestArguments& setCommand(const TessaportAPI::Command& command);
    RequestArguments& setIds(const Common::QVBuffer<TessaportAPI::ItemId>& ids);
    RequestArguments& setIds(const Common::QVBuffer<TessaportAPI::Item>& items);
    /// The strings unchanged.
    RequestArguments& setStrings(const Common::QVBuffer<Common::QVString>& values);
    /// The strings with every "/" replaced by a "\\".
    RequestArguments& setPaths(const Common::QVBuffer<Common::QVString>& paths);
    RequestArguments& setPath(const Common::QVString& path);
    /// One string, unchanged.
    RequestArguments& setString(std::u16string value);
    /// Refers to `id`, which must outlive the call.
    RequestArguments& setDriveId(const Common::QVUUID& id);
    RequestArguments& setContext(const TessaportAPI::CommandContext& context);
    RequestArguments& setWindow(HWND window) noexcept;
    RequestArguments& setNumber(std::int64_t number) noexcept;

    [[nodiscard]] const VelmoraArguments& packed() const noexcept { return arguments; }

private:
    RequestArguments& setHandles(std::vector<VelmoraHandle> given) noexcept;

    VelmoraArguments arguments{};
    std::vector<VelmoraHandle> handles;
    // All characters of a list are in one allocation.
    std::unique_ptr<char16_t[]> characters;
    std::vector<VelmoraString> strings;
    std::u16string single;
    VelmoraString singleString{};
    std::vector<VelmoraHandle> contextItems;
    VelmoraContext crossingContext{};
};

} // namespace Quorvex::Velmora::Tessaport
