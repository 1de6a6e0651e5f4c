// Each request of the bridge once, with a reply that it understands.
#pragma once

#include <functional>
#include <ostream>
#include <vector>

#include <velmora/bridge/QvManagedTessaportService.h>
#include "tests/support/FakeEntryPoints.h"
#include "tests/support/ReplyBuilder.h"

namespace Quorvex::Velmora::TestSupport
{

/// What requests need to be made at all, out of the table in use.
struct RequestInputs {
    RequestInputs(FakeEntryPoints& table, Tessaport::QvManagedTessaportService& bridge);

    TessaportAPI::Item item;
    TessaportAPI::Command command;
    TessaportAPI::CommandContext context;
    Common::QVBuffer<TessaportAPI::Item> items;
    Common::QVBuffer<TessaportAPI::ItemId> ids;
    Common::QVBuffer<Common::QVString> texts;
};

struct RequestCase {
    const char* name;
    PackedReply reply;
    /// False for requests whose reply nobody reads.
    bool readsReply;
    std::function<void(Tessaport::QvManagedTessaportService&, const RequestInputs&)> run;
};

inline void PrintTo(const RequestCase& request, std::ostream* stream) { *stream << request.name; }

[[nodiscard]] const std::vector<RequestCase>& everyRequest();

} // namespace Quorvex::Velmora::TestSupport
