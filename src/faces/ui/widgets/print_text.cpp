#include "ui/widgets/print_text.h"

#include "ui/widgets/fit_to_screen.h"
#include "ui/widgets/qt_text.h"
#include "words/wads_window.h"

#include <QAbstractTextDocumentLayout>
#include <QFontDatabase>
#include <QPainter>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QTextDocument>
#include <algorithm>

namespace kestrova
{

namespace
{

constexpr QSize previewSize{760, 620};
constexpr int printedPoints = 9;

/// A line above the pages and one below them.
void PaintFrame(QPainter& painter, const QRectF& page, const QString& title, int number, int count)
{
    const qreal line = painter.fontMetrics().lineSpacing();
    painter.drawText(
        QRectF{page.left(), page.top(), page.width(), line}, Qt::AlignLeft,
        painter.fontMetrics().elidedText(title, Qt::ElideRight, static_cast<int>(page.width())));
    painter.drawText(QRectF{page.left(), page.bottom() - line, page.width(), line}, Qt::AlignRight,
                     Words(Msg::PrintPage, {std::to_string(number), std::to_string(count)}));
}

} // namespace

int PrintText(QPrinter& printer, const QString& title, const QString& text)
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSize(printedPoints);
    QPainter painter;
    if (!painter.begin(&printer))
        return 0;
    painter.setFont(font);
    const QRectF page{QPointF{}, printer.pageRect(QPrinter::DevicePixel).size()};
    const qreal margin = 2.0 * painter.fontMetrics().lineSpacing();
    QTextDocument document;
    document.setDocumentMargin(0);
    document.documentLayout()->setPaintDevice(&printer);
    document.setDefaultFont(font);
    document.setPlainText(text);
    const QSizeF body{page.width(), page.height() - 2 * margin};
    document.setPageSize(body);
    const int count = document.pageCount();
    const int last = printer.toPage() > 0 ? std::min(printer.toPage(), count) : count;
    const int first = std::max(printer.fromPage(), 1);
    for (int number = first; number <= last; ++number) {
        if (number > first)
            printer.newPage();
        PaintFrame(painter, page, title, number, count);
        const qreal top = body.height() * (number - 1);
        painter.save();
        painter.translate(0, margin - top);
        QAbstractTextDocumentLayout::PaintContext context;
        context.clip = QRectF{0, top, body.width(), body.height()};
        context.palette.setColor(QPalette::Text, Qt::black); // on paper, whatever the windows have
        painter.setClipRect(context.clip);
        document.documentLayout()->draw(&painter, context);
        painter.restore();
    }
    return count;
}

void PreviewAndPrint(const QString& title, const QString& text, QWidget* parent)
{
    QPrinter printer{QPrinter::HighResolution};
    QPrintPreviewDialog dialog{&printer, parent};
    dialog.setObjectName(QStringLiteral("Dialog_PrintPreview"));
    dialog.setWindowTitle(title);
    QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, &dialog,
                     [&](QPrinter* pages) { (void)PrintText(*pages, title, text); });
    ResizeToFit(dialog, previewSize);
    dialog.exec();
}

} // namespace kestrova
