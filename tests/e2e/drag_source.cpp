// A window that gives the files of its command line to whatever they are dragged onto, as a file
// manager does. It says on its standard output when the drag has begun, and when what lies below
// takes the files; it ends with 0 when they were dropped there.
#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QTimer>
#include <QUrl>
#include <QWidget>

#include <cstdio>

namespace
{

/// The other side fetches what it was given after the drop.
constexpr int fetchMs = 1500;

void Say(const char* word)
{
    std::puts(word);
    std::fflush(stdout);
}

class DragSource : public QWidget
{
protected:
    void mouseMoveEvent(QMouseEvent*) override
    {
        auto* data = new QMimeData;
        QList<QUrl> urls;
        const QStringList files = QCoreApplication::arguments().mid(1);
        for (const QString& file : files)
            urls.append(QUrl::fromLocalFile(file));
        data->setUrls(urls);
        auto* drag = new QDrag(this);
        drag->setMimeData(data);
        connect(drag, &QDrag::actionChanged, this, [](Qt::DropAction action) {
            if (action == Qt::CopyAction)
                Say("taken");
        });
        Say("begun");
        const bool dropped = drag->exec(Qt::CopyAction) == Qt::CopyAction;
        QTimer::singleShot(fetchMs, QCoreApplication::instance(),
                           [dropped] { QCoreApplication::exit(dropped ? 0 : 1); });
    }
};

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    DragSource source;
    source.setWindowTitle(QStringLiteral("Drag source"));
    source.setGeometry(10, 700, 120, 120);
    source.show();
    return QApplication::exec();
}
