#include "ui/widgets/clear_boxes_style.h"

#include <QApplication>
#include <QDir>
#include <QThread>
#include <QThreadPool>
#include <gtest/gtest.h>

namespace
{

/// A thread that the library waited for may still be on its way out, with what it holds; looked at
/// in that moment, it has lost that.
void LetThreadsEnd()
{
    QThreadPool::globalInstance()->waitForDone();
    const QDir threads{QStringLiteral("/proc/self/task")};
    for (int tries = 0; tries < 20; ++tries) {
        if (threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot).size() <= 1)
            return;
        QThread::msleep(10);
    }
}

} // namespace

int main(int argc, char** argv)
{
    // Tests look at windows that nobody sees, unless somebody wants to.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    ::testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    QApplication::setStyle(new kestrova::ClearBoxesStyle);
    QApplication::setQuitOnLastWindowClosed(false);
    const int result = RUN_ALL_TESTS();
    LetThreadsEnd();
    return result;
}
