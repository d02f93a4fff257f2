// SPDX-License-Identifier: MIT
#ifndef GALLERY_PAGE_H
#define GALLERY_PAGE_H

#include <QString>
#include <QVector>

class QWidget;

/// A page of the gallery.
struct Page {
    const char *name;        ///< File name of its picture, without ending: the class in lower case.
    const char *title;       ///< In the list of pages.
    const char *description; ///< One sentence above the widget.
    /// Makes the page's content, which owns all that belongs to it. @a for_picture asks for a state worth a picture.
    QWidget *(*make)(bool for_picture);
};

/// All pages, in the order of the list.
QVector<Page> galleryPages();

/// The pages, one function each in page_<name>.cpp.
QWidget *makeColorSchemePage(bool for_picture);
QWidget *makeFrequencyEditPage(bool for_picture);
QWidget *makeSpectroBuddyPage(bool for_picture);
QWidget *makeTaviWidgetUtilPage(bool for_picture);
QWidget *makeTaviConfigOrderPage(bool for_picture);
QWidget *makeTaviConfigOrderListViewPage(bool for_picture);
QWidget *makeTaviGfxPage(bool for_picture);
QWidget *makeTaviGridViewPage(bool for_picture);
QWidget *makeTaviHeaderViewPage(bool for_picture);
QWidget *makeTaviListViewPage(bool for_picture);
QWidget *makeTaviListViewRenamePage(bool for_picture);
QWidget *makeTaviTreeViewPage(bool for_picture);
QWidget *makeTaviTreeViewRenamePage(bool for_picture);

#endif
