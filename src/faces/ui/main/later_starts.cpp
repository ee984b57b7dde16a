#include "ui/main/later_starts.h"

#include "session/session.h"
#include "ui/main/main_window.h"
#include "words/ui_main.h"

#include <QApplication>
#include <QSocketNotifier>

namespace kestrova
{

namespace
{

constexpr int lookForTurnMs = 150;

void BringToFront(QWidget& window, const std::string& activation)
{
    // Qt takes the desktop's leave from here, and the desktop alone knows it by other ways.
    if (QGuiApplication::platformName().startsWith(QLatin1String("wayland")) && !activation.empty())
        qputenv("XDG_ACTIVATION_TOKEN", QByteArray::fromStdString(activation));
    if (window.isMinimized())
        window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.raise();
    QWidget* const asking = QApplication::activeModalWidget();
    QWidget& front = asking != nullptr ? *asking : window;
    front.raise();
    front.activateWindow();
}

} // namespace

LaterStarts::LaterStarts(MeetingPlace& meeting, const Session& session, MainWindow& window)
    : meeting_(meeting), session_(session), window_(window)
{
    again_.setInterval(lookForTurnMs);
    connect(&again_, &QTimer::timeout, this, [this] { OpenNext(); });
    if (meeting.Descriptor() < 0)
        return;
    auto* called = new QSocketNotifier(meeting.Descriptor(), QSocketNotifier::Read, this);
    connect(called, &QSocketNotifier::activated, this, [this] { Hear(); });
}

void LaterStarts::Open(const std::vector<Path>& packages)
{
    started_ = true;
    std::vector<std::string> items;
    for (const Path& package : packages)
        items.push_back(package.native());
    if (!items.empty())
        waiting_.push_front(std::move(items));
    if (!waiting_.empty())
        again_.start();
}

void LaterStarts::Hear()
{
    for (OpenRequest& request : meeting_.Hear()) {
        BringToFront(window_, request.activation);
        if (request.items.empty())
            continue;
        waiting_.push_back(std::move(request.items));
        if (!IsFree())
            window_.ShowNote(GetMsg(Msg::OpensWhenDone));
        again_.start();
    }
}

bool LaterStarts::IsFree() const
{
    return started_ && session_.running.operations == 0 &&
           QApplication::activeModalWidget() == nullptr &&
           QApplication::activePopupWidget() == nullptr;
}

void LaterStarts::OpenNext()
{
    if (waiting_.empty())
        return again_.stop();
    if (!IsFree())
        return;
    const std::vector<std::string> items = std::move(waiting_.front());
    waiting_.pop_front();
    window_.OpenFiles(items); // what it asks lets this timer tick, and keeps the next ones waiting
}

} // namespace kestrova
