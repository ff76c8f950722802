#include "ui/forms/main_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QHelpEvent>
#include <QListView>
#include <QProgressBar>
#include <QPushButton>
#include <QSlider>
#include <QTest>
#include <QToolTip>

#include <set>
#include <type_traits>

namespace tonquay::ui {
namespace {

using controls::MouseButton;
using testing::ElementsAre;

struct Window : testing::Test {
    state::RipdeckControls main;
    state::Theme theme;
    MainWindow window{main, theme};
    std::vector<std::string> heard;

    Window()
    {
        for (const wchar_t* row :
             {L"Track 01\t3:00\t30.3\tDawn", L"Track 02\t4:00\t40.4\tNoon", L"Track 03\t5:00\t50.5\tDusk"})
            main.list1.add(row);
        main.form.show();
        QApplication::processEvents();
    }

    template <class Widget>
    Widget& named(const char* name)
    {
        for (Widget* widget : window.findChildren<Widget*>())
            if (widget->accessibleName() == QLatin1String(name))
                return *widget;
        ADD_FAILURE() << "nothing is called " << name;
        static std::conditional_t<std::is_abstract_v<Widget>, QPushButton, Widget> none;
        return none;
    }

    QListView& tracks() { return named<QListView>("Tracks"); }
    QPoint placeOf(int row) { return tracks().visualRect(tracks().model()->index(row, 0)).center(); }

    std::vector<bool> selected() const
    {
        std::vector<bool> rows;
        for (std::int32_t i = 0; i < main.list1.rowCount(); ++i)
            rows.push_back(main.list1.isSelected(i));
        return rows;
    }

    template <class Control>
    void record(Control& control, const std::string& name)
    {
        control.mouseDown = [this, name](MouseButton) { heard.push_back(name + " down"); };
        control.mouseUp = [this, name](MouseButton) { heard.push_back(name + " up"); };
    }
};

TEST_F(Window, keysPressAndReleaseTheirControlsByMouseAndKeyboard)
{
    struct Case {
        const char* name;
        controls::Image* image;
    };
    const Case cases[] = {
        {"Previous track", &main.icntla[0]},
        {"Next track", &main.icntla[1]},
        {"Play", &main.icntla[2]},
        {"Pause", &main.icntla[3]},
        {"Stop", &main.icntla[4]},
        {"Eject", &main.icntla[5]},
        {"Rip", &main.icntla[6]},
        {"Player", &main.image10[0]},
        {"Setup", &main.image10[1]},
        {"TagUtil", &main.image10[2]},
        {"RipPart", &main.image10[3]},
        {"Refresh", &main.image10[4]},
        {"All", &main.image10[5]},
        {"Clear", &main.image10[6]},
        {"Tags", &main.image10[7]},
        {"Mixer", &main.Image15},
    };
    for (const Case& c : cases) {
        record(*c.image, c.name);
        auto& key = named<QAbstractButton>(c.name);
        const std::string down = std::string(c.name) + " down";
        const std::string up = std::string(c.name) + " up";
        heard.clear();
        QTest::mouseClick(&key, Qt::LeftButton);
        EXPECT_THAT(heard, ElementsAre(down, up));
        heard.clear();
        QTest::keyClick(&key, Qt::Key_Space);
        EXPECT_THAT(heard, ElementsAre(down, up)) << "by the space bar";
        heard.clear();
        QTest::mousePress(&key, Qt::LeftButton);
        QTest::mouseRelease(&key, Qt::LeftButton, {}, QPoint(-50, -50));
        EXPECT_THAT(heard, ElementsAre(down)) << "released beside the key";
        EXPECT_FALSE(key.shortcut().isEmpty());
        EXPECT_TRUE(key.toolTip().contains(key.shortcut().toString())) << key.toolTip().toStdString();
        c.image->enabled = false;
        heard.clear();
        QTest::mouseClick(&key, Qt::LeftButton);
        EXPECT_TRUE(heard.empty()) << "disabled";
    }
}

TEST_F(Window, acceleratorsAreOneEach)
{
    std::set<QString> seen;
    for (const QAbstractButton* key : window.findChildren<QAbstractButton*>())
        if (!key->shortcut().isEmpty()) {
            EXPECT_TRUE(seen.insert(key->shortcut().toString()).second) << key->shortcut().toString().toStdString();
        }
    EXPECT_GE(seen.size(), 18U);
}

TEST_F(Window, everythingThatTakesTheKeyboardHasANameAndSaysWhatItIs)
{
    int count = 0;
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        if (widget->focusPolicy() == Qt::NoFocus || !widget->isVisible())
            continue;
        QAccessibleInterface* face = QAccessible::queryAccessibleInterface(widget);
        ASSERT_NE(face, nullptr);
        EXPECT_FALSE(face->text(QAccessible::Name).isEmpty()) << widget->metaObject()->className();
        EXPECT_NE(face->role(), QAccessible::NoRole);
        ++count;
    }
    EXPECT_GT(count, 18);
    QAccessibleInterface* list = QAccessible::queryAccessibleInterface(&tracks());
    ASSERT_GT(list->childCount(), 1);
    EXPECT_EQ(list->child(1)->text(QAccessible::Name), QStringLiteral("Track 02, Noon, 4:00, 40.4 MB"));
    main.Trackprogress.value = std::int16_t{41};
    EXPECT_EQ(named<QProgressBar>("Track Progress").value(), 41);
}

TEST_F(Window, selectionGoesBothWaysAndTheCursorByItself)
{
    QTest::mouseClick(tracks().viewport(), Qt::LeftButton, {}, placeOf(1));
    EXPECT_THAT(selected(), ElementsAre(false, true, false));
    EXPECT_EQ(main.list1.cursor(), 1);
    QTest::keyClick(&tracks(), Qt::Key_Down);
    EXPECT_EQ(main.list1.cursor(), 2);
    EXPECT_THAT(selected(), ElementsAre(false, true, false)) << "arrows leave the selection";
    QTest::keyClick(&tracks(), Qt::Key_Space);
    EXPECT_THAT(selected(), ElementsAre(false, true, true));
    QTest::mouseClick(tracks().viewport(), Qt::LeftButton, {}, placeOf(1));
    EXPECT_THAT(selected(), ElementsAre(false, false, true)) << "a second click takes it out";
    QTest::keyClick(&tracks(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_THAT(selected(), ElementsAre(true, true, true));

    main.list1.deselectAll();
    main.list1.select(0, true);
    main.list1.setCursor(2);
    EXPECT_THAT(tracks().selectionModel()->selectedIndexes(), ElementsAre(tracks().model()->index(0, 0)));
    EXPECT_EQ(tracks().currentIndex().row(), 2);
    EXPECT_THAT(selected(), ElementsAre(true, false, false)) << "showing it writes nothing back";
    EXPECT_TRUE(named<QAbstractButton>("Rip").isEnabled());
}

TEST_F(Window, rightButtonMovesTheCursorAndIsForwarded)
{
    MouseButton pressed = MouseButton::none;
    main.list1.mouseDown = [&](MouseButton button) { pressed = button; };
    QTest::mouseClick(tracks().viewport(), Qt::RightButton, {}, placeOf(2));
    EXPECT_EQ(pressed, MouseButton::right);
    EXPECT_EQ(main.list1.cursor(), 2);
    EXPECT_THAT(selected(), ElementsAre(false, false, false));
}

TEST_F(Window, listThatEmptiesAndFillsAgainUnderTheUsersHand)
{
    main.list1.mouseDown = [this](MouseButton) { main.list1.clear(); };
    QTest::mouseClick(tracks().viewport(), Qt::LeftButton, {}, placeOf(1));
    EXPECT_EQ(tracks().model()->rowCount(), 0);
    for (int i = 0; i < 99; ++i)
        main.list1.add(L"Track\t0:01\t0.2\tOne of many");
    EXPECT_EQ(tracks().model()->rowCount(), 99);
    main.list1.enabled = false;
    EXPECT_FALSE(tracks().isEnabled());
    main.list1.enabled = true;
    for (int i = 0; i < 99; ++i)
        main.list1.select(i, true);
    main.list1.scrollTo(0);
    EXPECT_TRUE(tracks().viewport()->rect().intersects(tracks().visualRect(tracks().model()->index(0, 0))));
}

TEST_F(Window, slidersMoveTheModelAndFollowItWithoutEcho)
{
    int changes = 0;
    main.SliderVolume.change = [&] { ++changes; };
    auto& volume = named<QSlider>("Volume");
    EXPECT_EQ(volume.value(), 50);
    volume.setValue(90);
    EXPECT_EQ(main.SliderVolume.value(), -90) << "to the right is louder";
    EXPECT_EQ(changes, 1);
    main.SliderVolume.setValue(-20);
    EXPECT_EQ(volume.value(), 20);
    named<QSlider>("Balance").setValue(-70);
    EXPECT_EQ(main.SliderBalance.value(), -70);

    MouseButton onPanel = MouseButton::none;
    main.SSPanel1.mouseUp = [&](MouseButton button) { onPanel = button; };
    QTest::mouseClick(&volume, Qt::RightButton);
    EXPECT_EQ(onPanel, MouseButton::right) << "also above what the panel carries";
    main.SSPanel1.visible = false;
    EXPECT_FALSE(volume.isVisible());
}

TEST_F(Window, captionsForwardTheirButtonAndElideWithTheWholeTextInTheTip)
{
    std::vector<MouseButton> presses;
    main.Label12.mouseDown = [&](MouseButton button) { presses.push_back(button); };
    const std::wstring longName(400, L'W');
    main.Label12.caption = longName;
    auto& line = named<QWidget>("Artist and album");
    QTest::mousePress(&line, Qt::LeftButton);
    QTest::mousePress(&line, Qt::RightButton);
    EXPECT_THAT(presses, ElementsAre(MouseButton::left, MouseButton::right));
    EXPECT_GT(main.Label12.width.get(), window.width() * 15) << "as wide as its text";
    QHelpEvent asked(QEvent::ToolTip, QPoint(5, 5), line.mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(&line, &asked);
    EXPECT_EQ(QToolTip::text(), QString::fromStdWString(longName));
    EXPECT_LT(line.width(), window.width());
}

TEST_F(Window, trackBarTellsWhereItWasClicked)
{
    double fraction = -1;
    main.Trackprogress.mouseUp = [&](double at) { fraction = at; };
    auto& bar = named<QProgressBar>("Track Progress");
    QTest::mouseClick(&bar, Qt::LeftButton, {}, QPoint(bar.width() / 4, bar.height() / 2));
    EXPECT_NEAR(fraction, 0.25, 0.02);
}

TEST_F(Window, windowAnswersKeysBackgroundAndClosing)
{
    main.form.keyDown = [&](controls::Key key) { heard.push_back(key == controls::Key::f1 ? "F1" : "Esc"); };
    main.form.mouseDown = [&](MouseButton button) { heard.push_back(button == MouseButton::right ? "right" : "left"); };
    main.form.doubleClick = [&] { heard.emplace_back("double"); };
    record(main.Label28, "Power");
    QTest::keyClick(&tracks(), Qt::Key_F1);
    QTest::keyClick(&tracks(), Qt::Key_Escape);
    EXPECT_THAT(heard, ElementsAre("F1", "Esc")) << "from wherever the keyboard is";
    heard.clear();
    QTest::mousePress(&window, Qt::RightButton, {}, QPoint(3, 3));
    QTest::mouseDClick(&window, Qt::LeftButton, {}, QPoint(3, 3));
    EXPECT_THAT(heard, testing::Contains("right"));
    EXPECT_THAT(heard, testing::Contains("double"));
    heard.clear();
    window.close();
    EXPECT_THAT(heard, ElementsAre("Power down", "Power up"));
    EXPECT_TRUE(window.isVisible()) << "the command decides";
}

TEST_F(Window, placeAndStateFollowTheFormAndTellIt)
{
    main.form.left = 1500;
    main.form.top = 3000;
    EXPECT_EQ(window.pos(), QPoint(100, 200));
    window.move(20, 30);
    QApplication::processEvents();
    EXPECT_EQ(main.form.left.get(), 300);
    EXPECT_EQ(main.form.top.get(), 450);
    EXPECT_EQ(main.form.width.get(), window.frameGeometry().width() * 15) << "what it takes of the screen";
    main.form.windowState = controls::Form::WindowState::minimised;
    EXPECT_TRUE(window.isMinimized());
    window.showNormal();
    QApplication::processEvents();
    EXPECT_EQ(main.form.windowState.get(), controls::Form::WindowState::normal) << "by the user's hand";

    main.form.windowState = controls::Form::WindowState::minimised;
    main.form.enabled = false;
    EXPECT_FALSE(window.isEnabled());
    main.form.enabled = true;
    EXPECT_TRUE(window.isEnabled());
    EXPECT_FALSE(window.isMinimized()) << "back when the dialog before it is through";
}

TEST_F(Window, fitsASmallScreen)
{
    EXPECT_LE(window.minimumSizeHint().width(), 792);
    EXPECT_LE(window.minimumSizeHint().height(), 560);
}

}
}
