// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"

#include <QDir>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

/// The gallery, run as a program.
class TestGallery : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void everyPageHasItsPicture()
    {
        const QTemporaryDir folder;
        QProcess gallery;
        gallery.start(GALLERY_PROGRAM, {"--screenshots", folder.path() + "/pics"});
        QVERIFY(gallery.waitForFinished(30000));
        QCOMPARE(gallery.exitCode(), 0);
        QCOMPARE(gallery.readAllStandardError(), QByteArray());
        const QDir pictures(folder.path() + "/pics");
        QCOMPARE(pictures.entryList(QDir::Files, QDir::Name),
                 QStringList({"colorscheme.png", "frequencyedit.png", "spectrobuddy.png", "taviconfigorder.png",
                              "taviconfigorderlistview.png", "tavigfx.png", "tavigridview.png", "taviheaderview.png",
                              "tavilistview.png", "tavilistviewrenamedlg.png", "tavitreeview.png",
                              "tavitreeviewrenamedlg.png", "taviwidgetutil.png"}));
        for (const QString &name : pictures.entryList(QDir::Files)) {
            const QImage picture(pictures.filePath(name));
            QVERIFY2(picture.width() >= 300 && picture.height() >= 100, qPrintable(name));
            // The documented picture is the one of today's widget: no other size.
            const QImage documented(QStringLiteral(DOCS_PICS "/") + name);
            QVERIFY2(documented.size() == picture.size(), qPrintable(name));
        }
    }

    void aFolderThatCannotBeMadeIsTold()
    {
        QProcess gallery;
        gallery.start(GALLERY_PROGRAM, {"--screenshots", "/dev/null/pics"});
        QVERIFY(gallery.waitForFinished(30000));
        QCOMPARE(gallery.exitCode(), 1);
        QVERIFY(gallery.readAllStandardError().contains("gallery: /dev/null/pics: cannot be made"));
    }
};

TAVI_TEST_MAIN(TestGallery)
#include "tst_gallery.moc"
