// Makes every type that crosses the C boundary a part of one library's interface, so that its layout is recorded.
#include <velmora/bridge/boundary/ReplyLayout.h>
#include <velmora/bridge/boundary/TessaportEntryPoints.h>

namespace Quorvex::Velmora::Tessaport
{

void cross(StartBridge, const TessaportEntryPoints&, VelmoraRequest);
void cross(StartBridge, const TessaportEntryPoints&, VelmoraRequest) {}

void cross(const VelmoraArguments&, const VelmoraContext&, const VelmoraString&);
void cross(const VelmoraArguments&, const VelmoraContext&, const VelmoraString&) {}

void cross(const VelmoraReply&, const ReplyHeader&, const ItemBlock&);
void cross(const VelmoraReply&, const ReplyHeader&, const ItemBlock&) {}

} // namespace Quorvex::Velmora::Tessaport
