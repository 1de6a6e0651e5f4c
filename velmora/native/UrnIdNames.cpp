#include <velmora/native/UrnIdNames.h>

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
    gUrnIdNamesMap.clear();
    gUrnIdNamesMap[QuorvexDriveTypeName.c_str()] = hub;
    gUrnIdNamesMap[Trelis360DriveTypeName.c_str()] = kelda;
    gUrnIdNamesMap[Trelis360TeamDriveTypeName.c_str()] = kelda;
    gUrnIdNamesMap[MorrowDriveTypeName.c_str()] = hub;
}

} // namespace Quorvex::Velmora::TessaportAPI
