// What every window owes to whoever has no mouse, a small screen, large letters or a screen reader.
#include "ui/every_window.h"
#include "ui/widgets/picture_view.h"
#include "ui/widgets/zoom_view.h"
#include "world/speaking.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabBar>
#include <QtGlobal>
#include <map>
#include <set>

namespace kestrova::testing
{

namespace
{

std::string NameOf(const QObject& object)
{
    return FromQt(object.objectName().isEmpty()
                      ? QString::fromLatin1(object.metaObject()->className())
                      : object.objectName());
}

/// Controls that are made of others are one for a person.
bool IsWhole(const QWidget& widget)
{
    return qobject_cast<const QComboBox*>(&widget) != nullptr ||
           qobject_cast<const QAbstractSpinBox*>(&widget) != nullptr ||
           qobject_cast<const QLineEdit*>(&widget) != nullptr ||
           qobject_cast<const QAbstractItemView*>(&widget) != nullptr ||
           qobject_cast<const QPlainTextEdit*>(&widget) != nullptr ||
           qobject_cast<const QTabBar*>(&widget) != nullptr;
}

void Collect(const QWidget& parent, std::vector<QWidget*>& found)
{
    for (QObject* child : parent.children()) {
        auto* widget = qobject_cast<QWidget*>(child);
        if (widget == nullptr || widget->isWindow() || !widget->isVisible())
            continue;
        found.push_back(widget);
        if (!IsWhole(*widget))
            Collect(*widget, found);
    }
}

std::vector<QWidget*> VisibleIn(const QWidget& window)
{
    std::vector<QWidget*> found;
    Collect(window, found);
    return found;
}

bool NeedsName(const QWidget& widget)
{
    const auto* label = qobject_cast<const QLabel*>(&widget);
    return (label != nullptr && !label->pixmap().isNull()) ||
           qobject_cast<const QAbstractButton*>(&widget) != nullptr ||
           (IsWhole(widget) && qobject_cast<const QTabBar*>(&widget) == nullptr) ||
           qobject_cast<const QProgressBar*>(&widget) != nullptr ||
           dynamic_cast<const PictureView*>(&widget) != nullptr ||
           dynamic_cast<const ZoomView*>(&widget) != nullptr;
}

std::string SpokenName(QWidget& widget)
{
    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(&widget);
    return spoken == nullptr ? std::string{} : FromQt(spoken->text(QAccessible::Name).trimmed());
}

void ExpectNames(const QWidget& window, const std::string& page)
{
    std::map<std::string, std::string> names;
    for (QWidget* widget : VisibleIn(window)) {
        if (!NeedsName(*widget))
            continue;
        const std::string name = SpokenName(*widget);
        EXPECT_GE(name.size(), 2U) << page << ": nothing is said of " << NameOf(*widget);
        if (name.empty())
            continue;
        const auto [first, isNew] = names.emplace(name, NameOf(*widget));
        EXPECT_TRUE(isNew) << page << ": “" << name << "” is " << first->second << " and "
                           << NameOf(*widget);
    }
}

QRect PlaceOf(const QWidget& widget, const QWidget& window)
{
    return {widget.mapTo(&window, QPoint{}), widget.size()};
}

/// Whether a person who reads from the left and from above comes to `first` after `second`. What
/// stands in columns is read column by column.
bool IsBehind(const QRect& first, const QRect& second)
{
    const bool below = first.top() > second.bottom();
    const bool rightOf = first.left() > second.right();
    const bool sameRow = first.top() <= second.bottom() && second.top() <= first.bottom();
    return (sameRow && rightOf) || (below && first.right() > second.left());
}

std::vector<QWidget*> TabChain(QWidget& window)
{
    std::vector<QWidget*> chain;
    for (QWidget* at = window.nextInFocusChain(); at != &window; at = at->nextInFocusChain())
        if (at->isVisible() && at->focusProxy() == nullptr &&
            (at->focusPolicy() & Qt::TabFocus) != 0 && at->window() == &window)
            chain.push_back(at);
    return chain;
}

void ExpectReadingOrder(QWidget& window, const std::string& page)
{
    std::vector<QWidget*> chain = TabChain(window);
    // It comes round; where it begins is what a person sees first.
    const auto first =
        std::min_element(chain.begin(), chain.end(), [&](const QWidget* one, const QWidget* other) {
            const QPoint here = PlaceOf(*one, window).topLeft();
            const QPoint there = PlaceOf(*other, window).topLeft();
            return std::pair{here.y(), here.x()} < std::pair{there.y(), there.x()};
        });
    std::rotate(chain.begin(), first, chain.end());
    for (std::size_t i = 1; i < chain.size(); ++i)
        EXPECT_FALSE(IsBehind(PlaceOf(*chain[i - 1], window), PlaceOf(*chain[i], window)))
            << page << ": the Tab key comes to " << NameOf(*chain[i - 1]) << " before "
            << NameOf(*chain[i]);
}

/// A list without rows, and a text that is only read, show no mark of their own; whoever walks
/// through the window knows them by the cursor or the row.
bool MayHideFocus(const QWidget& widget)
{
    const auto* list = qobject_cast<const QAbstractItemView*>(&widget);
    return list != nullptr && (list->model() == nullptr || list->model()->rowCount() == 0);
}

void ExpectFocusIsSeen(QWidget& window, const std::string& page)
{
    const std::vector<QWidget*> chain = TabChain(window);
    window.activateWindow();
    window.setAttribute(Qt::WA_KeyboardFocusChange); // as after the first Tab
    for (std::size_t i = 0; i < chain.size() && chain.size() > 1; ++i) {
        QWidget* other = chain[(i + 1) % chain.size()];
        if (!chain[i]->isEnabled() || MayHideFocus(*chain[i]))
            continue;
        chain[i]->setFocus(Qt::TabFocusReason);
        const QImage with = chain[i]->grab().toImage();
        other->setFocus(Qt::TabFocusReason);
        const bool moved = !chain[i]->hasFocus();
        EXPECT_TRUE(!moved || with != chain[i]->grab().toImage())
            << page << ": the focus is not seen on " << NameOf(*chain[i]);
    }
}

/// Of the screen, without what a window manager puts around a window.
constexpr QSize roomOnSmallScreen{784, 552};
constexpr QSize roomAtTwice{496, 252}; ///< 1024 by 600 at twice the size

/// The controls that reach beyond the right edge of what there is room for.
std::string TooWide(const QWidget& window, const QWidget& within, int room)
{
    std::string names;
    for (const QWidget* widget : within.findChildren<QWidget*>())
        if (widget->isVisible() && widget->findChildren<QWidget*>().isEmpty() &&
            PlaceOf(*widget, window).right() >= room)
            names += " " + NameOf(*widget) + " (" + std::to_string(widget->width()) + ")";
    return names;
}

void ExpectRoom(QWidget& window, const std::string& page, QSize room)
{
    window.resize(room);
    QCoreApplication::processEvents();
    EXPECT_LE(window.width(), room.width()) << page << TooWide(window, window, room.width());
    EXPECT_LE(window.height(), room.height()) << page;
    for (const auto* area : window.findChildren<QScrollArea*>()) {
        const auto* picture = qobject_cast<const QLabel*>(area->widget());
        if (!area->isVisible() || (picture != nullptr && !picture->pixmap().isNull()))
            continue; // a picture is shown in its own size
        EXPECT_EQ(area->horizontalScrollBar()->maximum(), 0)
            << page << " scrolls sideways:" << TooWide(window, *area, room.width());
    }
    // What Enter and Escape mean is a button that can be pressed.
    for (QWidget* widget : VisibleIn(window))
        if (const auto* button = qobject_cast<QPushButton*>(widget);
            button != nullptr && button->isDefault()) {
            const QWidget* parent = button->parentWidget();
            EXPECT_TRUE(parent->rect().contains(button->geometry()))
                << page << ": cut off: " << NameOf(*button);
        }
}

/// What a list shows in letters of one width is as large as all else.
void ExpectLargeLists(const QWidget& window, const std::string& page)
{
    for (const QWidget* widget : VisibleIn(window)) {
        const auto* list = qobject_cast<const QAbstractItemView*>(widget);
        EXPECT_TRUE(list == nullptr ||
                    QFontInfo{list->font()}.pixelSize() >= QFontInfo{window.font()}.pixelSize() - 1)
            << page << ": small letters in " << NameOf(*widget);
    }
}

} // namespace

class EveryWindowIn : public InEachLanguage
{
};
INSTANTIATE_TEST_SUITE_P(Languages, EveryWindowIn, eachLanguage, NameOfLanguage);

TEST_P(EveryWindowIn, SaysWhatItsControlsAreAndIsReadInOrder)
{
    EveryWindow windows;
    windows.Each([](QWidget& window, const std::string& page) {
        ExpectNames(window, page);
        if (window.objectName() != QLatin1String("Principale")) // its panes are read one by one
            ExpectReadingOrder(window, page);
    });
}

TEST(EveryWindow, ShowsWhereTheKeyboardIs)
{
    EveryWindow windows;
    windows.Each([](QWidget& window, const std::string& page) { ExpectFocusIsSeen(window, page); });
}

TEST(EveryWindow, IsLeftByEscape)
{
    // These are left by their buttons alone, or when their work is done; a level that is added has
    // a test of its own.
    const std::set<std::string> others{"Principale",      "Dialog_NewLevel", "Dialog_Compila",
                                       "Dialog_Progress", "Dialog_Wait",     "Dialog_ConvertiMp3",
                                       "Dialog_Download"};
    EveryWindow windows;
    windows.Each([&](QWidget& window, const std::string& page) {
        if (others.contains(NameOf(window)))
            return;
        QWidget* const focus = window.focusWidget();
        QTest::keyClick(focus != nullptr ? focus : &window, Qt::Key_Escape);
        EXPECT_FALSE(window.isVisible()) << page;
        window.show();
    });
}

TEST_P(EveryWindowIn, FitsOnASmallScreenAndWithLargeLetters)
{
    for (const double letters : {1.0, 1.5}) {
        const Appearance large{QApplication::palette(), letters};
        EveryWindow windows;
        windows.Each([&](QWidget& window, const std::string& page) {
            const QSize before = window.size();
            ExpectLargeLists(window, page);
            ExpectRoom(window, page, roomOnSmallScreen);
            if (letters == 1.0)
                ExpectRoom(window, page, roomAtTwice);
            window.resize(before);
        });
    }
}

TEST(EveryWindow, HasLettersOfASizeInPixels)
{
    static std::string complaints;
    const auto before =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& words) {
            if (words.startsWith(QLatin1String("QFont")))
                complaints += FromQt(words) + "; ";
        });
    const Appearance inPixels{QApplication::palette()};
    ASSERT_LT(QApplication::font().pointSizeF(), 0);
    const std::set<std::string> large{"Pul_Play", "Label_LevelName"};
    std::set<std::string> seen;
    EveryWindow windows;
    windows.Each([&](QWidget& window, const std::string& page) {
        EXPECT_EQ(complaints, "") << page;
        complaints.clear();
        for (const QWidget* widget : VisibleIn(window)) {
            if (!large.contains(NameOf(*widget)))
                continue;
            seen.insert(NameOf(*widget));
            EXPECT_GT(QFontInfo{widget->font()}.pixelSize(),
                      QFontInfo{QApplication::font()}.pixelSize())
                << page << ": " << NameOf(*widget);
        }
    });
    qInstallMessageHandler(before);
    EXPECT_EQ(seen, large);
}

TEST(EveryWindow, HasItsPictureTakenForAPersonToLookAt)
{
    const QString folder = qEnvironmentVariable("KESTROVA_PICTURES");
    if (folder.isEmpty())
        GTEST_SKIP() << "KESTROVA_PICTURES names no folder";
    const Speaking speaking{FromQt(qEnvironmentVariable("KESTROVA_LANGUAGE", "en"))};
    struct Kind {
        const char* name;
        QPalette palette;
        double letters;
    };
    for (const Kind& kind : {Kind{"light", LightPalette(), 1}, Kind{"dark", DarkPalette(), 1},
                             Kind{"contrast", ContrastPalette(), 1.5}}) {
        const Appearance appearance{kind.palette, kind.letters};
        EveryWindow windows;
        windows.Each([&](QWidget& window, const std::string& page) {
            const QString file = folder + QLatin1Char('/') + ToQt(page) + QLatin1Char('-') +
                                 QLatin1String(kind.name) + QLatin1String(".png");
            EXPECT_TRUE(window.grab().save(file)) << FromQt(file);
        });
    }
}

} // namespace kestrova::testing
