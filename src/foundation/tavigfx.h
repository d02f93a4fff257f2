// SPDX-License-Identifier: MIT
#ifndef FOUNDATION_TAVIGFX_H
#define FOUNDATION_TAVIGFX_H

#include "foundation/taviwidgets_export.h"

#include <QPolygon>
#include <QString>

class QColor;
class QFont;
class QFontMetrics;
class QPixmap;
class QPoint;
class QRect;
class QTextDocument;
class QWidget;

/// Helpers for drawing: colours, shapes, texts that fit, printing, and the fonts of whole widget trees.
///
/// @image html tavigfx.png
///
/// @code
/// TaviGfx::applyTint(tint, 30);
/// painter.fillRect(cell, tint);
/// painter.setPen(TaviGfx::getSensibleForegroundColour(tint));
/// painter.drawText(cell, TaviGfx::truncateString(name, painter.fontMetrics(), cell.width(), 1));
/// @endcode
///
/// **Failure.** Null widgets and cancelled dialogs end an operation with nothing done.
///
/// **Threads.** The user interface thread alone.
class TAVIWIDGETS_EXPORT TaviGfx
{
public:
    TaviGfx() = delete;

    /// Where a point is on a rectangle with eight size handles; see onHandle().
    enum SIZE_HANDLE {
        TOP_LEFT_HANDLE = 0,     ///< On the top left corner.
        TOP_RIGHT_HANDLE = 1,    ///< On the top right corner.
        BOTTOM_LEFT_HANDLE = 2,  ///< On the bottom left corner.
        BOTTOM_RIGHT_HANDLE = 3, ///< On the bottom right corner.
        TOP_HANDLE = 4,          ///< On the top edge.
        BOTTOM_HANDLE = 5,       ///< On the bottom edge.
        LEFT_HANDLE = 6,         ///< On the left edge.
        RIGHT_HANDLE = 7,        ///< On the right edge.
        NO_HANDLE = 8,           ///< Inside, on no handle.
        OUTSIDE = 9              ///< Outside.
    };

    /// What truncateString() puts in place of what it takes away: three full stops.
    static const QString ELLIPSIS;
    /// The smallest font that adjustFontSize() and applyFontSize() set: in points there, in pixels here.
    static constexpr int MIN_FONT_SIZE = 6;
    /// Height of a plain push button in pixels, as applyFont() measured it last; 0 before.
    static int normal_button_height;
    /// Point size of the application font, as applyFont() found it last; 0 before.
    static int default_font_point_size;

    /// @name Colours
    /// @{

    /// Black or white, whichever can be read on @a background. The weights of red, green and blue are 0.299, 0.587
    /// and 0.114; from 150 on, of 255, a background is light. Alpha counts for nothing, and an invalid colour as
    /// black.
    static QColor getSensibleForegroundColour(const QColor &background);

    /// Mixes @a colour with white and makes it opaque: 100 percent keeps it, 0 percent gives white. Percentages out
    /// of range count as the nearest end, and what is not a number as 0. An invalid colour counts as black.
    static void applyTint(QColor &colour, double percent);
    /// @}

    /// @name Shapes
    /// @{

    /// The outline of @a bubble with a tail, 13 pixels wide along both sides of a corner, whose tip is a corner of
    /// @a target: of all pairs of corners the one with the smallest Manhattan distance, the first of equals in the
    /// order top left, bottom left, top right, bottom right. If the rectangles intersect, as QRect has it, the bubble
    /// alone, as four points. Corners are those of QRect: right and bottom ones lie inside.
    static QPolygon getSpeechBubble(const QRect &bubble, const QRect &target);

    /// Which of eight size handles of @a rect is @a point on?
    ///
    /// A handle reaches less than @a size pixels from an edge, to both sides. Corners go before edges, top before
    /// bottom, and left before right, so that in a small rectangle the upper left handles win. A point farther out
    /// than
    /// @a size is #OUTSIDE.
    static SIZE_HANDLE onHandle(QRect rect, QPoint point, int size);
    /// @}

    /// @name Texts
    /// @{

    /// @a text, shortened until it is no wider than @a width pixels.
    ///
    /// @param text what is to fit; surrogate pairs are not looked after
    /// @param metrics of the font that it is drawn with; the advance of the text counts
    /// @param width below 11 nothing fits
    /// @param mode where characters give way to the #ELLIPSIS: 0 at the start, 1 in the middle, others at the end
    /// @return the text itself if it fits, a null string if nothing would be left of it
    ///
    /// Complexity: the text is measured once for each character that goes.
    static QString truncateString(const QString &text, const QFontMetrics &metrics, int width, int mode);
    /// @}

    /// @name Printing
    /// A dialog lets the user choose the printer, or the file. Its parent is @a parent or, if that is null, the
    /// active window; without either nothing happens. It may be deleted while a print dialog is up, and then
    /// nothing is printed; a file dialog it must outlive.
    /// @{

    /// Prints @a document, page by page.
    static void printRichText(const QTextDocument &document, QWidget *parent, bool landscape);

    /// Prints what @a widget shows, children included, as printPixmap() does; the widget is the parent.
    static void printWidget(QWidget *widget, bool landscape);

    /// Prints @a pixmap in the middle of a page, as large as it is on the parent's screen, or smaller if the page is.
    /// A null pixmap is not printed.
    static void printPixmap(const QPixmap &pixmap, QWidget *parent, bool landscape);

    /// Prints @a document to a PDF file on paper as wide as the document's lines: its ideal width and both margins.
    ///
    /// @param document what to print; its title is that of the file
    /// @param file_name what the dialog proposes; afterwards what the user chose, empty if none
    /// @param parent of the dialog
    /// @param landscape turns the paper
    ///
    /// A file that cannot be written stays away; Qt logs why.
    static void printRichTextToFile(const QTextDocument &document, QString &file_name, QWidget *parent,
                                    bool landscape);
    /// @}

    /// @name Fonts of widget trees
    /// A font that is set in pixels counts with the points that QFontInfo finds for it.
    /// @{

    /// Sets @a font on a widget tree.
    ///
    /// With @a top, @a widget takes it whatever it is, and #default_font_point_size and #normal_button_height are
    /// measured anew. Otherwise, and for all widgets below, only push buttons, labels, combo boxes, line edits and
    /// scroll areas, Q3ScrollView among them, take it by themselves. A push button gets a fixed height: its own where
    /// the font is larger than the application's, else that of a plain one.
    static void applyFont(QWidget *widget, const QFont &font, bool top);

    /// Makes the font of a widget tree larger by @a delta points, unless it would fall below #MIN_FONT_SIZE points.
    static void adjustFontSize(QWidget *widget, int delta);

    /// Sets the font of a widget tree to @a points, unless that is less than #MIN_FONT_SIZE pixels. Nothing happens
    /// at 0 and below.
    static void applyFontSize(QWidget *widget, int points);

    /// Goes back to the application font, if @a widget's has another point size.
    static void resetFontSize(QWidget *widget);

    /// The point size of @a widget less that of the application font; 0 for null.
    static int fontDeltaPoints(QWidget *widget);
    /// @}
};

#endif
