#include "velmora/native/UrnIdNames.h"

#include <velmora/native/DriveTypes.h>
#include <velmora/native/QvNativeTessaportAPI.h>

namespace Quorvex::Velmora::TessaportAPI
{

std::map<std::string, UrnIdNames> gUrnIdNamesMap;

namespace
{

const QVString HUB_ITEM_ID = L"SourceObjectId";
const QVString KELDA_PROJECT_ID = L"KeldaProjectId";
const QVString KELDA_PARENT_ID = L"KeldaParentId";
const QVString KELDA_ITEM_ID = L"KeldaItemId";

} // namespace

void QvNativeTessaportAPI::init()
{
    const UrnIdNames hub{"", "", HUB_ITEM_ID.c_str(), HUB_ITEM_ID.c_str()};
    const UrnIdNames kelda{KELDA_PROJECT_ID.c_str(), KELDA_PARENT_ID.c_str(), "", KELDA_ITEM_ID.c_str()};
    // Made apart: without memory for a row the table stays as it is.
    std::map<std::string, UrnIdNames> rows;
    rows[QuorvexDriveTypeName.c_str()] = hub;
    rows[Trelis360DriveTypeName.c_str()] = kelda;
    rows[Trelis360TeamDriveTypeName.c_str()] = kelda;
    rows[MorrowDriveTypeName.c_str()] = hub;
    gUrnIdNamesMap.swap(rows);
}

} // namespace Quorvex::Velmora::TessaportAPI
