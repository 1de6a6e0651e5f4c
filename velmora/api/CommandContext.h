/// What a command is asked for or executed on.
#pragma once

#include <velmora/api/ItemId.h>
#include <velmora/api/QVBuffer.h>
#include <velmora/platform/WindowHandle.h>

namespace Quorvex::Velmora::TessaportAPI
{

class CommandContext
{
public:
    ItemId itemId;                    ///< The item that the commands are for.
    Common::QVBuffer<ItemId> itemIds; ///< The further selected items.
    HWND windowHandle = nullptr;      ///< Parent window for any user interface that a command shows; may be null.
};

} // namespace Quorvex::Velmora::TessaportAPI
