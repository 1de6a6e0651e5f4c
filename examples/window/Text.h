// Strings of the library as strings of Qt, and strings that are safe to show.
#pragma once

#include <QString>
#include <cstdint>
#include <filesystem>

#include <velmora/api/Interop.h>

namespace DriveWindow
{

namespace Api = Quorvex::Velmora::TessaportAPI;
using Quorvex::Velmora::Common::QVString;

[[nodiscard]] QString toQString(const QVString& string);
[[nodiscard]] QString toQString(const std::filesystem::path& path);
[[nodiscard]] QVString fromQString(const QString& string);

/// Makes one line of plain text for a view: without control characters and marks that turn the direction of the text of
/// their neighbours, and with an ellipsis after `most` characters.
[[nodiscard]] QString shown(const QString& text, int most = 250);
[[nodiscard]] QString shown(const QVString& string, int most = 250);

/// Returns a name in quotation marks, short enough for a sentence.
[[nodiscard]] QString quoted(const QString& name);

/// Returns a message as HTML with links; all else in it is plain text. A very long message ends with an ellipsis.
[[nodiscard]] QString richText(const QString& message);

/// Returns a local date and time; empty if the calendar has no such time.
[[nodiscard]] QString localTime(std::int64_t secondsSince1970);

} // namespace DriveWindow
