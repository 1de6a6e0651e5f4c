#include "velmora/bridge/CommandImage.h"

#include <velmora/bridge/ExceptionTranslation.h>
#include <velmora/bridge/boundary/ReplyReader.h>
#include <velmora/bridge/conversions/HandleAccess.h>
#include <velmora/bridge/conversions/RequestArguments.h>
#include <velmora/bridge/runtime/ClrRuntime.h>

namespace Quorvex::Velmora::Tessaport
{
namespace
{

std::vector<std::uint8_t> readImage(const TessaportAPI::Command& command)
{
    const TessaportEntryPoints& entryPoints = ClrRuntime::ofProcess().entryPoints();
    OwnedReply reply(entryPoints);
    RequestArguments arguments;
    arguments.setCommand(command);
    throwUnlessDone(entryPoints.request(VelmoraRequest::GetCommandImage, 0, &arguments.packed(), reply.fill()), reply);
    ReplyReader reader(reply);
    const std::uint32_t size = reader.uint32();
    const std::uint8_t* const bytes = reader.bytes(size, 1);
    return {bytes, bytes + size};
}

} // namespace

std::vector<std::uint8_t> getCommandImage(const TessaportAPI::Command& command)
{
    const auto wrapper = HandleAccess::wrapperOf(command);
    if (wrapper == nullptr || wrapper->command.get() == 0)
        return {};
    std::vector<std::uint8_t> image;
    runWhileHandlingExceptions([&] { image = readImage(command); });
    return image;
}

} // namespace Quorvex::Velmora::Tessaport
