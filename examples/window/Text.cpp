#include "Text.h"

#include <QDateTime>
#include <QLocale>

#include <velmora/api/Interop.h>
#include <velmora/native/MessageFormatting.h>

namespace DriveWindow
{
namespace
{

constexpr std::int64_t EndOfYear9999 = 253402300800;
constexpr int LongestMessage = 4000;

bool isHarmless(QChar character)
{
    switch (character.category()) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return false;
    default:
        return true;
    }
}

} // namespace

QString toQString(const QVString& string) { return QString::fromWCharArray(string.w_str()); }

QString toQString(const std::filesystem::path& path) { return QString::fromStdString(path.u8string()); }

QVString fromQString(const QString& string) { return Api::toQVString(string.toStdWString()); }

QString shown(const QString& text, int most)
{
    QString line = text.left(most);
    for (QChar& character : line) {
        if (!isHarmless(character))
            character = QChar::ReplacementCharacter;
    }
    return text.size() > most ? line + QChar(0x2026) : line;
}

QString shown(const QVString& string, int most) { return shown(toQString(string), most); }

QString quoted(const QString& name) { return u'“' + shown(name, 60) + u'”'; }

QString richText(const QString& message)
{
    const QString cut = message.size() > LongestMessage ? message.left(LongestMessage) + QChar(0x2026) : message;
    return QString::fromStdWString(Api::toRichText(cut.toStdWString()));
}

QString localTime(std::int64_t secondsSince1970)
{
    if (secondsSince1970 < -EndOfYear9999 || secondsSince1970 >= EndOfYear9999)
        return {};
    return QLocale().toString(QDateTime::fromSecsSinceEpoch(secondsSince1970), QLocale::ShortFormat);
}

} // namespace DriveWindow
