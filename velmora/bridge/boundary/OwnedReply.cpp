#include "velmora/bridge/boundary/OwnedReply.h"

#include <velmora/bridge/boundary/ReplyReader.h>

namespace Quorvex::Velmora::Tessaport
{

std::wstring OwnedReply::message()
{
    if (content.data == nullptr)
        return {};
    return ReplyReader(*this).wideString();
}

} // namespace Quorvex::Velmora::Tessaport
