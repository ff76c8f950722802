#include "ui/ripdeck/ripdeck.h"
#include "ui/skin/skin.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>
#include <QWindow>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>
#include <unistd.h>

using namespace tonquay;

namespace {

/// Kibibytes of memory that are this process's and in use.
long residentKiB()
{
    std::ifstream status("/proc/self/statm");
    long whole = 0;
    long resident = 0;
    status >> whole >> resident;
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

/// Ends the process when its window is on the screen, painted, and nothing is left to do.
class UntilIdle final : public QObject {
public:
    explicit UntilIdle(QApplication& application)
    {
        application.installEventFilter(this);
        connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this, [this] {
            if (!painted_)
                return;
            std::printf("%ld KiB\n", residentKiB());
            std::fflush(stdout);
            std::_Exit(0);
        });
    }

    bool eventFilter(QObject*, QEvent* event) override
    {
        painted_ = painted_ || event->type() == QEvent::Paint;
        return false;
    }

private:
    bool painted_ = false;
};

std::unique_ptr<QWidget> smallestWindow()
{
    auto window = std::make_unique<QWidget>();
    auto column = std::make_unique<QVBoxLayout>();
    auto list = std::make_unique<QListWidget>();
    constexpr int rows = 20;
    constexpr int keys = 10;
    for (int i = 0; i < rows; ++i)
        list->addItem(QStringLiteral("Row %1").arg(i));
    column->addWidget(list.release());
    for (int i = 0; i < keys; ++i)
        column->addWidget(std::make_unique<QPushButton>(QStringLiteral("Key %1").arg(i)).release());
    window->setLayout(column.release());
    return window;
}

}

/// One start of a window, for bench/window_start.py to time from outside:
///
///     window_start deck PROGRAM-FOLDER     the ripper's, with the hand-over that lies there
///     window_start plain                   a list of 20 rows and ten keys
///
/// It ends when the window is painted and idle, and prints the memory in use.
int main(int count, char** words)
{
    QApplication application(count, words);
    const UntilIdle untilIdle(application);
    if (count > 2 && std::string(words[1]) == "deck") {
        ui::dressApplication(application);
        ui::Ripdeck ripdeck;
        if (!ripdeck.start(words[2]))
            return 1;
        return QApplication::exec();
    }
    const auto window = smallestWindow();
    window->show();
    return QApplication::exec();
}
