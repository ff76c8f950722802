#include "ui/forms/engine_tracks.h"

#include "ui/forms/input.h"

#include <QGuiApplication>
#include <QHeaderView>

#include <memory>

namespace tonquay::ui {

namespace {

constexpr int titleColumn = 1;
constexpr int timeColumn = 2;

}

EngineTracks::EngineTracks(controls::ChoiceList& list) : list_(list)
{
    setColumnCount(timeColumn + 1);
    setHeaderHidden(true);
    setRootIsDecorated(false);
    setAccessibleName(QStringLiteral("Tracks"));
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    header()->setSectionResizeMode(titleColumn, QHeaderView::Stretch);
    bindings_.keep(list.follow([this] { takeOver(); }));
    takeOver();
    connect(this, &QTreeWidget::itemClicked, this,
            [this](QTreeWidgetItem* item) { list_.setIndex(indexOfTopLevelItem(item)); });
    connect(this, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
        // A click tells of itself.
        if (!showing_ && item != nullptr && QGuiApplication::mouseButtons() == Qt::NoButton)
            list_.setIndex(indexOfTopLevelItem(item));
    });
}

void EngineTracks::takeOver()
{
    const Writing showing(showing_);
    clear();
    for (std::int32_t row = 0; row < list_.rowCount(); ++row) {
        auto item = std::make_unique<QTreeWidgetItem>(qtText(list_.row(row).text).split('\t'));
        item->setTextAlignment(timeColumn, Qt::AlignRight | Qt::AlignVCenter);
        addTopLevelItem(item.release());
    }
    setCurrentItem(list_.index() < 0 ? nullptr : topLevelItem(list_.index()));
}

}
