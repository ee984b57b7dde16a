// A window that gives the files of its command line to whatever they are dragged onto, as a file
// manager does.
#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QTimer>
#include <QUrl>
#include <QWidget>

namespace
{

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
        drag->exec(Qt::CopyAction);
        // The other side fetches what it was given after that.
        QTimer::singleShot(1500, QCoreApplication::instance(), &QCoreApplication::quit);
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
