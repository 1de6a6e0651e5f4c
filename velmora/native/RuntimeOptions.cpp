#include "velmora/native/RuntimeOptions.h"

#include <velmora/bridge/runtime/ClrRuntime.h>

namespace Quorvex::Velmora::TessaportAPI
{

void setRuntimeOptions(const RuntimeOptions& options) { Tessaport::ClrRuntime::ofProcess().setOptions(options); }

} // namespace Quorvex::Velmora::TessaportAPI
