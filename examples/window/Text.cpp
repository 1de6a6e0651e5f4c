#include "Text.h"

#include <QDateTime>
#include <QLocale>

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

QString cut(const QString& text, int most) { return text.size() > most ? text.left(most) + u'…' : text; }

} // namespace

QString toQString(const QVString& string) { return QString::fromWCharArray(string.w_str()); }

QString toQString(const std::filesystem::path& path) { return QString::fromStdString(path.u8string()); }

QVString fromQString(const QString& string) { return Api::toQVString(string.toStdWString()); }

QString shown(const QString& text, int most)
{
    QString line = cut(text, most);
    for (qsizetype i = 0; i < line.size(); ++i) {
        if (!isHarmless(line.at(i)))
            line[i] = QChar::ReplacementCharacter;
    }
    return line;
}

QString shown(const QVString& string, int most) { return shown(toQString(string), most); }

QString quoted(const QString& name) { return u'“' + shown(name, 60) + u'”'; }

QString richText(const QString& message)
{
    return QString::fromStdWString(Api::toRichText(cut(message, LongestMessage).toStdWString()));
}

QString localTime(std::int64_t secondsSince1970)
{
    if (secondsSince1970 < -EndOfYear9999 || secondsSince1970 >= EndOfYear9999)
        return {};
    return QLocale().toString(QDateTime::fromSecsSinceEpoch(secondsSince1970), QLocale::ShortFormat);
}

} // namespace DriveWindow
