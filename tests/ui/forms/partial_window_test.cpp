#include "ui/forms/partial_window.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

namespace tonquay::ui {
namespace {

using state::PartialFocus;
using testing::ElementsAre;

/// The dialog over a form that only writes down what happens to it.
struct Partial : testing::Test {
    state::TrkcustControls form;
    PartialWindow window{form};
    std::vector<std::string> events;

    Partial()
    {
        form.form.onLoad = [this] { fill(); };
        form.ListView1.pick = [this] { events.push_back("pick " + std::to_string(form.ListView1.selected())); };
        form.Text1.keyDown = [this] { events.emplace_back("start key"); };
        form.Text1.enter = [this] { events.emplace_back("start enter"); };
        form.Text1.leave = [this] { events.emplace_back("start leave"); };
        form.Text2.leave = [this] { events.emplace_back("end leave"); };
        form.Command1.click = [this] { events.emplace_back("ok"); };
        form.Command2.click = [this] { form.form.unload(); };
        form.form.keyDown = [this](controls::Key) { form.form.unload(); };
        form.form.mouseDown = [this](controls::MouseButton) { events.emplace_back("form"); };
        for (controls::Label& caption : form.captions)
            caption.mouseUp = [this](controls::MouseButton) { events.emplace_back("caption"); };
        form.form.show();
        dialog().activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog()));
    }

    void fill()
    {
        form.ListView1.fill(
            {L"Track     ", L"Start Time"},
            {{L"Row1", {L"Track 01", L"0:00"}}, {L"Row2", {L"Track 02", L"0:10"}}, {L"Row3", {L"Track 03", L"0:20"}}});
        form.ListView1.select(0);
    }

    static QWidget& dialog()
    {
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (widget->isVisible() && widget->windowTitle() == "CD-Tonquay - Rip partial track(s)")
                return *widget;
        static QWidget none;
        return none;
    }

    static QTreeWidget& list() { return *dialog().findChild<QTreeWidget*>(); }
    static QLineEdit& field(const char* name)
    {
        for (QLineEdit* edit : dialog().findChildren<QLineEdit*>())
            if (edit->accessibleName() == QLatin1String(name))
                return *edit;
        ADD_FAILURE() << name;
        static QLineEdit none;
        return none;
    }
};

TEST_F(Partial, showsTheTableAndPicksByMouseAndKeyboard)
{
    ASSERT_EQ(list().topLevelItemCount(), 3);
    EXPECT_EQ(list().headerItem()->text(1), "Start Time");
    EXPECT_EQ(list().topLevelItem(1)->text(1), "0:10");
    EXPECT_EQ(list().currentItem(), list().topLevelItem(0));
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, list().visualItemRect(list().topLevelItem(2)).center());
    QTest::keyClick(&list(), Qt::Key_Up);
    EXPECT_THAT(events, ElementsAre("pick 2", "pick 1"));
    form.ListView1.fill({L"Track"}, {{L"Row1", {L"Track 01"}}});
    form.ListView1.select(0);
    EXPECT_EQ(list().topLevelItemCount(), 1);
    EXPECT_THAT(events, testing::SizeIs(2)) << "what code does picks nothing";
}

TEST_F(Partial, fieldsTellOfKeysEnterAndLeaving)
{
    QLineEdit& start = field("Start Time (mm:ss)");
    form.focused = PartialFocus::start;
    EXPECT_EQ(dialog().focusWidget(), &start);
    QTest::keyClicks(&start, "1:05");
    EXPECT_EQ(form.Text1.text.get(), L"1:05");
    QTest::keyClick(&start, Qt::Key_Return);
    EXPECT_THAT(events, ElementsAre("start key", "start key", "start key", "start key", "start key", "start enter"));
    events.clear();
    QTest::keyClick(&start, Qt::Key_Tab);
    EXPECT_EQ(form.focused.get(), PartialFocus::end);
    form.focused = PartialFocus::list;
    EXPECT_THAT(events, ElementsAre("start leave", "end leave")) << "a key that moves on is none for the field";
    form.Text1.text = L"0:07";
    EXPECT_EQ(start.text(), "0:07");
}

TEST_F(Partial, canBeUsedByKeyboardAlone)
{
    form.focused = PartialFocus::list;
    QTest::keyClick(&list(), Qt::Key_Return);
    EXPECT_EQ(form.focused.get(), PartialFocus::start) << "on to the picked track's start";
    for (const PartialFocus next : {PartialFocus::end, PartialFocus::okButton}) {
        QTest::keyClick(dialog().focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(form.focused.get(), next);
    }
    events.clear();
    QTest::keyClick(dialog().focusWidget(), Qt::Key_Return);
    EXPECT_THAT(events, ElementsAre("ok"));
    QTest::keyClick(dialog().focusWidget(), Qt::Key_Escape);
    EXPECT_FALSE(form.form.isLoaded());
}

TEST_F(Partial, clicksBesideTheFieldsAreTheFormsAndTheCaptions)
{
    QTest::mouseClick(dialog().findChildren<QLabel*>()[0], Qt::LeftButton);
    QTest::mouseClick(&dialog(), Qt::LeftButton, {}, QPoint(5, 5));
    EXPECT_THAT(events, testing::IsSupersetOf({"caption", "form"}));
    dialog().close();
    EXPECT_FALSE(form.form.isLoaded());
}

TEST_F(Partial, everythingHasANameAndATip)
{
    for (const QWidget* widget : std::initializer_list<const QWidget*>{
             &list(), &field("Track"), &field("Start Time (mm:ss)"), &field("End Time (mm:ss)")}) {
        EXPECT_FALSE(widget->accessibleName().isEmpty());
        EXPECT_FALSE(widget->toolTip().isEmpty());
    }
}

}
}
