// Strings of the library as strings of Qt, and strings that are safe to show.
#pragma once

#include <QString>
#include <algorithm>
#include <filesystem>

#include <velmora/api/Interop.h>

namespace DriveWindow
{

namespace Api = Quorvex::Velmora::TessaportAPI;
using Quorvex::Velmora::Common::QVString;

inline QString toQString(const QVString& string) { return QString::fromUtf8(string.c_str()); }

inline QString toQString(const std::filesystem::path& path) { return QString::fromStdString(path.u8string()); }

inline QVString fromQString(const QString& string) { return Api::toQVString(string.toStdWString()); }

/// Returns at most so many characters, and an ellipsis after them if there are more.
inline QString cut(const QString& text, int most) { return text.size() > most ? text.left(most) + u'…' : text; }

/// Makes one line of plain text for a view: without control characters and marks that turn the direction of the text of
/// their neighbours, and with an ellipsis after `most` characters.
inline QString shown(const QString& text, int most = 250)
{
    QString line = cut(text, most);
    const auto isHidden = [](QChar character) {
        return !(character.isPrint() || character.isSurrogate()) || character == QChar::LineSeparator ||
               character == QChar::ParagraphSeparator;
    };
    std::replace_if(line.begin(), line.end(), isHidden, QChar(QChar::ReplacementCharacter));
    return line;
}

inline QString shown(const QVString& string, int most = 250) { return shown(toQString(string), most); }

/// Returns a name in quotation marks, short enough for a sentence.
inline QString quoted(const QString& name) { return u'“' + shown(name, 60) + u'”'; }
inline QString quoted(const QVString& name) { return quoted(toQString(name)); }

} // namespace DriveWindow
