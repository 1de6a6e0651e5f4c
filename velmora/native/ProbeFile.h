// The small file with which the sync application is asked whether it would accept a new one. Internal.
#pragma once

#include <velmora/api/QVString.h>

namespace Quorvex::Velmora::TessaportAPI
{

/// Creates the file, readable by its owner only, unless the path exists: as a file, or as a link that another user put
/// there.
///
/// @return false if the path exists. A file that cannot be created for another reason is no failure: the sync
///         application refuses it.
[[nodiscard]] bool tryCreateProbeFile(const Common::QVString& path);

/// Creates the file in the temporary folder. The caller removes it.
///
/// @param outPath  receives the path.
/// @throws std::filesystem::filesystem_error when there is no temporary folder.
void createProbeFile(Common::QVString& outPath);

/// Removes the file at the end of a scope if it still exists.
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
