#include "tools/tessaport/items/OneCall.h"

#include "tools/tessaport/items/ItemPaths.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{

using namespace TessaportAPI;

std::optional<Item> findInOneCall(Context& context, const std::string& path)
{
    Item item;
    if (QvNativeTessaportAPI::checkExistence(nullptr, toQVString(ItemPaths(context).of(path)), item))
        return item;
    context.connection().discover();
    return std::nullopt;
}

Item requireInOneCall(Context& context, const std::string& path)
{
    auto item = findInOneCall(context, path);
    if (!item)
        throw Failure(ExitCode::NotFound,
            "'" + path + "': no such item on any drive that is online" + ItemPaths(context).hintFor(path));
    return *item;
}

Urn urnOf(const Item& item, bool useParentFolderKey)
{
    const auto [projectId, urn] = item.isFolder ? QvNativeTessaportAPI::getFolderUrn(nullptr, item, useParentFolderKey)
                                                : QvNativeTessaportAPI::getFileUrn(nullptr, item);
    return {projectId, urn};
}

} // namespace Quorvex::Velmora::Tool
