// A C++ table in place of the managed one, for what the real one never does: damaged replies, failures at any point.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include <velmora/bridge/runtime/TessaportEntryPoints.h>
#include "tests/support/ReplyBuilder.h"

namespace Quorvex::Velmora::TestSupport
{

/// The table of this process while it lives; there is one at a time. Allocates nothing with operator new while it
/// serves, and watches over what it hands out.
class FakeEntryPoints
{
public:
    FakeEntryPoints();
    ~FakeEntryPoints();
    FakeEntryPoints(const FakeEntryPoints&) = delete;
    FakeEntryPoints& operator=(const FakeEntryPoints&) = delete;

    /// What every request replies from now on. `shift` moves it that many bytes from an aligned place.
    void replyWith(PackedReply reply, std::size_t shift = 0);
    /// A list that comes in pieces, announced as that many records.
    void replyInPieces(std::vector<PackedReply> pieces, std::uint64_t expectedCount = 0);
    /// What that one replies from now on, whatever the others do.
    template <class Function>
    void replyTo(Function Tessaport::TessaportEntryPoints::*request, PackedReply reply)
    {
        replyTo(slotOf(request), std::move(reply));
    }
    /// Every request succeeds and leaves no reply at all.
    void replyWithNothing();
    /// Every request fails with that row and the reply that was set last.
    void failWith(std::int32_t row);

    /// Requests so far, constructors of the service included.
    [[nodiscard]] int calls() const noexcept;

    [[nodiscard]] std::int64_t liveHandles() const noexcept;
    [[nodiscard]] int liveReplies() const noexcept;
    /// Handles and replies that were given back and were not out.
    [[nodiscard]] int wrongReleases() const noexcept;

    /// Where in the table a request stands.
    template <class Function>
    [[nodiscard]] static std::size_t slotOf(Function Tessaport::TessaportEntryPoints::*request) noexcept
    {
        static const Tessaport::TessaportEntryPoints any{};
        return static_cast<std::size_t>(
            reinterpret_cast<const char*>(&(any.*request)) - reinterpret_cast<const char*>(&any));
    }

private:
    void replyTo(std::size_t slot, PackedReply reply);
};

/// The reply of a failed request.
[[nodiscard]] PackedReply message(std::u16string_view text);

} // namespace Quorvex::Velmora::TestSupport
