#include "ui/widgets/help_marks.h"

#include "ui/widgets/link_button.h"

#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QSyntaxHighlighter>

namespace kestrova
{

namespace
{

constexpr int mostMarked = 2'000'000;

class Marks : public QSyntaxHighlighter
{
public:
    Marks(QTextDocument* document, const QPalette& palette) : QSyntaxHighlighter(document)
    {
        main_.setFontWeight(QFont::Bold);
        main_.setForeground(LinkColour(palette, QPalette::Base));
        sub_.setForeground(LinkColour(palette, QPalette::Base));
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
