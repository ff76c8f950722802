#include "ui/forms/engine_window.h"

#include "ui/forms/bound_values.h"
#include "ui/forms/bound_widgets.h"
#include "ui/forms/drive_info_box.h"
#include "ui/forms/engine_tracks.h"
#include "ui/forms/wma_options_box.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QVBoxLayout>

#include <array>
#include <memory>

namespace tonquay::ui {

namespace {

void setSteps(QSlider& slider, const char* name, int small, int large)
{
    slider.setSingleStep(small);
    slider.setPageStep(large);
    slider.setAccessibleName(QString::fromLatin1(name));
}

}

class EngineWindow::Dialog final : public QWidget {
public:
    explicit Dialog(state::Cdrip1Controls& form)
        : form_(form),
          tracks_(form.lstTracks),
          wmaOptions_(form),
          driveInfo_(form)
    {
        bindings_.show(form.form.caption, [this](const std::wstring& caption) { setWindowTitle(qtText(caption)); });
        bindings_.show(form.form.enabled, [this](const bool& enabled) { setEnabled(enabled); });
        auto left = std::make_unique<QVBoxLayout>();
        addDisc(*left);
        addTracks(*left);
        addButtons(*left);
        addExtraction(*left);
        auto sides = std::make_unique<QHBoxLayout>();
        sides->addLayout(left.release(), 1);
        sides->addWidget(&driveInfo_);
        setLayout(sides.release());
        bindings_.show(form.form.width, [this](const std::int32_t& width) { showWidth(width); });
    }

protected:
    void closeEvent(QCloseEvent* event) override
    {
        event->ignore();
        hide();
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched == &volumeLabel_ && event->type() == QEvent::MouseButtonDblClick)
            form_.lblVolume.doubleClick();
        return QWidget::eventFilter(watched, event);
    }

private:
    void addDisc(QVBoxLayout& column)
    {
        auto fields = std::make_unique<QFormLayout>();
        bindChoice(drives_, form_.cmbCDDrives, bindings_);
        bindText(artist_, form_.txtCDArtist, bindings_, writing_);
        bindText(album_, form_.txtCDAlbum, bindings_, writing_);
        fields->addRow(QStringLiteral("Select CD Drive : "), &drives_);
        fields->addRow(QStringLiteral("Artist"), &artist_);
        fields->addRow(QStringLiteral("Album"), &album_);
        column.addLayout(fields.release());
        column.addWidget(std::make_unique<QLabel>(QStringLiteral("Click Track to begin playback")).release());
    }

    void addTracks(QVBoxLayout& column)
    {
        auto row = std::make_unique<QHBoxLayout>();
        row->addWidget(&tracks_, 1);
        // Full volume is at the top, where the value is lowest.
        volume_.setInvertedAppearance(true);
        volume_.setInvertedControls(true);
        setSteps(volume_, "Volume", 10, 1);
        setSteps(balance_, "Balance", 1, 10);
        setSteps(position_, "Position", 100, 1000);
        bindSlider(volume_, form_.SliderVolume, bindings_);
        bindSlider(balance_, form_.SliderBalance, bindings_);
        bindSlider(position_, form_.SliderPosition, bindings_);
        row->addWidget(&volume_);
        column.addLayout(row.release(), 1);

        auto grid = std::make_unique<QGridLayout>();
        volumeLabel_.installEventFilter(this);
        bindLabel(volumeLabel_, form_.lblVolume, bindings_);
        bindLabel(balanceLabel_, form_.lblBalance, bindings_);
        bindLabel(positionLabel_, form_.lblTrackPosition, bindings_);
        grid->addWidget(&position_, 0, 0);
        grid->addWidget(&positionLabel_, 0, 1);
        grid->addWidget(&balance_, 1, 0);
        grid->addWidget(&balanceLabel_, 1, 1);
        grid->addWidget(&volumeLabel_, 2, 0);
        grid->setColumnMinimumWidth(1, fontMetrics().horizontalAdvance(QStringLiteral("-100 ")));
        grid->setColumnStretch(0, 1);
        column.addLayout(grid.release());
    }

    void addButtons(QVBoxLayout& column)
    {
        constexpr std::size_t inARow = 5;
        auto grid = std::make_unique<QGridLayout>();
        for (std::size_t i = 0; i < buttons_.size(); ++i) {
            bindButton(buttons_[i], form_.cmdButton[i], bindings_);
            grid->addWidget(&buttons_[i], static_cast<int>(i / inARow), static_cast<int>(i % inARow));
        }
        column.addLayout(grid.release());
    }

    void addExtraction(QVBoxLayout& column)
    {
        auto row = std::make_unique<QHBoxLayout>();
        for (std::size_t i = 0; i < modes_.size(); ++i) {
            QRadioButton& view = modes_[i];
            controls::OptionButton& option = form_.optExtractMode[i];
            bindings_.show(option.caption, [&view](const std::wstring& caption) { view.setText(qtText(caption)); });
            const auto show = [&view](const bool& on) {
                view.setAutoExclusive(on);
                view.setChecked(on);
                view.setAutoExclusive(true);
            };
            show(option.value());
            bindings_.keep(option.follow(show));
            connect(&view, &QRadioButton::clicked, &view, [&option] { option.setValue(true); });
            row->addWidget(&view);
        }
        row->addStretch(1);
        column.addLayout(row.release());
        column.addWidget(&wmaOptions_);
    }

    /// The drive's abilities lie beyond the plain width.
    void showWidth(std::int32_t width)
    {
        driveInfo_.setVisible(width > state::Cdrip1Controls::plainWidth);
        adjustSize();
    }

    state::Cdrip1Controls& form_;
    QComboBox drives_;
    QLineEdit artist_;
    QLineEdit album_;
    EngineTracks tracks_;
    QSlider volume_{Qt::Vertical};
    QSlider balance_{Qt::Horizontal};
    QSlider position_{Qt::Horizontal};
    QLabel volumeLabel_;
    QLabel balanceLabel_;
    QLabel positionLabel_;
    std::array<QPushButton, 10> buttons_;
    std::array<QRadioButton, 2> modes_;
    WmaOptionsBox wmaOptions_;
    DriveInfoBox driveInfo_;
    Bindings bindings_;
    bool writing_ = false;
};

EngineWindow::EngineWindow(state::Cdrip1Controls& form)
    : window_(form.form, [&form] { return std::make_unique<Dialog>(form); })
{}

}
