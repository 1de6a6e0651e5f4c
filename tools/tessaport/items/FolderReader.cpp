#include "tools/tessaport/items/FolderReader.h"

#include <velmora/api/Exceptions.h>
#include "tools/tessaport/app/Errors.h"
#include "tools/tessaport/output/Items.h"

namespace Quorvex::Velmora::Tool
{

using namespace TessaportAPI;

FolderReader::FolderReader(Context& commandContext, bool onlyFolders)
    : context(commandContext), foldersOnly(onlyFolders)
{
}

QVBuffer<Item> FolderReader::read(const Item& folder)
{
    return foldersOnly ? context.connection().getChildFolders(folder) : context.connection().getFolderContents(folder);
}

QVBuffer<Item> FolderReader::tryRead(const Item& folder)
{
    try {
        return read(folder);
    } catch (const ApiException&) {
        const Explanation explanation = explainCurrentException();
        if (explanation.code != ExitCode::Failure)
            throw;
        code = explanation.code;
        context.output.flush();
        context.output.message("'" + localText(folder) + "': " + explanation.text);
        return {};
    }
}

} // namespace Quorvex::Velmora::Tool
