#include "ui/widgets/qt_text.h"

#include "core/text.h"
#include "platform/clock.h"

#include <QDateTime>
#include <QFile>
#include <QLocale>
#include <QMimeData>
#include <QTextDocument>
#include <QUrl>

namespace kestrova
{

QString ToQt(std::string_view text)
{
    const std::string readable = Readable(text);
    QString shown = QString::fromUtf8(readable.data(), static_cast<qsizetype>(readable.size()));
    return shown.remove(QLatin1Char('\r'));
}

std::string FromQt(const QString& text)
{
    return text.toStdString();
}

QString Words(Message id, std::initializer_list<std::string_view> args)
{
    return ToQt(GetMsg(id, args));
}

QString PlainTip(const QString& text)
{
    if (!Qt::mightBeRichText(text))
        return text;
    return "<qt>" + text.toHtmlEscaped().replace('\n', QLatin1String("<br>")) + "</qt>";
}

QString DayText(std::int64_t seconds)
{
    return QLocale{}.toString(QDateTime::fromSecsSinceEpoch(seconds).date(), QLocale::ShortFormat);
}

QString MomentText(std::int64_t ns)
{
    const std::int64_t seconds = ns / platform::nsOfSecond;
    return DayText(seconds) + QLatin1Char(' ') +
           QDateTime::fromSecsSinceEpoch(seconds).toString(QStringLiteral("HH:mm:ss"));
}

QString PathToQt(const Path& path)
{
    return QFile::decodeName(QByteArray::fromStdString(path.native()));
}

Path PathFromQt(const QString& text)
{
    return FolderFromText(QFile::encodeName(text).toStdString());
}

std::vector<Path> DraggedPaths(const QMimeData& data)
{
    std::vector<Path> paths;
    for (const QUrl& url : data.urls())
        if (url.isLocalFile())
            // Its bytes as they are: a name need not be UTF-8.
            paths.push_back(FolderFromText(
                QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1())
                    .toStdString()));
    return paths;
}

} // namespace kestrova
