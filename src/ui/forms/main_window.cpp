#include "ui/forms/main_window.h"

#include "ui/forms/caption_colour.h"
#include "ui/forms/command_column.h"
#include "ui/forms/deck_key.h"
#include "ui/forms/display_panel.h"
#include "ui/forms/input.h"
#include "ui/forms/label_line.h"
#include "ui/forms/progress_row.h"
#include "ui/forms/text_line.h"
#include "ui/forms/track_list.h"
#include "ui/forms/transport_row.h"
#include "ui/skin/colours.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>
#include <QWindow>

#include <memory>

namespace tonquay::ui {

namespace {

constexpr int twipsPerPixel = 15;
constexpr int sideColumn = 268;

template <class Layout>
std::unique_ptr<Layout> boxLayout(int spacing)
{
    auto made = std::make_unique<Layout>();
    made->setContentsMargins(0, 0, 0, 0);
    made->setSpacing(spacing);
    return made;
}

}

MainWindow::MainWindow(state::RipdeckControls& ripdeck, const state::Theme& theme) : ripdeck_(ripdeck), theme_(theme)
{
    setObjectName(QStringLiteral("deck"));
    auto column = boxLayout<QVBoxLayout>(10);
    column->setContentsMargins(16, 10, 16, 14);
    addTitleRow(*column);
    addBody(*column);
    setLayout(column.release());

    constexpr QSize design{960, 640};
    const QSize screen = QGuiApplication::primaryScreen()->availableSize();
    // What a frame and a panel take of a small screen.
    const QSize room(screen.width() - 8, screen.height() - 40);
    resize(design.expandedTo(minimumSizeHint()).boundedTo(room.expandedTo(minimumSizeHint())));
    bindForm();
}

void MainWindow::addTitleRow(QBoxLayout& column)
{
    using Look = TextLine::Look;
    auto row = boxLayout<QHBoxLayout>(12);
    auto name = std::make_unique<TextLine>(Look{.colour = colours::accent,
                                                .scale = 1.05,
                                                .weight = 700,
                                                .widest = QStringLiteral("CD-TONQUAY  "),
                                                .spaced = true});
    name->setText(QStringLiteral("CD-TONQUAY"));
    row->addWidget(name.release());
    row->addWidget(std::make_unique<LabelLine>(ripdeck_.Label6[state::ripperCaption], theme_,
                                               Look{.colour = colours::muted, .widest = QStringLiteral("CD Ripper ")},
                                               QStringLiteral("Part of the suite"))
                       .release());
    row->addStretch(1);
    auto minimise = std::make_unique<DeckKey>(
        DeckKey::Look{.picture = QStringLiteral("minimise"), .plate = DeckKey::Plate::flat, .iconSize = 18},
        QStringLiteral("Minimise"), QKeySequence(QStringLiteral("Alt+N")));
    minimise->setTip(QStringLiteral("Minimise the window"));
    connect(minimise.get(), &QAbstractButton::clicked, this, [this] { showMinimized(); });
    auto power = std::make_unique<DeckKey>(
        DeckKey::Look{.picture = QStringLiteral("power"), .plate = DeckKey::Plate::flat, .iconSize = 18},
        QStringLiteral("Power"), QKeySequence(QStringLiteral("Ctrl+Q")));
    power->setTip(QStringLiteral("End the program; Esc does it too"));
    forwardPresses(*power, ripdeck_.Label28);
    for (auto* key : {&minimise, &power}) {
        (*key)->setFixedSize(34, 30);
        row->addWidget(key->release());
    }
    column.addLayout(row.release());
}

void MainWindow::addBody(QBoxLayout& column)
{
    auto left = boxLayout<QVBoxLayout>(10);
    auto display = std::make_unique<DisplayPanel>(ripdeck_, theme_);
    display->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    left->addWidget(display.release(), 2);
    left->addWidget(std::make_unique<TransportRow>(ripdeck_).release());
    left->addWidget(&trackPanel(), 5);
    auto bars = boxLayout<QVBoxLayout>(6);
    bars->addWidget(std::make_unique<ProgressRow>(ripdeck_.Trackprogress, ripdeck_.Label6[state::trackProgressCaption],
                                                  ripdeck_.Label6[state::trackPercentText], theme_, colours::accent)
                        .release());
    bars->addWidget(std::make_unique<ProgressRow>(ripdeck_.Totalprogress, ripdeck_.Label6[state::totalProgressCaption],
                                                  ripdeck_.Label6[state::totalPercentText], theme_, colours::on)
                        .release());
    auto notice = std::make_unique<TextLine>(TextLine::Look{.colour = colours::text});
    notice_ = notice.get();
    notice_->setAccessibleName(QStringLiteral("Result of the run"));
    notice_->hide();
    bars->addWidget(notice.release());
    left->addLayout(bars.release());

    auto right = boxLayout<QVBoxLayout>(10);
    auto commands = std::make_unique<CommandColumn>(ripdeck_);
    commands->setMaximumWidth(sideColumn);
    right->addWidget(commands.release(), 1);
    right->addWidget(std::make_unique<SideKeys>(ripdeck_).release());

    auto body = boxLayout<QHBoxLayout>(14);
    body->addLayout(left.release(), 1);
    body->addLayout(right.release());
    column.addLayout(body.release(), 1);
}

QWidget& MainWindow::trackPanel()
{
    QFrame& panel = *std::make_unique<QFrame>().release();
    panel.setObjectName(QStringLiteral("panel"));
    auto column = boxLayout<QVBoxLayout>(0);
    column->setContentsMargins(4, 2, 4, 6);
    column->addWidget(std::make_unique<TrackHeadings>(ripdeck_.Label5).release());
    auto tracks = std::make_unique<TrackList>(ripdeck_.list1);
    tracks_ = tracks.get();
    column->addWidget(tracks.release(), 1);
    panel.setLayout(column.release());
    bindings_.show(ripdeck_.listBorderColour, [this, &panel](const std::int32_t& colour) {
        const QColor edge =
            theme_.useThemeColours == 1 ? captionColour(colour, theme_, colours::border) : colours::border;
        panel.setStyleSheet(QStringLiteral("#panel { border-color: %1; }").arg(edge.name()));
    });
    return panel;
}

void MainWindow::bindForm()
{
    controls::Form& form = ripdeck_.form;
    bindings_.show(form.caption, [this](const std::wstring& caption) { setWindowTitle(qtText(caption)); });
    bindings_.keep(form.follow([this](const controls::Form::State& state) { showState(state); }));
    bindings_.keep(form.broughtToFront.add([this] {
        raise();
        activateWindow();
    }));
    bindings_.keep(form.heldByPointer.add([this] {
        if (windowHandle() != nullptr)
            windowHandle()->startSystemMove();
    }));
    bindings_.show(form.windowState, [this](const controls::Form::WindowState& state) {
        if (writing_)
            return;
        const bool minimised = state == controls::Form::WindowState::minimised;
        setWindowState(windowState().setFlag(Qt::WindowMinimized, minimised));
    });
    bindEnabled();
    bindPlace();
}

void MainWindow::showState(controls::Form::State state)
{
    if (state != controls::Form::State::shown) {
        hide();
        return;
    }
    show();
    tracks_->setFocus();
}

/// One that is disabled waits for another window, which has minimised it perhaps; it comes back when that one is
/// through.
void MainWindow::bindEnabled()
{
    bindings_.show(ripdeck_.form.enabled, [this](const bool& enabled) {
        // A window that is disabled gives the keyboard to whatever comes first in it.
        if (!enabled)
            focusBefore_ = focusWidget();
        setEnabled(enabled);
        if (!enabled)
            return;
        ripdeck_.form.windowState = controls::Form::WindowState::normal;
        if (QWidget* const wanted = focusBefore_ ? focusBefore_.data() : tracks_)
            wanted->setFocus();
    });
}

void MainWindow::setNotice(const QString& text, const QString& details, bool good)
{
    notice_->setColour(good ? colours::on : colours::alarm);
    notice_->setText(text);
    notice_->setTip(details);
    notice_->setVisible(!text.isEmpty());
}

void MainWindow::bindPlace()
{
    controls::Form& form = ripdeck_.form;
    tellSize();
    // Nowhere yet, so that the corner of the screen is a place like any other.
    form.left = -1;
    form.top = -1;
    const auto place = [this, &form](const std::int32_t&) {
        if (!writing_)
            move(form.left / twipsPerPixel, form.top / twipsPerPixel);
    };
    bindings_.keep(form.left.follow(place));
    bindings_.keep(form.top.follow(place));
}

/// With its frame, which belongs to the place that it is moved to. Before it is shown that is a guess.
void MainWindow::tellSize()
{
    const QSize shown = frameGeometry().size();
    const QSize guessed = size() + QSize(2, style()->pixelMetric(QStyle::PM_TitleBarHeight));
    const QSize framed = isVisible() ? shown : guessed;
    ripdeck_.form.width = framed.width() * twipsPerPixel;
    ripdeck_.form.height = framed.height() * twipsPerPixel;
}

void MainWindow::moveEvent(QMoveEvent* event)
{
    QWidget::moveEvent(event);
    if (!isVisible() || isMinimized())
        return;
    tellSize();
    const Writing writing(writing_);
    ripdeck_.form.left = pos().x() * twipsPerPixel;
    ripdeck_.form.top = pos().y() * twipsPerPixel;
}

void MainWindow::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    tellSize();
}

void MainWindow::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::WindowStateChange)
        return;
    const Writing writing(writing_);
    ripdeck_.form.windowState =
        isMinimized() ? controls::Form::WindowState::minimised : controls::Form::WindowState::normal;
}

bool MainWindow::mayEnd() const
{
    const bool running = ripdeck_.icntla[state::startButton].picture == state::runningLook;
    return !running || !mayEndRun || mayEndRun();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    event->ignore();
    if (mayEnd())
        ripdeck_.Label28.click();
}

void MainWindow::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
        if (mayEnd())
            ripdeck_.form.keyDown(controls::Key::escape);
        break;
    case Qt::Key_F1: ripdeck_.form.keyDown(controls::Key::f1); break;
    case Qt::Key_F10:
    case Qt::Key_Menu: ripdeck_.tqtxt.mouseUp(controls::MouseButton::left); break;
    default: QWidget::keyPressEvent(event);
    }
}

void MainWindow::mousePressEvent(QMouseEvent* event)
{
    ripdeck_.form.mouseDown(buttonOf(*event));
}

void MainWindow::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        ripdeck_.form.doubleClick();
}

}
