#include "ui/desktop/machine_windows.h"

#include "pictures/bitmap.h"
#include "ui/desktop/x_desktop.h"
#include "ui/widgets/picture_reading.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QObject>
#include <mutex>

namespace kestrova
{

namespace
{

/// The first of these that is there; whole pictures before lossy ones.
constexpr const char* kinds[] = {"image/png", "image/bmp", "image/x-bmp", "image/x-MS-bmp",
                                 "image/jpeg"};

} // namespace

/// Where another thread leaves its word for the event loop, as long as somebody listens.
struct WindowMachine::Listener {
    std::mutex mutex;
    std::unique_ptr<QObject> ear = std::make_unique<QObject>();
};

WindowMachine::WindowMachine() : desktop_(XDesktop::Open()), listener_(std::make_shared<Listener>())
{
}

WindowMachine::~WindowMachine()
{
    const std::lock_guard lock{listener_->mutex};
    listener_->ear.reset();
}

platform::LateRefusal WindowMachine::WhenRefusedLate()
{
    return [this, listener = listener_](const std::string& fileOrAddress) {
        const std::lock_guard lock{listener->mutex};
        if (listener->ear == nullptr)
            return;
        QMetaObject::invokeMethod(
            listener->ear.get(),
            [this, fileOrAddress] {
                if (refusedLate)
                    refusedLate(DesktopRefused(fileOrAddress));
            },
            Qt::QueuedConnection);
    };
}

bool WindowMachine::SeesKeys()
{
    return desktop_ != nullptr;
}

bool WindowMachine::IsKeyDown(GameKey key)
{
    return desktop_ != nullptr && desktop_->IsKeyDown(key);
}

void WindowMachine::TypeKeys(std::string_view keys)
{
    if (desktop_ != nullptr)
        desktop_->TypeKeys(keys);
}

bool WindowMachine::ActivateWindow(const std::string& title)
{
    return desktop_ != nullptr && desktop_->ActivateWindow(title);
}

/// Every question goes to the program that owns the clipboard, and a frozen one lets each of them
/// wait: one for the kinds, one for the picture.
Result<std::string> WindowMachine::ClipboardPicture()
{
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    if (data == nullptr)
        return MakeFailure(ErrorCode::CannotRead, {});
    const QStringList offered = data->formats();
    for (const char* kind : kinds) {
        const QString wanted = QString::fromLatin1(kind);
        if (!offered.contains(wanted))
            continue;
        std::string bytes = data->data(wanted).toStdString();
        if (bytes.empty())
            return MakeFailure(ErrorCode::CannotRead, {});
        if (DecodePicture(bytes))
            return bytes;
        const auto picture = ReadPicture(bytes);
        if (!picture)
            return picture.Error();
        return EncodeBitmap(PictureOf(*picture));
    }
    return std::string{};
}

void WindowMachine::ClearClipboard()
{
    QGuiApplication::clipboard()->clear();
}

void WindowMachine::Notify(const std::string& title, const std::string& text)
{
    notifier_.Show(title, text);
}

} // namespace kestrova
