// The small file by which the sync application is asked whether it would take a new one. Internal.
#pragma once

#include <velmora/api/QVString.h>

namespace Quorvex::Velmora::TessaportAPI
{

/// Creates the file, readable by its owner only, unless something has the path already: a file, or a link that another
/// user put there.
///
/// @return false if something has the path. A file that cannot be created for another reason is left to the sync
/// application to refuse.
[[nodiscard]] bool tryCreateProbeFile(const Common::QVString& path);

/// Creates the file in the temporary folder and stores its path, which is the caller's to remove. A file that cannot be
/// written is left to the sync application to refuse.
/// @throws std::filesystem::filesystem_error when there is no temporary folder.
void createProbeFile(Common::QVString& outPath);

/// Removes the file at the end of a scope, on every way out, if it is still there.
class ProbeFileRemover
{
public:
    explicit ProbeFileRemover(const Common::QVString& path) noexcept : path(path) {}
    ProbeFileRemover(const ProbeFileRemover&) = delete;
    ProbeFileRemover& operator=(const ProbeFileRemover&) = delete;
    ~ProbeFileRemover();

private:
    const Common::QVString& path;
};

} // namespace Quorvex::Velmora::TessaportAPI
