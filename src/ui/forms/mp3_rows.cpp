#include "ui/forms/mp3_rows.h"

#include "state/mp3_row.h"
#include "ui/forms/host_paths.h"
#include "ui/forms/input.h"
#include "ui/skin/colours.h"
#include "ui/skin/icons.h"

#include <QDropEvent>
#include <QKeyEvent>
#include <QPainter>

namespace tonquay::ui {

namespace {

QString nameOf(const QString& row)
{
    return qtText(state::mp3Row(row.toStdWString()).name);
}

QString pathOf(platform::FileSystem& files, const QString& row)
{
    const state::Mp3Row file = state::mp3Row(row.toStdWString());
    return shownPath(files, file.folder + L'\\' + file.name);
}

}

Mp3Rows::Mp3Rows(controls::MultiSelectList& list, Role role, controls::Property<state::Mp3InHand>& inHand,
                 platform::FileSystem& files)
    : MultiSelectView(list,
                      [role, &inHand, &files](const QString& text, int, int cell) -> QVariant {
                          const bool isInHand = role == Role::queue && qtText(inHand.get().row) == text;
                          switch (cell) {
                          case Qt::DisplayRole: return nameOf(text);
                          case Qt::ToolTipRole: return pathOf(files, text);
                          case Qt::AccessibleTextRole:
                              return isInHand ? nameOf(text) + QStringLiteral(", being converted") : nameOf(text);
                          case Qt::DecorationRole:
                              return isInHand ? QVariant(icon(QStringLiteral("forward"), colours::accent)) : QVariant();
                          case Qt::ForegroundRole: return isInHand ? QVariant(colours::accent) : QVariant();
                          default: return {};
                          }
                      }),
      role_(role)
{
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setDragEnabled(role == Role::folder);
    setAcceptDrops(role == Role::queue);
    setDragDropMode(role == Role::folder ? QAbstractItemView::DragOnly : QAbstractItemView::DropOnly);
    setTextElideMode(Qt::ElideMiddle);
    if (role == Role::queue)
        bindings_.keep(inHand.follow([this](const state::Mp3InHand& file) {
            viewport()->update();
            for (int row = 0; row < model()->rowCount(); ++row)
                if (this->list().row(row) == file.row)
                    return scrollTo(model()->index(row, 0));
        }));
}

void Mp3Rows::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter ||
        (role_ == Role::queue && event->key() == Qt::Key_Delete))
        list().doubleClick();
    else
        MultiSelectView::keyPressEvent(event);
}

/// Rows of the other list of this window.
bool Mp3Rows::takes(const QDropEvent& event) const
{
    const auto* source = qobject_cast<QListView*>(event.source());
    return source != nullptr && source != this && source->window() == window();
}

void Mp3Rows::dragEnterEvent(QDragEnterEvent* event)
{
    event->setAccepted(takes(*event));
}

void Mp3Rows::dragMoveEvent(QDragMoveEvent* event)
{
    event->setAccepted(takes(*event));
}

void Mp3Rows::dropEvent(QDropEvent* event)
{
    if (!takes(*event))
        return;
    // The rows stay where they came from.
    event->setDropAction(Qt::CopyAction);
    event->accept();
    list().dropped();
}

void Mp3Rows::paintEvent(QPaintEvent* event)
{
    MultiSelectView::paintEvent(event);
    if (!isEmpty())
        return;
    QPainter painter(viewport());
    painter.setPen(colours::muted);
    painter.drawText(viewport()->rect().adjusted(16, 0, -16, 0), Qt::AlignCenter | Qt::TextWordWrap,
                     role_ == Role::folder ? QStringLiteral("No MP3 files in this folder")
                                           : QStringLiteral("Drop MP3 files here, or add them with the keys"));
}

}
