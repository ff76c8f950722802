#include "ui/forms/capture_window.h"

#include "support/fake_file_system.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

namespace tonquay::ui {
namespace {

using testing::ElementsAre;

/// The window over a form that only writes down what happens to it.
struct CaptureView : testing::Test {
    state::CdrecaltControls form;
    test::FakeFileSystem files;
    CaptureWindow window{form, files};
    std::vector<std::string> events;

    CaptureView()
    {
        const auto note = [this](const char* event) { return [this, event] { events.emplace_back(event); }; };
        form.form.onLoad = [this] {
            form.lstTracks.add(L"--- Group ---");
            form.lstTracks.add(L"Track  1 - 00:03:12", 1);
            form.lstTracks.add(L"Track  2 - 00:04:05", 2);
            form.lblCDID.caption = L"abc.def_";
            form.txtFile.text = L"C:\\tmp\\Song_1.wav";
        };
        form.lstTracks.doubleClick = note("there");
        form.lstRecord.doubleClick = note("back");
        form.cmdTo.click = note("to");
        form.cmdFrom.click = note("from");
        form.cmdStart.click = note("start");
        form.cmdCancel.click = note("cancel");
        form.cmdRefresh.click = note("refresh");
        form.form.onQueryUnload = note("closing");
    }

    static QWidget* dialog()
    {
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (widget->isVisible() && widget->windowTitle() == "CD-Tonquay - CD Ripper")
                return widget;
        return nullptr;
    }

    void open()
    {
        form.form.show();
        ASSERT_TRUE(QTest::qWaitFor([] { return dialog() != nullptr; }));
        dialog()->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialog()));
    }

    template <class Widget>
    static Widget& named(const char* name)
    {
        for (auto* widget : dialog()->findChildren<Widget*>())
            if (QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name) == name)
                return *widget;
        ADD_FAILURE() << "no " << name;
        static Widget none;
        return none;
    }
};

TEST_F(CaptureView, comesWhenItStaysAndStaysFromOneTrackToTheNext)
{
    form.form.show();
    form.form.unload();
    QTest::qWait(400);
    EXPECT_EQ(dialog(), nullptr) << "the table of tracks is read that way";
    open();
    const QWidget* before = dialog();
    form.form.unload();
    form.form.show();
    bool stayed = true;
    EXPECT_FALSE(QTest::qWaitFor([&] { return !(stayed = stayed && dialog() == before); }, 400));
    EXPECT_TRUE(stayed);
    form.form.unload();
    EXPECT_TRUE(QTest::qWaitFor([] { return dialog() == nullptr; }));
}

TEST_F(CaptureView, everyKeyAndListActsByMouseAndKeyboard)
{
    open();
    EXPECT_FALSE(named<QPushButton>("Cancel").isEnabled());
    form.cmdCancel.enabled = true;
    const std::pair<const char*, Qt::Key> keys[] = {{"Add >", Qt::Key_D},
                                                    {"< Remove", Qt::Key_M},
                                                    {"Start", Qt::Key_S},
                                                    {"Cancel", Qt::Key_C},
                                                    {"Refresh CD Information", Qt::Key_I}};
    for (const auto& [name, key] : keys) {
        QTest::mouseClick(&named<QPushButton>(name), Qt::LeftButton);
        QTest::keyClick(dialog(), key, Qt::AltModifier);
        const std::size_t clicked = events.size();
        EXPECT_TRUE(QTest::qWaitFor([&] { return events.size() > clicked; })) << "a key is seen to be pressed first";
        EXPECT_FALSE(named<QPushButton>(name).toolTip().isEmpty()) << name;
    }
    EXPECT_THAT(events,
                ElementsAre("to", "to", "from", "from", "start", "start", "cancel", "cancel", "refresh", "refresh"));
    events.clear();
    auto& tracks = named<QListWidget>("Available Tracks");
    QTest::keyClick(dialog(), Qt::Key_A, Qt::AltModifier);
    EXPECT_TRUE(tracks.hasFocus());
    QTest::keyClick(&tracks, Qt::Key_End);
    EXPECT_EQ(form.lstTracks.index(), 2);
    QTest::keyClick(&tracks, Qt::Key_Return);
    QTest::keyClick(dialog(), Qt::Key_R, Qt::AltModifier);
    EXPECT_TRUE(named<QListWidget>("Record Tracks").hasFocus());
    QTest::keyClick(dialog(), Qt::Key_F, Qt::AltModifier);
    EXPECT_TRUE(named<QLineEdit>("Filename").hasFocus());
    EXPECT_THAT(events, ElementsAre("there"));
}

TEST_F(CaptureView, showsTheDiscTheFileAndTheWork)
{
    open();
    EXPECT_EQ(named<QLineEdit>("Filename").text(), "/tmp/Song_1.wav");
    EXPECT_TRUE(named<QLineEdit>("Filename").isReadOnly());
    EXPECT_EQ(named<QListWidget>("Available Tracks").count(), 3);
    form.lstTracks.enabled = false;
    form.cmdStart.enabled = false;
    form.lblStatus.caption = L"Track 7";
    form.lblStatus.visible = true;
    EXPECT_FALSE(named<QListWidget>("Available Tracks").isEnabled());
    EXPECT_FALSE(named<QPushButton>("Start").isEnabled());
    EXPECT_EQ(named<QLabel>("Track in hand").text(), "Track 7");
    EXPECT_TRUE(named<QLabel>("Track in hand").isVisible());
    dialog()->close();
    EXPECT_THAT(events, ElementsAre("closing"));
    EXPECT_FALSE(form.form.isLoaded());
}

}
}
