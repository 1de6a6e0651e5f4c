#include "velmora/bridge/replies/OwnedReply.h"

#include <velmora/bridge/replies/ReplyReader.h>

namespace Quorvex::Velmora::Tessaport
{

std::wstring OwnedReply::message()
{
    if (content.data == nullptr)
        return {};
    return ReplyReader(*this).wideText();
}

} // namespace Quorvex::Velmora::Tessaport
