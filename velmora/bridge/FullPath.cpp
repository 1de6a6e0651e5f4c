#include "velmora/bridge/FullPath.h"

#include <velmora/bridge/ExceptionTranslation.h>
#include <velmora/bridge/boundary/ReplyReader.h>
#include <velmora/bridge/conversions/RequestArguments.h>
#include <velmora/bridge/runtime/ClrRuntime.h>
#include <velmora/text/Unicode.h>

namespace Quorvex::Velmora::Tessaport
{

std::wstring getFullPath(const std::wstring& path)
{
    const TessaportEntryPoints& entryPoints = ClrRuntime::ofProcess().entryPoints();
    OwnedReply reply(entryPoints);
    RequestArguments arguments;
    arguments.setString(Common::Unicode::toUtf16(path));
    throwUnlessDone(entryPoints.request(VelmoraRequest::GetFullPath, 0, &arguments.packed(), reply.fill()), reply);
    return ReplyReader(reply).wideString();
}

} // namespace Quorvex::Velmora::Tessaport
