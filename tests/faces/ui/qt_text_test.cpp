#include "ui/widgets/qt_text.h"

#include <QMimeData>
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

TEST(QtText, WhatIsDraggedKeepsTheBytesOfItsName)
{
    QMimeData data;
    data.setData("text/uri-list", "file:///tmp/a%FF%FEb.zip\r\nfile:///tmp/M%C3%BCll%25%20%231\r\n"
                                  "https://levels.example/c.zip\r\n");
    const std::vector<Path> expected = {"/tmp/a\xFF\xFE"
                                        "b.zip",
                                        "/tmp/M\u00FCll% #1"};
    EXPECT_EQ(DraggedPaths(data), expected);
}

} // namespace kestrova::testing
