#include "velmora/native/ProbeFile.h"

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#ifdef _WIN32
#include <io.h>
#include <sys/stat.h>
#else
#include <sys/stat.h>
#include <unistd.h>
#endif

#include <velmora/api/QVUUID.h>
#include <velmora/api/TextAccess.h>
#include <velmora/platform/QrxQvFileSystemUtility.h>

namespace Quorvex::Velmora::TessaportAPI
{

using Common::QrxQvFileSystemUtility;

namespace
{

constexpr char Content[] = "dummy\n";

// The path as the platform's functions take it. A string and its copies keep their narrow form once it was asked for,
// so removing the file needs no memory.
#ifdef _WIN32
const wchar_t* nativeName(const Common::QVString& path) { return path.w_str(); }
void removeFile(const wchar_t* name) { _wremove(name); }

int openNew(const wchar_t* name)
{
    return _wopen(name, _O_WRONLY | _O_CREAT | _O_EXCL | _O_NOINHERIT | _O_TEXT, _S_IREAD | _S_IWRITE);
}
#else
const char* nativeName(const Common::QVString& path) { return path.c_str(); }
void removeFile(const char* name) { std::remove(name); }

int openNew(const char* name) { return open(name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR); }
#endif

} // namespace

bool tryCreateProbeFile(const Common::QVString& path)
{
    const int file = openNew(nativeName(path));
    if (file < 0)
        return errno != EEXIST;
    // The sync application is asked about the file, not about its content.
    [[maybe_unused]] const auto written = write(file, Content, sizeof Content - 1);
    close(file);
    return true;
}

void createProbeFile(Common::QVString& outPath)
{
    const std::wstring folder = QrxQvFileSystemUtility::tempPath();
    Common::QVString path;
    do
        path =
            Common::TextAccess::make(QrxQvFileSystemUtility::combine(folder, Common::QVUUID().getWString() + L".txt"));
    while (!tryCreateProbeFile(path));
    outPath = path;
}

ProbeFileRemover::~ProbeFileRemover()
{
    if (!path.Empty())
        removeFile(nativeName(path));
}

} // namespace Quorvex::Velmora::TessaportAPI
