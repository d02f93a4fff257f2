// SPDX-License-Identifier: MIT
#include "qt3/q3widgetstack.h"
#include "tests/support/tavitest.h"

#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>

class TestQ3WidgetStack : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void construction()
    {
        Q3WidgetStack stack(nullptr, "name");
        QCOMPARE(stack.objectName(), QStringLiteral("name"));
        QCOMPARE(stack.visibleWidget(), nullptr);
        QCOMPARE(stack.frameShape(), QFrame::NoFrame);
        QCOMPARE(stack.widget(0), nullptr);
        QCOMPARE(stack.id(nullptr), -1);
        QCOMPARE(stack.addWidget(nullptr), -1);
    }

    void numbers()
    {
        Q3WidgetStack stack;
        auto *first = new QWidget;
        auto *second = new QWidget;
        QCOMPARE(stack.addWidget(first, 7), 7);
        QCOMPARE(stack.addWidget(second), 0);
        QCOMPARE(stack.addWidget(new QWidget), 1);
        const int own = stack.addWidget(new QWidget, -2);
        const int taken = stack.addWidget(new QWidget, 7);
        QVERIFY(own < -1 && taken < -1 && own != taken);
        QCOMPARE(stack.widget(7), first);
        QCOMPARE(stack.id(first), 7);
        QCOMPARE(stack.addWidget(first, 9), 9);
        QCOMPARE(stack.widget(7), nullptr);
        QCOMPARE(first->parentWidget(), &stack);
    }

    void raising()
    {
        Q3WidgetStack stack;
        stack.resize(200, 100);
        auto *first = new QLabel(QStringLiteral("first"));
        auto *second = new QLabel(QStringLiteral("second"));
        stack.addWidget(first, 1);
        stack.addWidget(second, 2);
        stack.show();
        QVERIFY(!first->isVisible() && !second->isVisible());
        QSignalSpy number(&stack, SIGNAL(aboutToShow(int)));
        QSignalSpy widget(&stack, SIGNAL(aboutToShow(QWidget *)));
        QWidget *before = first;
        connect(&stack, QOverload<int>::of(&Q3WidgetStack::aboutToShow), &stack,
                [&] { before = stack.visibleWidget(); });
        stack.raiseWidget(1);
        QCOMPARE(before, nullptr);
        QVERIFY(first->isVisible());
        QCOMPARE(first->geometry(), stack.contentsRect());
        stack.raiseWidget(second);
        QCOMPARE(before, first);
        QVERIFY(!first->isVisible() && second->isVisible());
        QCOMPARE(number.last().at(0).toInt(), 2);
        QCOMPARE(widget.last().at(0).value<QWidget *>(), second);
        stack.raiseWidget(second);
        stack.raiseWidget(9);
        QCOMPARE(number.count(), 2);
        stack.setFrameStyle(QFrame::Box);
        stack.resize(300, 100);
        QCOMPARE(second->geometry(), stack.contentsRect());
        QVERIFY(stack.sizeHint().width() >= first->sizeHint().width());
    }

    void removing()
    {
        Q3WidgetStack stack;
        auto *first = new QWidget;
        auto *second = new QWidget;
        stack.addWidget(first, 1);
        stack.addWidget(second, 2);
        stack.show();
        stack.raiseWidget(1);
        stack.removeWidget(first);
        QCOMPARE(stack.visibleWidget(), nullptr);
        QCOMPARE(stack.widget(1), nullptr);
        QVERIFY(!first->isVisible() && !second->isVisible());
        stack.raiseWidget(2);
        delete second;
        QCOMPARE(stack.visibleWidget(), nullptr);
        QCOMPARE(stack.widget(2), nullptr);
        stack.removeWidget(first);
        stack.removeWidget(nullptr);
    }

    void theFocusGoesAlong()
    {
        Q3WidgetStack stack;
        auto *first = new QLineEdit;
        auto *second = new QLineEdit;
        stack.addWidget(first, 1);
        stack.addWidget(second, 2);
        stack.raiseWidget(1);
        stack.show();
        stack.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&stack));
        first->setFocus();
        stack.raiseWidget(2);
        QTRY_VERIFY(second->hasFocus());
    }

    void theFocusStaysInTheStack()
    {
        QWidget window;
        auto *stack = new Q3WidgetStack(&window);
        stack->resize(100, 50);
        auto *first = new QLineEdit;
        auto *second = new QLineEdit;
        stack->addWidget(first, 1);
        stack->addWidget(second, 2);
        auto *outside = new QLineEdit(&window);
        outside->move(0, 60);
        stack->raiseWidget(2);
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        second->setFocus();
        stack->raiseWidget(1); // that stands before it in the order of the tab key
        QVERIFY(first->hasFocus());
        outside->setFocus();
        stack->raiseWidget(2);
        QVERIFY(outside->hasFocus());
    }

    void raisingAWidgetOfElsewhereAddsIt()
    {
        Q3WidgetStack stack;
        auto *widget = new QWidget;
        stack.show();
        stack.raiseWidget(widget);
        QCOMPARE(stack.visibleWidget(), widget);
        QCOMPARE(stack.id(widget), 0);
        QVERIFY(widget->isVisible());
    }

    void aFrameTakesRoom()
    {
        Q3WidgetStack stack;
        auto *label = new QLabel(QStringLiteral("label"));
        stack.addWidget(label);
        stack.setFrameShape(QFrame::Box);
        stack.setLineWidth(7);
        QCOMPARE(stack.sizeHint(), label->sizeHint() + QSize(14, 14));
        QCOMPARE(stack.minimumSizeHint(), label->minimumSizeHint() + QSize(14, 14));
    }

    void aWidgetMayGoBeforeItIsShown()
    {
        Q3WidgetStack stack;
        auto *widget = new QWidget;
        stack.addWidget(widget, 1);
        connect(&stack, QOverload<int>::of(&Q3WidgetStack::aboutToShow), &stack, [widget] { delete widget; });
        stack.raiseWidget(1);
        QCOMPARE(stack.visibleWidget(), nullptr);
    }
};

TAVI_GUI_TEST_MAIN(TestQ3WidgetStack)

#include "tst_q3widgetstack.moc"
