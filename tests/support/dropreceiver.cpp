// SPDX-License-Identifier: MIT
//
// Another application: a window that takes whatever is dropped on it as a move, or as a copy.
//
//     dropreceiver TYPE move|copy X Y
//
// puts the window there, writes "ready X Y", the middle of it in pixels of the display, and after a drop "dropped
// DATA" of the type. It ends when its input does.
#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QSocketNotifier>
#include <QTimer>
#include <QWidget>
#include <QWindow>

#include <cstdio>
#include <unistd.h>

namespace {

class Receiver : public QWidget
{
public:
    Receiver(const QString &type, Qt::DropAction action) : type_(type), action_(action)
    {
        setAcceptDrops(true);
        setWindowFlags(Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    }

protected:
    void dragEnterEvent(QDragEnterEvent *event) override { take(event); }
    void dragMoveEvent(QDragMoveEvent *event) override { take(event); }
    void dropEvent(QDropEvent *event) override
    {
        take(event);
        std::printf("dropped %s\n", event->mimeData()->data(type_).constData());
        std::fflush(stdout);
    }

private:
    void take(QDropEvent *event) const
    {
        event->setDropAction(action_);
        event->accept();
    }

    const QString type_;
    const Qt::DropAction action_;
};

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 5)
        return 2;
    Receiver window(arguments.at(1), arguments.at(2) == QLatin1String("move") ? Qt::MoveAction : Qt::CopyAction);
    window.setGeometry(arguments.at(3).toInt(), arguments.at(4).toInt(), 200, 200);
    window.show();
    QTimer::singleShot(300, &window, [&window] {
        const QPointF middle = QPointF(window.mapToGlobal(window.rect().center())) * window.devicePixelRatioF();
        std::printf("ready %d %d\n", qRound(middle.x()), qRound(middle.y()));
        std::fflush(stdout);
    });
    const QSocketNotifier input(0, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &application, [] {
        char one;
        if (read(0, &one, 1) <= 0)
            QCoreApplication::quit();
    });
    return QApplication::exec();
}
