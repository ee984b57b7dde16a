#include "ui/widgets/fit_to_screen.h"

#include <QCheckBox>
#include <QDialog>
#include <QFontMetrics>
#include <QGridLayout>
#include <QLabel>
#include <QLayout>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QScreen>
#include <QScrollBar>
#include <QStyle>

#include <algorithm>

namespace kestrova
{

namespace
{

/// What a window manager puts around a window.
constexpr QSize frameRoom{16, 48};
/// A box wraps its words at this width where the screen lets it.
constexpr int boxWidth = 500;
/// Icon, margins, and buttons of a box, beside and below its words.
constexpr QSize boxRoom{120, 140};
/// What stands beside a scrolled page in its window.
constexpr int pageMargins = 40;

QSize RoomFor(const QWidget& window)
{
    return window.screen()->availableGeometry().size() - frameRoom;
}

/// The width at which nothing of the scrolled pages is beyond their right edge.
int WidthOfPages(const QWidget& window)
{
    int width = 0;
    for (const auto* page : window.findChildren<QScrollArea*>()) {
        if (QLayout* layout = page->widget()->layout())
            layout->activate(); // its parts know the captions only then
        width = std::max(width, page->widget()->minimumSizeHint().width() +
                                    page->verticalScrollBar()->sizeHint().width() + pageMargins);
    }
    return width;
}

/// On the right of what stands on a page, in a frame or two.
constexpr int marginOfPage = 48;
/// What a box said before its words were put on several lines.
constexpr const char* wholeWords = "wholeWords";

/// The words on as many lines as that width takes.
QString OnLines(const QString& words, const QFontMetrics& metrics, int width)
{
    if (metrics.size(Qt::TextShowMnemonic, words).width() <= width)
        return words;
    QString lines;
    QString line;
    for (const QString& word : words.split(QLatin1Char(' '))) {
        const QString longer = line.isEmpty() ? word : line + QLatin1Char(' ') + word;
        if (!line.isEmpty() && metrics.size(Qt::TextShowMnemonic, longer).width() > width) {
            lines += line + QLatin1Char('\n');
            line = word;
        } else {
            line = longer;
        }
    }
    return lines + line;
}

/// True when the words are broken in another way than before.
bool BreakWords(QAbstractButton& box, const QWidget& page, int room)
{
    QString whole = box.property(wholeWords).toString();
    if (whole.isEmpty() || !box.text().contains(QLatin1Char('\n')))
        whole = box.text();
    const QFontMetrics metrics = box.fontMetrics();
    const QRect place(box.mapTo(&page, QPoint{}), box.size());
    const int left = QStyle::visualRect(page.layoutDirection(), page.rect(), place).left();
    const int mark =
        box.sizeHint().width() - metrics.size(Qt::TextShowMnemonic, box.text()).width();
    // On its right is as much as on its left, unless that is another column; turned round where
    // one reads from the right.
    const QString lines =
        OnLines(whole, metrics, room - left - std::min(left, marginOfPage) - mark);
    if (lines == box.text())
        return false;
    box.setProperty(wholeWords, whole);
    box.setText(lines);
    return true;
}

/// From the inside to the outside.
void LayOutInside(QWidget& page)
{
    for (QObject* child : page.children())
        if (auto* widget = qobject_cast<QWidget*>(child))
            LayOutInside(*widget);
    if (page.layout() != nullptr)
        page.layout()->activate();
}

/// The size of the words when they are wrapped at a width.
QSize WrappedSize(const QString& words, const QFont& font, int width)
{
    QLabel probe;
    probe.setFont(font);
    probe.setTextFormat(Qt::PlainText);
    probe.setWordWrap(true);
    probe.setText(words);
    return {std::max(probe.minimumSizeHint().width(), width), probe.heightForWidth(width)};
}

/// What the scrolled pages need beyond the height that they have in the window.
int HeightMissing(QWidget& window)
{
    const auto pages = window.findChildren<QScrollArea*>();
    const auto shown = std::find_if(pages.begin(), pages.end(), [&](const QScrollArea* page) {
        return page->isVisibleTo(&window);
    });
    if (shown == pages.end())
        return 0;
    window.grab({0, 0, 1, 1}); // lays out a window that nobody has seen yet
    const QSize room = (*shown)->viewport()->size();
    int missing = 0;
    // Of several one is seen at a time. What wraps has its usual height there, not its least.
    for (const QScrollArea* page : pages)
        if (const QLayout* layout = page->widget()->layout())
            missing = std::max(missing, (layout->hasHeightForWidth()
                                             ? layout->totalHeightForWidth(room.width())
                                             : layout->totalMinimumSize().height()) -
                                            room.height());
    return missing;
}

} // namespace

void ResizeToFit(QWidget& window, QSize wanted)
{
    const QSize room = RoomFor(window);
    window.resize(wanted.expandedTo({WidthOfPages(window), 0}).boundedTo(room));
    if (qobject_cast<QDialog*>(&window) != nullptr)
        window.resize(window.size().grownBy({0, 0, 0, HeightMissing(window)}).boundedTo(room));
}

ScrollPage::ScrollPage(QWidget* content)
{
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus); // the controls in it take the keys
    setWidget(content);
    // The window's own colour, or that of the page of a tab, shows through.
    viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
}

QSize ScrollPage::sizeHint() const
{
    return widget()->sizeHint();
}

void ScrollPage::resizeEvent(QResizeEvent* event)
{
    QScrollArea::resizeEvent(event);
    if (QLayout* layout = widget()->layout())
        layout->activate(); // so that each box stands where it will be
    bool isOther = false;
    for (auto* box : widget()->findChildren<QAbstractButton*>())
        if (qobject_cast<QCheckBox*>(box) != nullptr || qobject_cast<QRadioButton*>(box) != nullptr)
            isOther = BreakWords(*box, *widget(), viewport()->width()) || isOther;
    if (!isOther)
        return;
    // The page has its new height at once, so that nothing is painted into the old one.
    LayOutInside(*widget());
    QScrollArea::resizeEvent(event);
}

void KeepOnScreen(QMessageBox& box)
{
    const QSize room = RoomFor(box) - boxRoom;
    const int width = std::min(boxWidth, room.width());
    QString words = box.text();
    if (!box.informativeText().isEmpty())
        words += QStringLiteral("\n\n") + box.informativeText();
    const QSize wrapped = WrappedSize(words, box.font(), width);
    if (wrapped.width() <= room.width() && wrapped.height() <= room.height())
        return;
    box.setInformativeText({});
    box.setText({});
    // Looked for now: a box lays itself out anew when its words change.
    auto* label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
    auto* grid = qobject_cast<QGridLayout*>(box.layout());
    if (label == nullptr || grid == nullptr) {
        box.setText(words);
        return;
    }
    auto* view = new QPlainTextEdit(words, &box);
    view->setObjectName(QStringLiteral("Text_Words"));
    view->setAccessibleName(box.windowTitle());
    view->setReadOnly(true);
    view->setTabChangesFocus(true);
    view->setFixedSize(room.width(), std::min(room.height(), wrapped.height()));
    delete grid->replaceWidget(label, view);
    label->hide();
}

QString WithWordsWithin(const QString& text, const QFontMetrics& metrics, int width)
{
    QString shown;
    qsizetype begin = 0;
    while (begin < text.size()) {
        qsizetype end = begin;
        while (end < text.size() && !text[end].isSpace())
            ++end;
        shown += metrics.elidedText(text.mid(begin, end - begin), Qt::ElideMiddle, width);
        for (; end < text.size() && text[end].isSpace(); ++end)
            shown += text[end];
        begin = end;
    }
    return shown;
}

} // namespace kestrova
