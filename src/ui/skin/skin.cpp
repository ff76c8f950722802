#include "ui/skin/skin.h"

#include "ui/skin/colours.h"
#include "ui/skin/icons.h"

#include <QApplication>
#include <QFile>
#include <QFontDatabase>
#include <QPalette>
#include <QStyleFactory>

#include <array>

// The resources of a static library are not there until they are asked for, from outside of any namespace.
static void takeResources()
{
    Q_INIT_RESOURCE(skin);
}

namespace tonquay::ui {

namespace {

/// The system's own family where it is a clear one for a display, else the first of these that is there.
QFont displayFont(QFont font)
{
    constexpr std::array families{"Inter", "Cantarell", "Noto Sans", "Open Sans", "DejaVu Sans"};
    for (const char* family : families)
        if (QFontDatabase::hasFamily(family)) {
            font.setFamily(family);
            break;
        }
    constexpr qreal smallest = 9.5;
    if (font.pointSizeF() < smallest)
        font.setPointSizeF(smallest);
    return font;
}

QPalette darkPalette()
{
    QPalette palette;
    palette.setColor(QPalette::Window, colours::window);
    palette.setColor(QPalette::WindowText, colours::text);
    palette.setColor(QPalette::Base, colours::panel);
    palette.setColor(QPalette::AlternateBase, colours::key);
    palette.setColor(QPalette::Text, colours::text);
    palette.setColor(QPalette::PlaceholderText, colours::dim);
    palette.setColor(QPalette::Button, colours::key);
    palette.setColor(QPalette::ButtonText, colours::text);
    palette.setColor(QPalette::BrightText, colours::alarm);
    palette.setColor(QPalette::ToolTipBase, colours::keyHover);
    palette.setColor(QPalette::ToolTipText, colours::text);
    palette.setColor(QPalette::Highlight, colours::selection);
    palette.setColor(QPalette::HighlightedText, colours::text);
    palette.setColor(QPalette::Link, colours::on);
    palette.setColor(QPalette::LinkVisited, colours::muted);
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::HighlightedText})
        palette.setColor(QPalette::Disabled, role, colours::dim);
    return palette;
}

}

void dressApplication(QApplication& application)
{
    takeResources();
    QApplication::setApplicationName(QStringLiteral("cd-tonquay"));
    QApplication::setDesktopFileName(QStringLiteral("cd-tonquay"));
    QApplication::setWindowIcon(icon(QStringLiteral("program")));
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(darkPalette());
    QApplication::setFont(displayFont(QApplication::font()));
    QFile sheet(QStringLiteral(":/skin/skin.qss"));
    if (sheet.open(QIODevice::ReadOnly))
        application.setStyleSheet(QString::fromUtf8(sheet.readAll()));
}

}
