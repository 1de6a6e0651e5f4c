#include "velmora/native/RuntimeOptions.h"

#include <velmora/bridge/runtime/ClrRuntime.h>

namespace Quorvex::Velmora::TessaportAPI
{

void setRuntimeOptions(const RuntimeOptions& options)
{
    Tessaport::ClrRuntime::ofProcess().setLocations({options.apiFolder, options.dotnetRoot});
}

} // namespace Quorvex::Velmora::TessaportAPI
