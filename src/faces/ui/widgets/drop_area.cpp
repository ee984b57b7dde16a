#include "ui/widgets/drop_area.h"

#include "ui/widgets/qt_text.h"

#include <QDropEvent>
#include <QMimeData>
#include <QPainter>
#include <QTextOption>
#include <QTimer>
#include <QWidget>

namespace kestrova
{

/// Lies over all of the widget while files are held above it.
class DropArea::Light : public QWidget
{
public:
    explicit Light(QWidget* parent) : QWidget(parent)
    {
        setObjectName(QStringLiteral("Light_Drop"));
        setAttribute(Qt::WA_TransparentForMouseEvents);
        hide();
    }
    void Show(const QString& words)
    {
        words_ = words;
        setAccessibleName(words);
        setGeometry(parentWidget()->rect());
        raise();
        show();
        update();
    }
    void paintEvent(QPaintEvent*) override
    {
        constexpr int margin = 3;
        constexpr double round = 6;
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        QColor ground = palette().color(QPalette::Window);
        ground.setAlpha(225);
        const QColor edge = palette().color(QPalette::Highlight);
        painter.setBrush(ground);
        painter.setPen(QPen(edge, margin));
        painter.drawRoundedRect(rect().adjusted(margin, margin, -margin, -margin), round, round);
        QFont font = painter.font();
        font.setBold(true);
        painter.setFont(font);
        painter.setPen(palette().color(QPalette::WindowText));
        QTextOption wrapped(Qt::AlignCenter);
        wrapped.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        painter.drawText(QRectF(rect().adjusted(12, 12, -12, -12)), words_, wrapped);
    }

private:
    QString words_;
};

DropArea::DropArea(QWidget* target, QWidget& lit)
    : QObject(&lit), target_(target), light_(new Light(&lit))
{
    target->setAcceptDrops(true);
    target->installEventFilter(this);
}

bool DropArea::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != target_)
        return false;
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove: {
        auto& drag = dynamic_cast<QDropEvent&>(*event);
        const QString words = welcome(DraggedPaths(*drag.mimeData()));
        drag.setAccepted(!words.isEmpty());
        if (words.isEmpty())
            return false; // those around it may take them
        drag.acceptProposedAction();
        light_->Show(words);
        return true;
    }
    case QEvent::DragLeave:
        light_->hide();
        return true;
    case QEvent::Drop: {
        auto& drop = dynamic_cast<QDropEvent&>(*event);
        light_->hide();
        drop.acceptProposedAction();
        QTimer::singleShot(0, this,
                           [this, paths = DraggedPaths(*drop.mimeData())] { dropped(paths); });
        return true;
    }
    default:
        return false;
    }
}

} // namespace kestrova
