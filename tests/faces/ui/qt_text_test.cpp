#include "ui/widgets/qt_text.h"

#include <QTextDocument>
#include <gtest/gtest.h>

namespace kestrova::testing
{

TEST(QtText, AToolTipShowsATextLetterByLetter)
{
    for (const QString text :
         {"Fire & \"Ice\"", "R&amp;D", "<b>Dawn</b>", "a\n<img src=x>", "2 < 3"}) {
        const QString tip = PlainTip(text);
        QTextDocument shown;
        if (Qt::mightBeRichText(tip))
            shown.setHtml(tip);
        else
            shown.setPlainText(tip);
        EXPECT_EQ(shown.toPlainText(), text);
    }
}

} // namespace kestrova::testing
