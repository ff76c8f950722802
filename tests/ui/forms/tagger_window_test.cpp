#include "ui/forms/tagger_window.h"
#include "ui/forms/typed_name.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

namespace tonquay::ui {
namespace {

struct Tagger : testing::Test {
    state::Id3autoControls form;
    TaggerWindow window{form};

    Tagger()
    {
        form.form.onLoad = [this] {
            for (const wchar_t* genre : {L"Blues", L"Jazz", L"Rock"})
                form.list1.add(genre);
            form.list1.setIndex(2);
            form.Text2.text = L"Ann Lee";
        };
        form.Command2.click = [this] { form.form.unload(); };
    }

    static QWidget* dialog()
    {
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (widget->isVisible() && widget->windowTitle() == "CD-Tonquay ID3 Tagger")
                return widget;
        return nullptr;
    }

    template <class Widget = QLineEdit>
    static Widget& named(const char* name)
    {
        for (Widget* widget : dialog()->findChildren<Widget*>())
            if (widget->accessibleName() == QLatin1String(name))
                return *widget;
        ADD_FAILURE() << name;
        static Widget none;
        return none;
    }
};

TEST_F(Tagger, showsTheFormAndWritesWhatIsTyped)
{
    form.form.show();
    ASSERT_NE(dialog(), nullptr);
    EXPECT_EQ(named("Artist").text(), "Ann Lee");
    EXPECT_EQ(named<QComboBox>("Genre").currentText(), "Rock");
    named("Year").clear();
    QTest::keyClicks(&named("Year"), "2001");
    EXPECT_EQ(form.Text4.text.get(), L"2001");
    form.Text3.text = L"First Light";
    EXPECT_EQ(named("Album").text(), "First Light");
    QTest::keyClick(&named<QComboBox>("Genre"), Qt::Key_Up);
    EXPECT_EQ(form.list1.chosen().text, L"Jazz");
    dialog()->findChildren<QCheckBox*>()[0]->click();
    EXPECT_EQ(form.Check1.value() + form.Check2.value(), 1);
    dialog()->close();
    EXPECT_FALSE(form.form.isLoaded());
    EXPECT_EQ(dialog(), nullptr);
}

TEST_F(Tagger, enterLeadsOnAndEscapeCancels)
{
    form.Text2.enter = [this] { form.focused = state::TaggerFocus::album; };
    form.form.show();
    QTest::keyClick(&named("Artist"), Qt::Key_Return);
    EXPECT_EQ(dialog()->focusWidget(), &named("Album"));
    QTest::keyClick(&named("Album"), Qt::Key_Escape);
    EXPECT_FALSE(form.form.isLoaded());
}

TEST_F(Tagger, oneThatWorksWhileItLoadsIsNeverSeen)
{
    form.form.onLoad = [this] { form.form.unload(); };
    bool seen = false;
    const auto following = form.form.follow([&](const controls::Form::State&) { seen = seen || dialog() != nullptr; });
    form.form.show();
    EXPECT_FALSE(seen);
    EXPECT_FALSE(form.form.isLoaded());
}

TEST(TypedName, isFitForCommandsAndFolders)
{
    struct Case {
        const wchar_t* typed;
        const wchar_t* tag;
        const wchar_t* folder;
    };
    const Case cases[] = {
        {L"Say \"Ah\"", L"Say 'Ah'", L"Say 'Ah'"},
        {L"two\nlines\u2028more", L"two lines more", L"two lines more"},
        {L"C:\\", L"C:", L"C:\\"},
        {L"end \\ \\", L"end", L"end \\ \\"},
        {L"..", L"..", L""},
        {L" . / ..", L". / ..", L""},
        {L"...and more", L"...and more", L"...and more"},
        {L"", L"", L""},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(typedTag(c.typed), c.tag);
        EXPECT_EQ(typedFolderName(c.typed), c.folder);
    }
}

}
}
