/// @file
/// A fake of the managed half of the bridge, in C++. Requests get the replies that the test has set, damaged ones too,
/// and every handle and reply that is handed out is counted until it comes back. No .NET is started:
///
///     FakeEntryPoints fake;
///     fake.replyWith(SampleReplies::items(3));
///     Tessaport::QvManagedTessaportService service;   // talks to the fake
///     (void)service.getChildFolders(…);
///     EXPECT_EQ(fake.liveReplies(), 0);
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include <velmora/bridge/boundary/TessaportEntryPoints.h>
#include "tests/support/ReplyBuilder.h"

namespace Quorvex::Velmora::TestSupport
{

/// Takes the place of the managed half in this process as long as it lives. There is one at a time.
///
/// Does not call operator new while it serves, so that tests can make allocations of the library fail.
class FakeEntryPoints
{
public:
    FakeEntryPoints();
    ~FakeEntryPoints();
    FakeEntryPoints(const FakeEntryPoints&) = delete;
    FakeEntryPoints& operator=(const FakeEntryPoints&) = delete;

    /// Sets what every request replies from now on. `shift` places it that many bytes after an aligned address.
    void replyWith(PackedReply reply, std::size_t shift = 0);
    /// Sets a list that comes in pieces, announced as `expectedCount` records.
    void replyInPieces(std::vector<PackedReply> pieces, std::uint64_t expectedCount = 0);
    /// Sets what this request replies from now on, whatever the others do.
    void replyTo(Tessaport::VelmoraRequest request, PackedReply reply);
    /// Lets every request succeed without a reply.
    void replyWithNothing();
    /// Lets every request fail with that row, and with the reply that was set last.
    void failWith(std::int32_t row);

    /// The number of requests so far, those of constructors included.
    [[nodiscard]] int calls() const noexcept;

    /// What is handed out and has not come back.
    [[nodiscard]] std::int64_t liveHandles() const noexcept;
    [[nodiscard]] int liveReplies() const noexcept;
    /// The number of handles and replies that came back without being out.
    [[nodiscard]] int wrongReleases() const noexcept;
};

/// The reply of a failed request.
[[nodiscard]] PackedReply message(std::u16string_view text);

} // namespace Quorvex::Velmora::TestSupport
