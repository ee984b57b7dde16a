#include "practice/practice_script.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QFontInfo>
#include <QImage>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QWidget>

#include <array>
#include <cstdio>
#include <string_view>

/// The practice folder's stand-in for the game. Started in the Level Editor's folder, it shows the
/// load picture and the name of the level that is installed, and writes savegames.
namespace
{

/// All that a person reads here; %1 is filled in.
namespace texts
{
constexpr const char* window = "%1 - practice game";
constexpr const char* noName = "A level without a practice script";
constexpr const char* noPicture = "There is no load.bmp in this folder.";
constexpr const char* saved = "Saved in slot %1";
constexpr const char* notSaved = "Slot %1 could not be written";
constexpr const char* savegames = "Savegames";
constexpr const char* keys =
    "S  or  Enter   save        Print Screen   picture        Q  or  Esc   quit";
} // namespace texts

constexpr int slotCount = 15;
constexpr int numberOffset = 75; ///< of the save number, 16 bits, little-endian, signed
constexpr int savegameSize = 40 * 1024;

/// The file of that name in the working folder, however it is spelled; as given if there is none.
QString Spelled(const QString& name)
{
    const QStringList names = QDir{}.entryList(QDir::Files | QDir::Hidden);
    for (const QString& found : names)
        if (found.compare(name, Qt::CaseInsensitive) == 0)
            return found;
    return name;
}

QByteArray FileBytes(const QString& name)
{
    QFile file{Spelled(name)};
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray{};
}

/// In Windows-1252, whose letters are those of Latin 1.
QByteArray LevelTitle()
{
    const QByteArray script = FileBytes(QStringLiteral("script.dat"));
    const std::string title =
        kestrova::PracticeTitle({script.constData(), static_cast<std::size_t>(script.size())});
    return title.empty() ? QByteArray{texts::noName} : QByteArray::fromStdString(title);
}

QString SlotName(int slot)
{
    return QStringLiteral("savegame.%1").arg(slot);
}

/// The save number of a slot; -1 for a free one. What cannot be read counts as number 0.
int NumberInSlot(int slot)
{
    if (!QFile::exists(Spelled(SlotName(slot))))
        return -1;
    const QByteArray bytes = FileBytes(SlotName(slot));
    if (bytes.size() < numberOffset + 2)
        return 0;
    const auto low = static_cast<unsigned char>(bytes[numberOffset]);
    const auto high = static_cast<unsigned char>(bytes[numberOffset + 1]);
    return std::max(0, static_cast<int>(static_cast<qint16>(low | high << 8)));
}

struct Saving {
    int slot = 0;
    bool done = false;
};

/// Into the first free slot, or over the oldest savegame when there is none.
Saving SaveGame()
{
    Saving saving{-1, false};
    int largest = 0;
    int oldest = 0;
    std::array<int, slotCount> numbers{};
    for (int slot = 0; slot < slotCount; ++slot) {
        const int number = numbers[static_cast<std::size_t>(slot)] = NumberInSlot(slot);
        largest = std::max(largest, number);
        if (number < 0 && saving.slot < 0)
            saving.slot = slot;
        if (number < numbers[static_cast<std::size_t>(oldest)])
            oldest = slot;
    }
    if (saving.slot < 0)
        saving.slot = oldest;
    const int number = std::min(largest + 1, 32767);

    QByteArray bytes = LevelTitle().left(numberOffset - 1);
    bytes.resize(savegameSize, '\0');
    bytes[numberOffset] = static_cast<char>(number & 0xFF);
    bytes[numberOffset + 1] = static_cast<char>(number >> 8);
    quint32 state = static_cast<quint32>(number) * 2654435761U + static_cast<quint32>(saving.slot);
    for (int i = numberOffset + 2; i < savegameSize; ++i) {
        state = state * 1664525U + 1013904223U;
        bytes[i] = static_cast<char>(i % 8 < 3 ? state >> 24 : 0);
    }
    QFile file{Spelled(SlotName(saving.slot))};
    saving.done = file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
                  file.write(bytes) == bytes.size() && file.flush();
    return saving;
}

QString SavingText(const Saving& saving)
{
    return QString::fromUtf8(saving.done ? texts::saved : texts::notSaved).arg(saving.slot);
}

class GameWindow : public QWidget
{
public:
    GameWindow()
        : title_(QString::fromLatin1(LevelTitle())),
          picture_(QImage::fromData(FileBytes(QStringLiteral("load.bmp"))))
    {
        setObjectName(QStringLiteral("PracticeGame"));
        setWindowTitle(QString::fromUtf8(texts::window).arg(title_));
        setAccessibleName(title_);
        setAttribute(Qt::WA_OpaquePaintEvent);
        setMinimumSize(480, 400);
        resize(820, 760);
        // Others put savegames into the slots, and take them out.
        startTimer(1000);
    }

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        switch (event->key()) {
        case Qt::Key_S:
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (!event->isAutoRepeat())
                Save();
            return;
        case Qt::Key_Print:
            // As the game's own system does it, which the desktop may leave undone.
            QGuiApplication::clipboard()->setImage(grab().toImage());
            return;
        case Qt::Key_Q:
        case Qt::Key_Escape:
            close();
            return;
        default:
            QWidget::keyPressEvent(event);
        }
    }

    void timerEvent(QTimerEvent*) override { update(); }

    void paintEvent(QPaintEvent*) override
    {
        QPainter painter{this};
        painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
        painter.fillRect(rect(), QColor{24, 26, 30});
        const int unit = std::max(fontMetrics().height(), 12);
        QRect area = rect().adjusted(unit, unit, -unit, -unit);
        PaintTitle(painter, area, unit);
        PaintFoot(painter, area, unit);
        PaintPicture(painter, area, unit);
    }

private:
    void Save()
    {
        const Saving saving = SaveGame();
        message_ = SavingText(saving);
        failed_ = !saving.done;
        setAccessibleDescription(message_);
        update();
    }

    /// Each of these takes its part off `area`.
    void PaintTitle(QPainter& painter, QRect& area, int unit)
    {
        QFont large = font();
        large.setPointSizeF(QFontInfo{large}.pointSizeF() * 2.1);
        large.setBold(true);
        painter.setFont(large);
        const QFontMetrics metrics{large};
        painter.setPen(QColor{240, 236, 224});
        painter.drawText(QRect{area.left(), area.top(), area.width(), metrics.height()},
                         Qt::AlignCenter, metrics.elidedText(title_, Qt::ElideRight, area.width()));
        painter.setFont(font());
        area.setTop(area.top() + metrics.height() + unit / 2);
    }

    void PaintFoot(QPainter& painter, QRect& area, int unit)
    {
        painter.setPen(QColor{150, 154, 162});
        painter.drawText(QRect{area.left(), area.bottom() - unit, area.width(), unit + 2},
                         Qt::AlignCenter, QString::fromUtf8(texts::keys));
        const QString label = QString::fromUtf8(texts::savegames);
        const int labelWidth = fontMetrics().horizontalAdvance(label) + unit;
        const int box = std::min(unit * 3 / 2, (area.width() - labelWidth) / slotCount - 4);
        const int top = area.bottom() - unit * 2 - box;
        int left = area.left() + (area.width() - labelWidth - slotCount * (box + 4)) / 2;
        painter.drawText(QRect{left, top, labelWidth, box}, Qt::AlignVCenter | Qt::AlignLeft,
                         label);
        left += labelWidth;
        for (int slot = 0; slot < slotCount; ++slot, left += box + 4) {
            const bool taken = NumberInSlot(slot) >= 0;
            QPainterPath shape;
            shape.addRoundedRect(QRectF(left, top, box, box), 3, 3);
            painter.fillPath(shape, taken ? QColor{214, 168, 92} : QColor{46, 49, 56});
            painter.setPen(taken ? QColor{30, 26, 18} : QColor{120, 124, 132});
            painter.drawText(QRect{left, top, box, box}, Qt::AlignCenter, QString::number(slot));
        }
        area.setBottom(top - unit);
    }

    void PaintPicture(QPainter& painter, const QRect& area, int unit)
    {
        QRect place{QPoint{}, picture_.isNull()
                                  ? area.size()
                                  : picture_.size().scaled(area.size(), Qt::KeepAspectRatio)};
        place.moveCenter(area.center());
        painter.setPen(QColor{150, 154, 162});
        if (picture_.isNull()) {
            painter.fillRect(place, QColor{34, 36, 42});
            painter.drawText(place, Qt::AlignCenter, QString::fromUtf8(texts::noPicture));
        } else {
            painter.drawImage(place, picture_);
        }
        if (message_.isEmpty())
            return;
        QFont bold = font();
        bold.setBold(true);
        bold.setPointSizeF(QFontInfo{bold}.pointSizeF() * 1.3);
        painter.setFont(bold);
        const QFontMetrics metrics{bold};
        QRect banner{0, 0, metrics.horizontalAdvance(message_) + 2 * unit, metrics.height() + unit};
        banner.moveCenter({place.center().x(), place.bottom() - banner.height()});
        QPainterPath shape;
        shape.addRoundedRect(banner, 6, 6);
        painter.fillPath(shape, failed_ ? QColor{150, 40, 40, 235} : QColor{16, 18, 22, 225});
        painter.setPen(QColor{250, 246, 236});
        painter.drawText(banner, Qt::AlignCenter, message_);
    }

    QString title_;
    QImage picture_;
    QString message_;
    bool failed_ = false;
};

int SaveOnce()
{
    const Saving saving = SaveGame();
    std::fprintf(saving.done ? stdout : stderr, "%s\n", SavingText(saving).toUtf8().constData());
    return saving.done ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i)
        if (std::string_view{argv[i]} == "--save-once")
            return SaveOnce();
    const bool seen = qEnvironmentVariableIsSet("QT_QPA_PLATFORM") ||
                      !qEnvironmentVariableIsEmpty("DISPLAY") ||
                      !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    if (!seen) { // Qt would abort
        std::printf("%s\n", QString::fromLatin1(LevelTitle()).toUtf8().constData());
        return 0;
    }
    QApplication application{argc, argv};
    GameWindow window;
    window.show();
    return application.exec();
}
