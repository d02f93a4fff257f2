// SPDX-License-Identifier: MIT
#ifndef GALLERY_GALLERYWINDOW_H
#define GALLERY_GALLERYWINDOW_H

#include <QWidget>

/// The list of pages, and the page that is chosen.
class GalleryWindow : public QWidget
{
    Q_OBJECT

public:
    GalleryWindow();
};

/// Saves a picture of each page to @a folder, which is made if it isn't there. Returns an error, empty if all went
/// well.
QString saveGalleryPictures(const QString &folder);

#endif
