// SPDX-License-Identifier: MIT
#include "foundation/tavigfx.h"
#include "tests/foundation/printdialoganswer.h"
#include "tests/support/filedialoganswer.h"
#include "tests/support/tavitest.h"

#include <QImage>
#include <QLabel>
#include <QMap>
#include <QPixmap>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextCursor>
#include <QTextDocument>
#include <QTranslator>

#include <memory>

namespace {

/// How finely pages are looked at, in dots per inch.
constexpr int look_resolution = 288;
constexpr qreal points_per_inch = 72;

QByteArray outputOf(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    return process.waitForFinished(30000) && process.exitCode() == 0 ? process.readAllStandardOutput() : QByteArray();
}

/// A PDF file as another program sees it.
class PrintedFile
{
public:
    explicit PrintedFile(const QString &path) : path_(path)
    {
        for (const QByteArray &line : outputOf("pdfinfo", {path}).split('\n'))
            facts_.insert(QString::fromUtf8(line.left(line.indexOf(':'))),
                          QString::fromUtf8(line.mid(line.indexOf(':') + 1)).trimmed());
    }
    QString fact(const QString &name) const { return facts_.value(name); }
    int pages() const { return fact("Pages").toInt(); }
    /// In points.
    QSizeF pageSize() const
    {
        const QStringList words = fact("Page size").split(' ');
        return {words.value(0).toDouble(), words.value(2).toDouble()};
    }
    QString text() const { return QString::fromUtf8(outputOf("pdftotext", {path_, "-"})); }
    /// The first page at look_resolution.
    QImage page() const
    {
        return QImage::fromData(
            outputOf("pdftoppm", {"-r", QString::number(look_resolution), "-f", "1", "-l", "1", path_}), "PPM");
    }

private:
    QString path_;
    QMap<QString, QString> facts_;
};

bool isInk(QRgb pixel)
{
    return qGray(pixel) < 200;
}

/// What is printed on a page, in its pixels.
QRect inkOf(const QImage &page)
{
    QRect ink;
    for (int y = 0; y < page.height(); ++y)
        for (int x = 0; x < page.width(); ++x)
            if (isInk(page.pixel(x, y)))
                ink |= QRect(x, y, 1, 1);
    return ink;
}

/// Renderers round colours.
bool isColour(QRgb pixel, const QColor &colour)
{
    return qAbs(qRed(pixel) - colour.red()) <= 2 && qAbs(qGreen(pixel) - colour.green()) <= 2
           && qAbs(qBlue(pixel) - colour.blue()) <= 2;
}

bool isNear(qreal a, qreal b, qreal tolerance)
{
    return qAbs(a - b) <= tolerance;
}

QPixmap redPixmap(int width, int height)
{
    QPixmap pixmap(width, height);
    pixmap.fill(Qt::red);
    return pixmap;
}

/// Paper and margins that a printer begins with.
QPageLayout layoutOfPrinter(bool landscape)
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageOrientation(landscape ? QPageLayout::Landscape : QPageLayout::Portrait);
    return printer.pageLayout();
}

/// A window that is up and active.
class ActiveWindow : public QWidget
{
public:
    ActiveWindow()
    {
        resize(200, 100);
        show();
    }
    /// Also after a dialog, which leaves no window active where the window manager has other ideas.
    bool isThere()
    {
        activateWindow();
        return QTest::qWaitForWindowActive(this);
    }
};

/// Three pages and a title. Printing adds the numbers of pages.
void fill(QTextDocument &document)
{
    document.setMetaInformation(QTextDocument::DocumentTitle, QStringLiteral("Proof of the day"));
    QTextCursor cursor(&document);
    cursor.insertText(QStringLiteral("alpha"));
    QTextBlockFormat format;
    format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
    for (const char *const text : {"beta", "gamma"}) {
        cursor.insertBlock(format);
        cursor.insertText(QString::fromLatin1(text));
    }
}

/// Puts the context in place of each text.
class ContextTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *text, const char *, int) const override
    {
        return qstrcmp(context, "TaviGfx") == 0 ? QStringLiteral("translated ") + QString::fromLatin1(text)
                                                : QString();
    }
};

} // namespace

/// Printing through the dialogs, and what is in the file then.
class TestTaviGfxPrinting : public TaviTest
{
    Q_OBJECT

private:
    QTemporaryDir folder_;
    QString pathOf(const QString &name) const { return folder_.filePath(name); }

private Q_SLOTS:
    void initTestCase()
    {
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        QVERIFY(folder_.isValid());
    }

    void init()
    {
        TaviTest::init();
        // Every test has a fresh folder: an existing file would be asked about.
        for (const QString &name : QDir(folder_.path()).entryList(QDir::Files))
            QFile::remove(pathOf(name));
    }

    void withoutAWindowNothingIsPrinted()
    {
        QVERIFY(!QApplication::activeWindow());
        PrintDialogAnswer answer(pathOf("out.pdf"));
        QTextDocument document;
        fill(document);
        QString name = QStringLiteral("kept");
        TaviGfx::printRichText(document, nullptr, false);
        TaviGfx::printPixmap(redPixmap(10, 10), nullptr, false);
        TaviGfx::printWidget(nullptr, false);
        TaviGfx::printRichTextToFile(document, name, nullptr, false);
        QCOMPARE(answer.answered, 0);
        QCOMPARE(answer.problem, QString());
        QCOMPARE(name, QStringLiteral("kept"));
    }

    void theActiveWindowIsTheParent()
    {
        ActiveWindow window;
        QVERIFY(window.isThere());
        QTextDocument document;
        fill(document);
        {
            PrintDialogAnswer answer({});
            TaviGfx::printRichText(document, nullptr, false);
            QCOMPARE(answer.answered, 1);
            QCOMPARE(answer.parent_of_dialog, &window);
        }
        QVERIFY(window.isThere());
        {
            PrintDialogAnswer answer({});
            TaviGfx::printPixmap(redPixmap(10, 10), nullptr, false);
            QCOMPARE(answer.answered, 1);
            QCOMPARE(answer.parent_of_dialog, &window);
        }
        QVERIFY(window.isThere());
        {
            const FileDialogAnswer answer({});
            QString name;
            TaviGfx::printRichTextToFile(document, name, nullptr, false);
            QVERIFY(answer.answered());
            QCOMPARE(answer.parentOfDialog(), &window);
        }
    }

    void theGivenParentGoesFirst()
    {
        ActiveWindow window;
        QVERIFY(window.isThere());
        QWidget other;
        PrintDialogAnswer answer({});
        TaviGfx::printPixmap(redPixmap(10, 10), &other, false);
        QCOMPARE(answer.answered, 1);
        QCOMPARE(answer.parent_of_dialog, &other);
    }

    void aCancelledDialogPrintsNothing()
    {
        ActiveWindow window;
        QTextDocument document;
        fill(document);
        PrintDialogAnswer rich({});
        TaviGfx::printRichText(document, &window, false);
        QCOMPARE(rich.answered, 1);
        PrintDialogAnswer pixmap({});
        TaviGfx::printPixmap(redPixmap(10, 10), &window, false);
        QCOMPARE(pixmap.answered, 1);
        PrintDialogAnswer widget({});
        TaviGfx::printWidget(&window, false);
        QCOMPARE(widget.answered, 1);
        QCOMPARE(widget.parent_of_dialog, &window);
        QVERIFY(QDir(folder_.path()).isEmpty());
        QVERIFY(!QFile::exists(QDir::home().filePath("print.pdf")));
    }

    void aNullPixmapIsNotPrinted()
    {
        ActiveWindow window;
        PrintDialogAnswer answer(pathOf("out.pdf"));
        TaviGfx::printPixmap(QPixmap(), &window, false);
        QCOMPARE(answer.answered, 0);
    }

    void aWindowMayGoWhileTheDialogIsUp()
    {
        for (const bool pixmap : {true, false}) {
            auto *const window = new ActiveWindow;
            PrintDialogAnswer answer(pathOf("out.pdf"));
            answer.instead = [window] {
                delete window;
            };
            QTextDocument document;
            fill(document);
            if (pixmap)
                TaviGfx::printPixmap(redPixmap(10, 10), window, false);
            else
                TaviGfx::printRichText(document, window, false);
            QCOMPARE(answer.answered, 1);
        }
        QVERIFY(QDir(folder_.path()).isEmpty());
    }

    void richTextIsPrintedPageByPage_data()
    {
        QTest::addColumn<bool>("landscape");
        QTest::newRow("portrait") << false;
        QTest::newRow("landscape") << true;
    }

    void richTextIsPrintedPageByPage()
    {
        QFETCH(bool, landscape);
        ActiveWindow window;
        QTextDocument document;
        fill(document);
        PrintDialogAnswer answer(pathOf("out.pdf"));
        TaviGfx::printRichText(document, &window, landscape);
        QCOMPARE(answer.problem, QString());
        QCOMPARE(answer.orientation, landscape ? QPageLayout::Landscape : QPageLayout::Portrait);
        QCOMPARE(answer.resolution, QPrinter(QPrinter::PrinterResolution).resolution());
        const PrintedFile file(pathOf("out.pdf"));
        QCOMPARE(file.pages(), 3);
        const QSizeF paper = layoutOfPrinter(landscape).fullRect(QPageLayout::Point).size();
        QVERIFY(isNear(file.pageSize().width(), paper.width(), 1));
        QVERIFY(isNear(file.pageSize().height(), paper.height(), 1));
        QCOMPARE(file.pageSize().width() > file.pageSize().height(), landscape);
        QCOMPARE(file.text().simplified(), QStringLiteral("alpha 1 beta 2 gamma 3"));
    }

    void aPixmapKeepsItsSizeAndStandsInTheMiddle_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<qreal>("ratio");
        QTest::addColumn<bool>("landscape");
        QTest::newRow("small") << QSize(200, 100) << 1.0 << false;
        QTest::newRow("small, landscape") << QSize(200, 100) << 1.0 << true;
        QTest::newRow("high") << QSize(100, 300) << 1.0 << false;
        QTest::newRow("of a fine screen") << QSize(400, 200) << 2.0 << false;
        QTest::newRow("too wide") << QSize(3000, 600) << 1.0 << false;
        QTest::newRow("too wide, landscape") << QSize(3000, 600) << 1.0 << true;
        QTest::newRow("too high") << QSize(300, 3000) << 1.0 << false;
        QTest::newRow("too high, landscape") << QSize(300, 3000) << 1.0 << true;
        QTest::newRow("too wide, and too high even then") << QSize(3000, 6000) << 1.0 << false;
        QTest::newRow("too high, and too wide even then") << QSize(6000, 4500) << 1.0 << true;
    }

    void aPixmapKeepsItsSizeAndStandsInTheMiddle()
    {
        QFETCH(QSize, size);
        QFETCH(qreal, ratio);
        QFETCH(bool, landscape);
        ActiveWindow window;
        QPixmap pixmap = redPixmap(size.width(), size.height());
        pixmap.setDevicePixelRatio(ratio);
        PrintDialogAnswer answer(pathOf("out.pdf"));
        TaviGfx::printPixmap(pixmap, &window, landscape);
        QCOMPARE(answer.problem, QString());
        QCOMPARE(answer.orientation, landscape ? QPageLayout::Landscape : QPageLayout::Portrait);
        QCOMPARE(answer.resolution, QPrinter(QPrinter::HighResolution).resolution());

        const PrintedFile file(pathOf("out.pdf"));
        QCOMPARE(file.pages(), 1);
        const QImage page = file.page();
        const QRectF ink = inkOf(page);

        // In inches. The picture stands where one margin is kept at the left and the top of the page, which lies one
        // margin inside the paper, and none at the right and the bottom.
        const QPageLayout layout = layoutOfPrinter(landscape);
        const QSizeF paper = layout.fullRect(QPageLayout::Inch).size();
        const QMarginsF margins = layout.margins(QPageLayout::Inch);
        QVERIFY(margins.left() > 0.05);
        QVERIFY(isNear(margins.left(), margins.right(), 0.01) && isNear(margins.top(), margins.bottom(), 0.01));
        QSizeF wanted(size.width() / ratio / window.logicalDpiX(), size.height() / ratio / window.logicalDpiY());
        const QSizeF room(paper.width() - 3 * margins.left(), paper.height() - 3 * margins.top());
        if (wanted.width() > room.width())
            wanted *= room.width() / wanted.width();
        if (wanted.height() > room.height())
            wanted *= room.height() / wanted.height();
        const QPointF corner(2 * margins.left() + (room.width() - wanted.width()) / 2,
                             2 * margins.top() + (room.height() - wanted.height()) / 2);
        constexpr qreal dot = 2.5 / look_resolution;
        const QString seen = QStringLiteral("at %1, %2, size %3 by %4; wanted at %5, %6, size %7 by %8")
                                 .arg(ink.x() / look_resolution)
                                 .arg(ink.y() / look_resolution)
                                 .arg(ink.width() / look_resolution)
                                 .arg(ink.height() / look_resolution)
                                 .arg(corner.x())
                                 .arg(corner.y())
                                 .arg(wanted.width())
                                 .arg(wanted.height());
        QVERIFY2(isNear(ink.x() / look_resolution, corner.x(), dot), qPrintable(seen));
        QVERIFY2(isNear(ink.y() / look_resolution, corner.y(), dot), qPrintable(seen));
        QVERIFY2(isNear(ink.width() / look_resolution, wanted.width(), dot), qPrintable(seen));
        QVERIFY2(isNear(ink.height() / look_resolution, wanted.height(), dot), qPrintable(seen));
        // All of it is there, in its colour.
        QVERIFY(isColour(page.pixel(ink.center().toPoint()), Qt::red));
    }

    void aWidgetIsPrintedAsItShows()
    {
        QWidget window;
        window.setStyleSheet(QStringLiteral("background: white"));
        window.resize(200, 120);
        QLabel left(&window);
        left.setGeometry(0, 0, 50, 120);
        left.setStyleSheet(QStringLiteral("background: blue"));
        QLabel right(&window);
        right.setGeometry(150, 0, 50, 120);
        right.setStyleSheet(QStringLiteral("background: red"));
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        PrintDialogAnswer answer(pathOf("out.pdf"));
        TaviGfx::printWidget(&window, true);
        QCOMPARE(answer.problem, QString());
        QCOMPARE(answer.parent_of_dialog, &window);
        QCOMPARE(answer.orientation, QPageLayout::Landscape);
        const QImage page = PrintedFile(pathOf("out.pdf")).page();
        const QRect ink = inkOf(page);
        QVERIFY(isNear(ink.width(), 200.0 * look_resolution / window.logicalDpiX(), 2));
        QVERIFY(isNear(ink.height(), 120.0 * look_resolution / window.logicalDpiY(), 2));
        QVERIFY(isColour(page.pixel(ink.left() + ink.width() / 8, ink.center().y()), Qt::blue));
        QVERIFY(isColour(page.pixel(ink.center()), Qt::white));
        QVERIFY(isColour(page.pixel(ink.right() - ink.width() / 8, ink.center().y()), Qt::red));
    }

    void richTextIsPrintedToAFile_data()
    {
        QTest::addColumn<bool>("landscape");
        QTest::addColumn<int>("ideal");
        QTest::newRow("portrait") << false << 300;
        QTest::newRow("landscape") << true << 300;
        QTest::newRow("wide") << false << 2000;
        QTest::newRow("wide, landscape") << true << 2000;
        QTest::newRow("nearly of a standard size") << false << 376;
    }

    void richTextIsPrintedToAFile()
    {
        QFETCH(bool, landscape);
        QFETCH(int, ideal);
        ActiveWindow window;
        QTextDocument document;
        fill(document);
        document.setDocumentMargin(0);
        QTextCursor cursor(&document);
        // A picture is as wide as it says.
        document.addResource(QTextDocument::ImageResource, QUrl("red"), QImage(ideal, 10, QImage::Format_RGB32));
        cursor.insertHtml(QStringLiteral("<img src=\"red\" width=%1 height=10>").arg(ideal));
        const qreal ideal_width = document.idealWidth();
        QVERIFY(ideal_width >= ideal);

        const FileDialogAnswer answer(pathOf("out.pdf"));
        QString name = pathOf("proposed.pdf");
        TaviGfx::printRichTextToFile(document, name, &window, landscape);
        QCOMPARE(answer.problem(), QString());
        QCOMPARE(answer.title(), QStringLiteral("Print to file"));
        QCOMPARE(answer.nameFilters(), QStringList("PDF (*.pdf)"));
        QCOMPARE(answer.directory(), folder_.path());
        QCOMPARE(answer.parentOfDialog(), &window);
        QCOMPARE(name, pathOf("out.pdf"));

        const PrintedFile file(name);
        QCOMPARE(file.pages(), 3);
        QCOMPARE(file.fact("Title"), QStringLiteral("Proof of the day"));
        QCOMPARE(file.fact("Creator"), QStringLiteral("Tavi Works"));
        QCOMPARE(file.text().simplified(), QStringLiteral("alpha 1 beta 2 gamma 3"));
        // Margins are counted in the printer's pixels, and made larger with the document's.
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setPageOrientation(landscape ? QPageLayout::Landscape : QPageLayout::Portrait);
        const QMargins margins = printer.pageLayout().marginsPixels(printer.resolution());
        const int both = landscape ? margins.top() + margins.bottom() : margins.left() + margins.right();
        QVERIFY(both > 100);
        const qreal width = (both + ideal_width) / window.logicalDpiX() * points_per_inch;
        const QSizeF paper = printer.pageLayout().pageSize().size(QPageSize::Point);
        QVERIFY2(isNear(file.pageSize().width(), width, 1),
                 qPrintable(QStringLiteral("%1, wanted %2").arg(file.pageSize().width()).arg(width)));
        QVERIFY(isNear(file.pageSize().height(), landscape ? paper.width() : paper.height(), 1));
    }

    void theChosenFileNeedsNoEnding()
    {
        ActiveWindow window;
        QTextDocument document;
        fill(document);
        const FileDialogAnswer answer(pathOf("out"));
        QString name;
        TaviGfx::printRichTextToFile(document, name, &window, false);
        QCOMPARE(name, pathOf("out"));
        QCOMPARE(PrintedFile(name).pages(), 3);
    }

    void aCancelledFileDialogPrintsNothing()
    {
        ActiveWindow window;
        QTextDocument document;
        fill(document);
        const FileDialogAnswer answer({});
        QString name = pathOf("proposed.pdf");
        TaviGfx::printRichTextToFile(document, name, &window, false);
        QVERIFY(answer.answered());
        QVERIFY(name.isEmpty());
        QVERIFY(QDir(folder_.path()).isEmpty());
    }

    void anEmptyDocumentIsOnePage()
    {
        ActiveWindow window;
        const QTextDocument document;
        const FileDialogAnswer answer(pathOf("out.pdf"));
        QString name;
        TaviGfx::printRichTextToFile(document, name, &window, false);
        QCOMPARE(PrintedFile(name).pages(), 1);
        QCOMPARE(PrintedFile(name).fact("Title"), QString());
    }

    void aFileThatCannotBeWrittenStaysAway()
    {
        ActiveWindow window;
        QTextDocument document;
        fill(document);
        QVERIFY(QDir(folder_.path()).mkdir("gone"));
        const FileDialogAnswer answer(pathOf("gone/out.pdf"));
        // The folder goes while the dialog is up.
        QTimer remover;
        connect(&remover, &QTimer::timeout, this, [this] { QDir(folder_.path()).rmdir("gone"); });
        remover.start(1);
        expectLog(QStringLiteral("QPainter::begin(): Returned false"));
        QString name;
        TaviGfx::printRichTextToFile(document, name, &window, false);
        QVERIFY(answer.answered());
        QVERIFY(!QFile::exists(pathOf("gone/out.pdf")));
    }

    void aPrinterThatCannotStartPrintsNothing()
    {
        ActiveWindow window;
        PrintDialogAnswer answer({});
        answer.instead = [this] {
            auto *const dialog = qobject_cast<QPrintDialog *>(QApplication::activeModalWidget());
            dialog->printer()->setOutputFileName(pathOf("nowhere/out.pdf"));
            dialog->done(QDialog::Accepted);
        };
        expectLog(QStringLiteral("QPainter::begin(): Returned false"));
        TaviGfx::printPixmap(redPixmap(10, 10), &window, false);
        QCOMPARE(answer.answered, 1);
        QCOMPARE(answer.problem, QString());
    }

    void theTextsAreTranslated()
    {
        ActiveWindow window;
        QTextDocument document;
        fill(document);
        const FileDialogAnswer answer(pathOf("out.pdf"));
        QString name;
        ContextTranslator translator;
        QCoreApplication::installTranslator(&translator);
        TaviGfx::printRichTextToFile(document, name, &window, false);
        QCoreApplication::removeTranslator(&translator);
        QCOMPARE(answer.title(), QStringLiteral("translated Print to file"));
        QCOMPARE(answer.nameFilters(), QStringList("translated PDF (*.pdf)"));
        QCOMPARE(PrintedFile(name).fact("Creator"), QStringLiteral("translated Tavi Works"));
    }
};

TAVI_GUI_TEST_MAIN(TestTaviGfxPrinting)
#include "tst_tavigfx_printing.moc"
