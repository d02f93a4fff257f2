// SPDX-License-Identifier: MIT
#include "foundation/taviwidgetutil.h"
#include "gallery/page.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSplitter>
#include <QVBoxLayout>

#include <memory>

namespace {

/// The icons of message boxes on a light and on a dark ground.
QWidget *makeIcons(QWidget *parent)
{
    auto *box = new QGroupBox(QStringLiteral("Message box icons"), parent);
    auto *layout = new QHBoxLayout(box);
    for (const QColor &ground : {QColor(245, 245, 245), QColor(40, 40, 40)}) {
        auto *strip = new QWidget(box);
        auto *icons = new QHBoxLayout(strip);
        for (const QMessageBox::Icon icon :
             {QMessageBox::Question, QMessageBox::Information, QMessageBox::Warning, QMessageBox::Critical}) {
            auto *label = new QLabel(strip);
            const std::unique_ptr<QPixmap> pixmap(TaviWidgetUtil::getMessageBoxIconPixmap(icon));
            label->setPixmap(pixmap->scaled(48, 48, Qt::KeepAspectRatio, Qt::SmoothTransformation));
            icons->addWidget(label);
        }
        TaviWidgetUtil::setBackgroundProperties(strip, ground, 1.0);
        layout->addWidget(strip);
    }
    return box;
}

/// A splitter, its widths as text, and the way back.
QWidget *makeSplitter(QWidget *parent)
{
    auto *box = new QGroupBox(QStringLiteral("Pane widths"), parent);
    auto *layout = new QVBoxLayout(box);
    auto *splitter = new QSplitter(box);
    const QColor colours[] = {QColor(0, 160, 255), QColor(230, 120, 40), QColor(90, 170, 60)};
    for (const QColor &colour : colours) {
        auto *pane = new QLabel(splitter);
        pane->setMinimumHeight(48);
        TaviWidgetUtil::setBackgroundProperties(pane, colour, 0.35);
        splitter->addWidget(pane);
    }
    auto *row = new QHBoxLayout;
    auto *text = new QLineEdit(QStringLiteral("120 240 90"), box);
    text->setAccessibleName(QStringLiteral("Pane widths"));
    auto *apply = new QPushButton(QStringLiteral("Apply"), box);
    row->addWidget(text);
    row->addWidget(apply);
    layout->addWidget(splitter, 1);
    layout->addLayout(row);
    const auto use = [splitter, text] {
        TaviWidgetUtil::applySplitterWidthsString(splitter, text->text());
    };
    QObject::connect(apply, &QPushButton::clicked, splitter, use);
    QObject::connect(text, &QLineEdit::returnPressed, splitter, use);
    QObject::connect(splitter, &QSplitter::splitterMoved, text,
                     [splitter, text] { text->setText(TaviWidgetUtil::getSplitterWidthsString(splitter)); });
    use();
    return box;
}

} // namespace

QWidget *makeTaviWidgetUtilPage(bool)
{
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    layout->addWidget(makeIcons(page));
    layout->addWidget(makeSplitter(page), 1);
    return page;
}
