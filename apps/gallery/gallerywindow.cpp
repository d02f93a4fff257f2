// SPDX-License-Identifier: MIT
#include "gallery/gallerywindow.h"

#include "gallery/page.h"

#include <QDir>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <memory>

GalleryWindow::GalleryWindow()
{
    setObjectName(QStringLiteral("gallery"));
    setWindowTitle(QStringLiteral("gallery"));
    resize(860, 560);
    auto *list = new QListWidget(this);
    list->setFixedWidth(200);
    list->setAccessibleName(QStringLiteral("Pages"));
    auto *stack = new QStackedWidget(this);
    for (const Page &page : galleryPages()) {
        list->addItem(QString::fromUtf8(page.title));
        auto *sheet = new QWidget(stack);
        auto *layout = new QVBoxLayout(sheet);
        auto *description = new QLabel(QString::fromUtf8(page.description), sheet);
        description->setWordWrap(true);
        layout->addWidget(description);
        layout->addWidget(page.make(false), 1);
        stack->addWidget(sheet);
    }
    auto *layout = new QHBoxLayout(this);
    layout->addWidget(list);
    layout->addWidget(stack, 1);
    connect(list, &QListWidget::currentRowChanged, stack, &QStackedWidget::setCurrentIndex);
    list->setCurrentRow(0);
}

QString saveGalleryPictures(const QString &folder)
{
    if (!QDir().mkpath(folder))
        return QStringLiteral("%1: cannot be made").arg(folder);
    for (const Page &page : galleryPages()) {
        const std::unique_ptr<QWidget> content(page.make(true));
        content->resize(520, content->sizeHint().height());
        content->show();
        QElapsedTimer shown;
        for (shown.start(); shown.elapsed() < 200;)
            QGuiApplication::processEvents(QEventLoop::ExcludeUserInputEvents, 50);
        const QString path = folder + QLatin1Char('/') + QString::fromUtf8(page.name) + QStringLiteral(".png");
        if (!content->grab().save(path))
            return QStringLiteral("%1: cannot be written").arg(path);
    }
    return {};
}
