#include "ui/forms/setup_window.h"

#include "ui/forms/bound_widgets.h"
#include "ui/forms/input.h"
#include "ui/forms/settings_view.h"
#include "ui/forms/tag_view.h"
#include "ui/forms/to_wav_view.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QShortcut>
#include <QTabWidget>
#include <QVBoxLayout>

#include <array>
#include <memory>

namespace tonquay::ui {

namespace {

/// The pages in the order of their tabs.
constexpr std::array pages{state::settingsTab, state::tagUtilityTab, state::toWavTab};

std::unique_ptr<QScrollArea> scrolling(QWidget& page)
{
    auto area = std::make_unique<QScrollArea>();
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    // The keyboard goes to what is on the page.
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(&page);
    return area;
}

}

class SetupWindow::Dialog final : public QWidget {
public:
    Dialog(state::CdriptabControls& form, platform::FileSystem& files, platform::Dialogs& dialogs) : form_(form)
    {
        setWindowTitle(qtText(form.form.caption));
        auto settings = std::make_unique<SettingsView>(form, files, dialogs);
        auto tags = std::make_unique<TagView>(form.tagPage, files, dialogs);
        auto toWav = std::make_unique<ToWavView>(form, files, dialogs);
        const QSize wanted = settings->sizeHint().expandedTo(toWav->sizeHint()).expandedTo(tags->sizeHint());
        tabs_.setDocumentMode(true);
        tabs_.addTab(scrolling(*settings.release()).release(), QStringLiteral("Settings"));
        tabs_.addTab(scrolling(*tags.release()).release(), QStringLiteral("MP3/Ogg/WAV Tag Utility"));
        tabs_.addTab(scrolling(*toWav.release()).release(), qtText(form.SSFrame7.caption));
        auto column = std::make_unique<QVBoxLayout>();
        column->setContentsMargins(0, 6, 0, 12);
        column->addWidget(&tabs_, 1);
        addButtons(*column);
        setLayout(column.release());
        bindTabs();
        // From anywhere in the dialog, lists included, which have a use of their own for some of these keys.
        addShortcut(QKeySequence::NextChild, 1);
        addShortcut(QKeySequence::PreviousChild, -1);

        constexpr QSize surroundings{30, 110};
        const QSize screen = QGuiApplication::primaryScreen()->availableSize();
        resize((wanted + surroundings).boundedTo(QSize(screen.width() - 8, screen.height() - 40)));
    }

protected:
    void showEvent(QShowEvent* event) override
    {
        QWidget::showEvent(event);
        if (focusWidget() == nullptr)
            tabs_.setFocus();
    }

    void closeEvent(QCloseEvent* event) override
    {
        event->ignore();
        form_.cmdCancel.press();
    }

    void keyPressEvent(QKeyEvent* event) override
    {
        switch (event->key()) {
        case Qt::Key_Escape: form_.form.keyDown(controls::Key::escape); break;
        case Qt::Key_F1: form_.form.keyDown(controls::Key::f1); break;
        default: QWidget::keyPressEvent(event);
        }
    }

private:
    void bindTabs()
    {
        bindings_.show(form_.tab, [this](const std::int32_t& tab) {
            for (std::size_t i = 0; i < pages.size(); ++i)
                if (pages[i] == tab)
                    tabs_.setCurrentIndex(static_cast<int>(i));
        });
        connect(&tabs_, &QTabWidget::currentChanged, this,
                [this](int index) { form_.tab = pages[static_cast<std::size_t>(index)]; });
    }

    void addShortcut(QKeySequence::StandardKey keys, int step)
    {
        auto shortcut = std::make_unique<QShortcut>(keys, this);
        connect(shortcut.release(), &QShortcut::activated, this,
                [this, step] { tabs_.setCurrentIndex((tabs_.currentIndex() + step + tabs_.count()) % tabs_.count()); });
    }

    void addButtons(QVBoxLayout& column)
    {
        auto row = std::make_unique<QHBoxLayout>();
        row->setContentsMargins(14, 4, 14, 0);
        row->addStretch(1);
        for (auto [view, button] : {std::pair{&ok_, &form_.cmdOK}, std::pair{&cancel_, &form_.cmdCancel}}) {
            bindButton(*view, *button, bindings_);
            view->setMinimumWidth(100);
            row->addWidget(view);
        }
        ok_.setDefault(true);
        column.addLayout(row.release());
    }

    state::CdriptabControls& form_;
    QTabWidget tabs_;
    QPushButton ok_, cancel_;
    Bindings bindings_;
};

SetupWindow::SetupWindow(state::CdriptabControls& form, platform::FileSystem& files, platform::Dialogs& dialogs)
    : window_(form.form, [&form, &files, &dialogs] { return std::make_unique<Dialog>(form, files, dialogs); })
{}

}
