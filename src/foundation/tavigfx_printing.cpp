// SPDX-License-Identifier: MIT
//
// Printing after a dialog.
#include "foundation/tavigfx.h"

#include <QApplication>
#include <QCoreApplication>
#include <QFileDialog>
#include <QMargins>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPixmap>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>
#include <QTextDocument>
#include <QWidget>

namespace {

constexpr qreal points_per_inch = 72;

QWidget *parentOrActiveWindow(QWidget *parent)
{
    return parent ? parent : QApplication::activeWindow();
}

QPageLayout::Orientation orientation(bool landscape)
{
    return landscape ? QPageLayout::Landscape : QPageLayout::Portrait;
}

bool isAccepted(QPrinter &printer, QWidget *parent)
{
    // Not on the stack: who deletes the parent deletes the dialog.
    const QPointer<QPrintDialog> dialog = new QPrintDialog(&printer, parent);
    const bool accepted = dialog->exec() == QDialog::Accepted && dialog;
    delete dialog;
    return accepted;
}

/// How many of the printer's pixels one of a widget's stands for.
struct Ratio {
    Ratio(const QPrinter &printer, const QWidget &widget)
        : x(qreal(printer.logicalDpiX()) / widget.logicalDpiX()),
          y(qreal(printer.logicalDpiY()) / widget.logicalDpiY())
    {}
    qreal x;
    qreal y;
};

/// Where a picture stands on the printer's page, in its pixels.
QRect placeOnPage(const QPrinter &printer, const QSizeF &picture)
{
    const QRect paper = printer.pageLayout().fullRectPixels(printer.resolution());
    const QRect page = printer.pageLayout().paintRectPixels(printer.resolution());
    const int margin_x = (paper.width() - page.width()) / 2;
    const int margin_y = (paper.height() - page.height()) / 2;
    // Off goes one margin, not both.
    const int page_width = printer.width() - margin_x;
    const int page_height = printer.height() - margin_y;
    qreal width = picture.width();
    qreal height = picture.height();
    if (width > page_width) {
        height *= page_width / width;
        width = page_width;
    }
    if (height > page_height) {
        width *= page_height / height;
        height = page_height;
    }
    return {margin_x + static_cast<int>((page_width - width) / 2),
            margin_y + static_cast<int>((page_height - height) / 2), static_cast<int>(width),
            static_cast<int>(height)};
}

/// The paper, before it is turned, that takes lines as wide as the document's.
QSizeF paperFor(const QTextDocument &document, const QPrinter &printer, const Ratio &ratio, bool landscape)
{
    const int resolution = printer.resolution();
    QSizeF paper = printer.pageLayout().pageSize().sizePixels(resolution);
    const QMargins margins = printer.pageLayout().marginsPixels(resolution);
    if (landscape)
        paper.setHeight((margins.top() + margins.bottom() + document.idealWidth()) * ratio.y);
    else
        paper.setWidth((margins.left() + margins.right() + document.idealWidth()) * ratio.x);
    return paper;
}

void setPaper(QPrinter &printer, const QSizeF &pixels)
{
    const QSizeF points = pixels * (points_per_inch / printer.resolution());
    // Exact: a paper that is nearly of a standard size would take that.
    printer.setPageSize(QPageSize(points, QPageSize::Point, QString(), QPageSize::ExactMatch));
}

} // namespace

void TaviGfx::printRichText(const QTextDocument &document, QWidget *parent, bool landscape)
{
    QWidget *const window = parentOrActiveWindow(parent);
    if (!window)
        return;
    QPrinter printer(QPrinter::PrinterResolution);
    printer.setPageOrientation(orientation(landscape));
    if (!isAccepted(printer, window))
        return;
    printer.setFullPage(false);
    document.print(&printer);
}

void TaviGfx::printWidget(QWidget *widget, bool landscape)
{
    if (widget)
        printPixmap(widget->grab(), widget, landscape);
}

void TaviGfx::printPixmap(const QPixmap &pixmap, QWidget *parent, bool landscape)
{
    QWidget *const window = parentOrActiveWindow(parent);
    if (!window || pixmap.isNull())
        return;
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageOrientation(orientation(landscape));
    printer.setFullPage(false);
    const QPointer<QWidget> still_there(window);
    if (!isAccepted(printer, window) || !still_there)
        return;
    QPainter painter(&printer);
    if (!painter.isActive())
        return;
    const Ratio ratio(printer, *window);
    const QSizeF on_screen = QSizeF(pixmap.size()) / pixmap.devicePixelRatio();
    painter.setWindow(pixmap.rect());
    painter.setViewport(placeOnPage(printer, {on_screen.width() * ratio.x, on_screen.height() * ratio.y}));
    painter.drawPixmap(pixmap.rect(), pixmap);
}

void TaviGfx::printRichTextToFile(const QTextDocument &document, QString &file_name, QWidget *parent, bool landscape)
{
    const QPointer<QWidget> window(parentOrActiveWindow(parent));
    if (!window)
        return;
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageOrientation(orientation(landscape));
    printer.setOutputFormat(QPrinter::PdfFormat);
    file_name = QFileDialog::getSaveFileName(window, QCoreApplication::translate("TaviGfx", "Print to file"),
                                             file_name, QCoreApplication::translate("TaviGfx", "PDF (*.pdf)"));
    if (file_name.isEmpty() || !window)
        return;
    printer.setCreator(QCoreApplication::translate("TaviGfx", "Tavi Works"));
    printer.setDocName(document.metaInformation(QTextDocument::DocumentTitle));
    printer.setOutputFileName(file_name);
    printer.setFullPage(false);
    setPaper(printer, paperFor(document, printer, Ratio(printer, *window), landscape));
    document.print(&printer);
}
