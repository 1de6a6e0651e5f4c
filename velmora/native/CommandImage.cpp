#include "velmora/native/CommandImage.h"

#include <velmora/bridge/CommandImage.h>

namespace Quorvex::Velmora::TessaportAPI
{

std::vector<std::uint8_t> commandImage(const Command& command) { return Tessaport::getCommandImage(command); }

} // namespace Quorvex::Velmora::TessaportAPI
