#include "velmora/native/ProbeFile.h"

#include <cstdio>
#include <fstream>

#include <velmora/api/QVUUID.h>
#include <velmora/api/TextAccess.h>
#include <velmora/platform/QrxQvFileSystemUtility.h>

namespace Quorvex::Velmora::TessaportAPI
{

using Common::QrxQvFileSystemUtility;

namespace
{

// The path as the platform's functions take it. A text and its copies keep their narrow form once it was asked for:
// what was created by this name is removed by it without any memory.
#ifdef _WIN32
const wchar_t* nativeName(const Common::QVString& path) { return path.w_str(); }
void removeFile(const wchar_t* name) { _wremove(name); }
#else
const char* nativeName(const Common::QVString& path) { return path.c_str(); }
void removeFile(const char* name) { std::remove(name); }
#endif

} // namespace

void createProbeFile(Common::QVString& outPath)
{
    const std::wstring path =
        QrxQvFileSystemUtility::combine(QrxQvFileSystemUtility::tempPath(), Common::QVUUID().getWString() + L".txt");
    const Common::QVString made = Common::TextAccess::make(path);
    const auto* const name = nativeName(made);
    outPath = made;
    std::ofstream(name) << "dummy\n";
}

ProbeFileRemover::~ProbeFileRemover()
{
    if (!path.Empty())
        removeFile(nativeName(path));
}

} // namespace Quorvex::Velmora::TessaportAPI
