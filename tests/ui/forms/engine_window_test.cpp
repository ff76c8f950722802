#include "ui/forms/engine_window.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTest>
#include <QTreeWidget>

namespace tonquay::ui {
namespace {

struct EngineForm : testing::Test {
    state::Cdrip1Controls form;
    EngineWindow window{form};
    std::vector<std::int32_t> played;

    EngineForm()
    {
        form.form.onLoad = [this] {
            form.form.width = state::Cdrip1Controls::plainWidth;
            form.cmbCDDrives.add(L"D: A", 0);
            form.cmbCDDrives.add(L"E: B", 1);
            form.cmbCDDrives.setIndex(0);
            form.cmbWMAEncodingBitrate.add(L"32 Kbps", 32000);
            form.cmbWMAEncodingBitrate.add(L"64 Kbps", 64000);
            form.lstTracks.add(L"01\tDawn\t[00:11]");
            form.lstTracks.add(L"02\tDusk\t[00:12]");
        };
        form.lstTracks.click = [this] { played.push_back(form.lstTracks.index()); };
        form.form.show();
    }

    static QWidget* dialog()
    {
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (widget->windowTitle() == "CD-Tonquay - CD Ripper")
                return widget;
        return nullptr;
    }

    template <class Widget>
    static Widget& with(const char* text)
    {
        for (Widget* widget : dialog()->findChildren<Widget*>()) {
            if constexpr (requires { widget->text(); })
                if (widget->text() == QLatin1String(text))
                    return *widget;
            if (widget->accessibleName() == QLatin1String(text))
                return *widget;
        }
        ADD_FAILURE() << text;
        static Widget none;
        return none;
    }
};

TEST_F(EngineForm, listsShowRowsAndChooseThem)
{
    auto& drives = *dialog()->findChildren<QComboBox*>().front();
    EXPECT_EQ(drives.currentText(), "D: A");
    form.cmbCDDrives.setIndex(1);
    EXPECT_EQ(drives.currentText(), "E: B");
    auto& rates = with<QComboBox>("WMA Encoding Bitrate");
    QTest::keyClick(&rates, Qt::Key_Down);
    QTest::keyClick(&rates, Qt::Key_Down);
    EXPECT_EQ(form.cmbWMAEncodingBitrate.chosen().itemData, 64000);

    auto& tracks = with<QTreeWidget>("Tracks");
    ASSERT_EQ(tracks.topLevelItemCount(), 2);
    EXPECT_EQ(tracks.topLevelItem(1)->text(1), "Dusk");
    const auto click = [&tracks](int row) {
        QTest::mouseClick(tracks.viewport(), Qt::LeftButton, {},
                          tracks.visualItemRect(tracks.topLevelItem(row)).center());
    };
    click(1);
    click(1);
    QTest::keyClick(&tracks, Qt::Key_Up);
    EXPECT_EQ(played, (std::vector{1, 1, 0})) << "the same one again plays again";
}

TEST_F(EngineForm, keysTicksAndOptionsWork)
{
    int pressed = 0;
    form.cmdButton[state::engineExtract].click = [&pressed] { ++pressed; };
    with<QPushButton>("&Extract").click();
    form.cmdButton[state::engineLock].enabled = false;
    EXPECT_FALSE(with<QPushButton>("&Lock").isEnabled());
    EXPECT_EQ(pressed, 1);

    form.optExtractMode[0].click = [this] {
        form.optExtractMode[1].setValue(false);
        form.picWMAExtractOptionsVisible = false;
    };
    EXPECT_TRUE(with<QRadioButton>("W&MA File").isChecked());
    EXPECT_TRUE(with<QLineEdit>("Genre").isVisible());
    with<QRadioButton>("&WAV File").click();
    EXPECT_TRUE(form.optExtractMode[0].value());
    EXPECT_FALSE(with<QLineEdit>("Genre").isVisible());

    with<QCheckBox>("WMA File Tags").click();
    EXPECT_EQ(form.chkWMAFileTags.value(), 0);
    QTest::keyClicks(&with<QLineEdit>("Rating"), "5");
    EXPECT_EQ(form.txtWMATags[4].text.get(), L"5");
}

TEST_F(EngineForm, slidersDragAndClickAndFollow)
{
    int clicks = 0;
    form.SliderPosition.click = [&clicks] { ++clicks; };
    auto& position = with<QSlider>("Position");
    form.SliderPosition.setValue(5000);
    EXPECT_EQ(position.value(), 5000);
    EXPECT_EQ(clicks, 0) << "only shown";
    QTest::keyClick(&position, Qt::Key_Right);
    EXPECT_EQ(form.SliderPosition.value(), 5100);
    EXPECT_EQ(clicks, 1);
    auto& volume = with<QSlider>("Volume");
    EXPECT_EQ(volume.value(), -50);
    QTest::keyClick(&volume, Qt::Key_Up);
    EXPECT_EQ(form.SliderVolume.value(), -60) << "louder";
}

TEST_F(EngineForm, theDrivesAbilitiesLieBeyondThePlainWidth)
{
    auto& audio = with<QCheckBox>("Drive can read CD audio");
    EXPECT_FALSE(audio.isVisible());
    form.chkRWFlags[9].setValue(1);
    form.form.width = state::Cdrip1Controls::driveInfoWidth;
    EXPECT_TRUE(audio.isVisible() && audio.isChecked());
    QTest::mouseClick(&audio, Qt::LeftButton);
    EXPECT_EQ(form.chkRWFlags[9].value(), 1) << "a display";
}

TEST_F(EngineForm, itIsDisabledDuringAnExtractionAndClosingItOnlyHidesIt)
{
    form.form.enabled = false;
    EXPECT_FALSE(dialog()->isEnabled());
    form.form.enabled = true;
    dialog()->close();
    EXPECT_FALSE(dialog()->isVisible());
    EXPECT_TRUE(form.form.isLoaded());
}

}
}
