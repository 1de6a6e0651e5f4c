#include <velmora/native/ProbeFile.h>

#include <fstream>

#include <velmora/api/QVUUID.h>
#include <velmora/api/TextAccess.h>
#include <velmora/platform/NativePath.h>
#include <velmora/platform/QrxQvFileSystemUtility.h>

namespace Quorvex::Velmora::TessaportAPI
{

using Common::QrxQvFileSystemUtility;

void createProbeFile(Common::QVString& outPath)
{
    const std::wstring path =
        QrxQvFileSystemUtility::combine(QrxQvFileSystemUtility::tempPath(), Common::QVUUID().getWString() + L".txt");
    outPath = Common::TextAccess::make(path);
    std::ofstream(Common::nativePath(path)) << "dummy\n";
}

ProbeFileRemover::~ProbeFileRemover()
{
    if (path.Empty())
        return;
    try {
        QrxQvFileSystemUtility::remove(path.w_str());
    } catch (...) {
        // Without memory for the path the file stays; nothing else is lost.
    }
}

} // namespace Quorvex::Velmora::TessaportAPI
