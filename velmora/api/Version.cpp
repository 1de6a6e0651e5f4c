#include <velmora/Version.h>

#define VELMORA_TEXT_OF(number) #number
#define VELMORA_JOIN(major, minor, patch) VELMORA_TEXT_OF(major) "." VELMORA_TEXT_OF(minor) "." VELMORA_TEXT_OF(patch)

namespace Quorvex::Velmora::TessaportAPI
{

const char* versionString() noexcept
{
    return VELMORA_JOIN(VELMORA_VERSION_MAJOR, VELMORA_VERSION_MINOR, VELMORA_VERSION_PATCH);
}

} // namespace Quorvex::Velmora::TessaportAPI
