#pragma once

#include <velmora/native/QvNativeTessaportAPI.h>
#include "tools/tessaport/app/Context.h"
#include "tools/tessaport/errors/ExitCode.h"

namespace Quorvex::Velmora::Tool
{

/// Reads what is in folders. One that cannot be read is reported, and does not keep the others from being read.
class FolderReader
{
public:
    /// @param onlyFolders  whether files are passed over.
    FolderReader(Context& commandContext, bool onlyFolders);

    /// @throws ApiException if the folder cannot be read.
    TessaportAPI::QVBuffer<TessaportAPI::Item> read(const TessaportAPI::Item& folder);

    /// Reports a folder that cannot be read, and returns nothing for it.
    ///
    /// @throws ApiException if the sync application cannot be asked at all.
    TessaportAPI::QVBuffer<TessaportAPI::Item> tryRead(const TessaportAPI::Item& folder);

    /// @return Failure if a folder was reported.
    [[nodiscard]] ExitCode result() const { return code; }

private:
    Context& context;
    bool foldersOnly;
    ExitCode code = ExitCode::Ok;
};

} // namespace Quorvex::Velmora::Tool
