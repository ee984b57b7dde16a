#include "ui/widgets/help_marks.h"

#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QSyntaxHighlighter>

namespace kestrova
{

namespace
{

constexpr int mostMarked = 2'000'000;

/// The palette's colour of links, made light where the ground is dark and the desktop's theme has
/// left it as it is on white.
QColor LinkColour(const QPalette& palette)
{
    constexpr int dark = 128;
    constexpr int readable = 190;
    QColor link = palette.color(QPalette::Link);
    if (palette.color(QPalette::Base).lightness() < dark && link.lightness() < readable)
        link.setHsl(link.hslHue(), link.hslSaturation(), readable);
    return link;
}

class Marks : public QSyntaxHighlighter
{
public:
    Marks(QTextDocument* document, const QPalette& palette) : QSyntaxHighlighter(document)
    {
        main_.setFontWeight(QFont::Bold);
        main_.setForeground(LinkColour(palette));
        sub_.setForeground(LinkColour(palette));
        tag_.setForeground(palette.color(QPalette::PlaceholderText));
    }

protected:
    void highlightBlock(const QString& line) override
    {
        // Marks are pairs within a line: a topic, a sub-topic, a tag.
        constexpr const char* form =
            R"((\[[^\]\[{}]*\])|(\{[^}{\]\[]*\})|(#\d{1,4}#))"; // not shown
        static const QRegularExpression marks{QString::fromLatin1(form)};
        auto found = marks.globalMatch(line);
        while (found.hasNext()) {
            const QRegularExpressionMatch mark = found.next();
            const QChar first = line[mark.capturedStart()];
            const QTextCharFormat& look = first == QLatin1Char('[')   ? main_
                                          : first == QLatin1Char('{') ? sub_
                                                                      : tag_;
            setFormat(static_cast<int>(mark.capturedStart()),
                      static_cast<int>(mark.capturedLength()), look);
        }
    }

private:
    QTextCharFormat main_;
    QTextCharFormat sub_;
    QTextCharFormat tag_;
};

} // namespace

void MarkTopics(QPlainTextEdit& text)
{
    if (text.document()->characterCount() <= mostMarked)
        new Marks(text.document(), text.palette()); // the document owns it
}

} // namespace kestrova
