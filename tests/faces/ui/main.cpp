#include "ui/widgets/clear_boxes_style.h"

#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    // Tests look at windows that nobody sees, unless somebody wants to.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    ::testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    QApplication::setStyle(new kestrova::ClearBoxesStyle);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
