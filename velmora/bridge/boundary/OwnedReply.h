#pragma once

#include <string>

#include <velmora/bridge/boundary/TessaportEntryPoints.h>
#include <velmora/bridge/boundary/ThreadEnd.h>

namespace Quorvex::Velmora::Tessaport
{

/// A reply that goes back to the managed side when it is destroyed, with all of its handles that no one has taken.
class OwnedReply
{
public:
    /// A reply whose functions become known later. Before setEntryPoints() it is not given back.
    OwnedReply() noexcept = default;
    /// The reply of a request that is about to be made.
    ///
    /// @throws std::logic_error on a thread that is ending, where no request can be made.
    explicit OwnedReply(const TessaportEntryPoints& table) : entryPoints(&table) { requireRuntime(); }
    OwnedReply(const OwnedReply&) = delete;
    OwnedReply& operator=(const OwnedReply&) = delete;
    ~OwnedReply()
    {
        if (content.data != nullptr && entryPoints != nullptr && entryPoints->releaseReply != nullptr)
            entryPoints->releaseReply(&content);
    }

    void setEntryPoints(const TessaportEntryPoints& table) noexcept { entryPoints = &table; }

    /// Where a call puts its reply.
    [[nodiscard]] VelmoraReply* fill() noexcept { return &content; }

    [[nodiscard]] VelmoraReply& reply() noexcept { return content; }
    [[nodiscard]] const TessaportEntryPoints& table() const noexcept { return *entryPoints; }

    /// The message of a failed call, or the empty string if the reply holds none.
    [[nodiscard]] std::wstring message();

private:
    const TessaportEntryPoints* entryPoints = nullptr;
    VelmoraReply content{};
};

} // namespace Quorvex::Velmora::Tessaport
