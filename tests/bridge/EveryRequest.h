// Each request of the bridge once, with a reply that fits it.
#pragma once

#include <functional>
#include <ostream>
#include <vector>

#include <velmora/bridge/QvManagedTessaportService.h>
#include "tests/support/FakeEntryPoints.h"
#include "tests/support/ReplyBuilder.h"

namespace Quorvex::Velmora::TestSupport
{

/// Arguments for every request, from the fake in use.
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
    /// False for requests whose reply is not read.
    bool readsReply;
    std::function<void(Tessaport::QvManagedTessaportService&, const RequestInputs&)> run;
};

inline void PrintTo(const RequestCase& request, std::ostream* stream) { *stream << request.name; }

[[nodiscard]] const std::vector<RequestCase>& everyRequest();

} // namespace Quorvex::Velmora::TestSupport
