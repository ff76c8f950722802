#include "ui/forms/popup_menu_view.h"

#include "ui/forms/input.h"

#include <QCoreApplication>
#include <QCursor>
#include <QMenu>
#include <QSet>

#include <memory>

namespace tonquay::ui {

namespace {

/// The caption with the first letter that no line before it has taken as its key.
QString withMnemonic(const QString& caption, QSet<QChar>& taken)
{
    QString shown = caption;
    for (qsizetype i = 0; i < caption.size(); ++i) {
        const QChar letter = caption[i].toLower();
        if (!letter.isLetter() || taken.contains(letter))
            continue;
        taken.insert(letter);
        return shown.left(i).replace('&', "&&") + '&' + shown.mid(i).replace('&', "&&");
    }
    return shown.replace('&', "&&");
}

void fill(QMenu& menu, const std::vector<controls::MenuLine>& lines)
{
    QSet<QChar> taken;
    for (const controls::MenuLine& line : lines) {
        if (line.entry == nullptr) {
            menu.addSeparator();
            continue;
        }
        const QString caption = withMnemonic(qtText(line.entry->caption), taken);
        if (!line.lines.empty()) {
            fill(*menu.addMenu(caption), line.lines);
            continue;
        }
        QAction& action = *menu.addAction(caption);
        action.setEnabled(line.entry->enabled);
        // Queued, and for an object that outlives the menu.
        QObject::connect(
            &action, &QAction::triggered, QCoreApplication::instance(), [entry = line.entry] { entry->choose(); },
            Qt::QueuedConnection);
    }
}

}

PopupMenuView::PopupMenuView(state::PopaControls& popa) : popa_(popa)
{
    bindings_.keep(popa.popopt.opened.add([this] { open(); }));
}

PopupMenuView::~PopupMenuView()
{
    delete menu_;
}

void PopupMenuView::open()
{
    if (menu_ != nullptr) {
        // Its form has been closed by whoever opens it anew.
        menu_->disconnect();
        menu_->close();
    }
    auto menu = std::make_unique<QMenu>();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    fill(*menu, popa_.popopt.lines);
    QObject::connect(menu.get(), &QMenu::aboutToHide, [this] { popa_.popopt.closed(); });
    menu_ = menu.release();
    menu_->popup(QCursor::pos());
}

}
