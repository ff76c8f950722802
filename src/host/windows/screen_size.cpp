#include "host/windows/screen_size.h"

#include <QGuiApplication>
#include <QScreen>

namespace tonquay::host {

ScreenSize screenSize()
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    constexpr ScreenSize none{1920, 1080};
    if (screen == nullptr)
        return none;
    return {screen->geometry().width(), screen->geometry().height()};
}

}
