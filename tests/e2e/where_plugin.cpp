// A plugin of Qt that a script loads into the program (QT_QPA_GENERIC_PLUGINS): at each SIGUSR1 it
// writes what can be seen and where, so that a mouse can be brought to it. One line each: the name
// of the control, what stands on it, and the middle of what is seen of it. Rows of lists, items of
// menus and buttons of a question are lines of their own.
#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QGenericPlugin>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QSocketNotifier>
#include <QTextStream>

#include <csignal>
#include <cstdio>
#include <sys/socket.h>
#include <unistd.h>

namespace
{

int wake[2];

void Wake(int)
{
    const char byte = 0;
    [[maybe_unused]] const auto written = write(wake[1], &byte, 1);
}

void Line(QTextStream& lines, const QString& name, QString text, const QRect& seen,
          const QWidget& on)
{
    if (seen.isEmpty())
        return;
    // The mouse counts the screen's own pixels.
    const QPoint middle =
        (QPointF(on.mapToGlobal(seen.center())) * on.devicePixelRatio()).toPoint();
    lines << name << '\t' << text.replace(QLatin1Char('\n'), QLatin1Char(' ')) << '\t' << middle.x()
          << '\t' << middle.y() << '\n';
}

QString TextOn(const QWidget& widget)
{
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget))
        return button->text().remove(QLatin1Char('&'));
    if (const auto* label = qobject_cast<const QLabel*>(&widget))
        return label->text();
    if (const auto* edit = qobject_cast<const QLineEdit*>(&widget))
        return edit->text();
    if (const auto* box = qobject_cast<const QComboBox*>(&widget))
        return box->currentText();
    return {};
}

void Rows(QTextStream& lines, const QAbstractItemView& view, const QModelIndex& parent)
{
    constexpr int most = 1000;
    const QAbstractItemModel* model = view.model();
    for (int row = 0; model != nullptr && row < std::min(most, model->rowCount(parent)); ++row) {
        const QModelIndex index = model->index(row, 0, parent);
        Line(lines, QStringLiteral("row"), index.data().toString(),
             view.visualRect(index) & view.viewport()->rect(), *view.viewport());
        Rows(lines, view, index);
    }
}

void Actions(QTextStream& lines, const QWidget& menu)
{
    const auto* bar = qobject_cast<const QMenuBar*>(&menu);
    const auto* list = qobject_cast<const QMenu*>(&menu);
    if (bar == nullptr && list == nullptr)
        return;
    for (QAction* action : menu.actions())
        if (action->isEnabled() && !action->isSeparator())
            Line(lines,
                 action->menu() != nullptr ? action->menu()->objectName() : action->objectName(),
                 action->text().remove(QLatin1Char('&')),
                 bar != nullptr ? bar->actionGeometry(action) : list->actionGeometry(action), menu);
}

void WriteAll()
{
    const QString name = qEnvironmentVariable("WHERE_FILE");
    QFile file(name + QStringLiteral(".new"));
    if (!file.open(QIODevice::WriteOnly))
        return;
    QTextStream lines(&file);
    for (const QWidget* widget : QApplication::allWidgets()) {
        // What another window blocks cannot be pressed.
        const QWidget* modal = QApplication::activeModalWidget();
        const bool popup = (widget->window()->windowFlags() & Qt::Popup) == Qt::Popup;
        if (!widget->isVisible() || !widget->isEnabled() ||
            (modal != nullptr && widget->window() != modal && !popup))
            continue;
        Line(lines, widget->objectName(), TextOn(*widget), widget->visibleRegion().boundingRect(),
             *widget);
        Actions(lines, *widget);
        if (const auto* view = qobject_cast<const QAbstractItemView*>(widget))
            Rows(lines, *view, {});
    }
    lines.flush();
    file.close();
    std::rename(qPrintable(file.fileName()), qPrintable(name));
}

} // namespace

class WherePlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "where_plugin.json")

public:
    QObject* create(const QString&, const QString&) override
    {
        if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, wake) != 0)
            return nullptr;
        auto* notifier = new QSocketNotifier(wake[0], QSocketNotifier::Read, this);
        connect(notifier, &QSocketNotifier::activated, this, [] {
            char byte = 0;
            if (read(wake[0], &byte, 1) == 1)
                WriteAll();
        });
        std::signal(SIGUSR1, Wake);
        return notifier;
    }
};

#include "where_plugin.moc"
