#include "velmora/bridge/Util.h"

#include <velmora/bridge/ExceptionTranslation.h>
#include <velmora/bridge/conversions/ToManaged.h>
#include <velmora/bridge/replies/ReplyReader.h>
#include <velmora/bridge/runtime/ClrRuntime.h>

namespace Quorvex::Velmora::Tessaport::Util
{

std::wstring getFullPath(const std::wstring& path)
{
    const TessaportEntryPoints& entryPoints = ClrRuntime::ofProcess().entryPoints();
    OwnedReply reply(entryPoints);
    const CrossingText crossing(path);
    throwUnlessDone(entryPoints.getFullPath(crossing.get(), reply.fill()), reply);
    return ReplyReader(reply).wideText();
}

} // namespace Quorvex::Velmora::Tessaport::Util
