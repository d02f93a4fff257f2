// SPDX-License-Identifier: MIT
#ifndef GALLERY_RENAMEPAGE_H
#define GALLERY_RENAMEPAGE_H

#include "taviapp/taviregistry.h"

#include <QVector>
#include <QWidget>

#include <string>

class QLabel;
class TaviRenameDialog;

/// A page with a view of names of patches and a button for each of its columns that opens the view's rename dialog.
class RenamePage : public QWidget
{
public:
    RenamePage();

    QSize sizeHint() const override { return {520, 340}; }

protected:
    /// A name to rename, and what is remarked of it.
    struct Patch {
        QString name;
        QString remark;
    };
    /// The headings of a view's columns.
    static QStringList headings();
    static QVector<Patch> patches();

    /// Puts the view on the page.
    void showView(QWidget *view);
    /// Tells how many were renamed.
    void tell(int count);
    /// For the picture: puts that of a dialog over the view, which has found something.
    void pose(TaviRenameDialog *dialog);

    TaviRegistry registry_;
    std::string section_ = "gallery";

private:
    virtual void renameItems(int column) = 0;

    QLabel *told_ = nullptr;
};

#endif
