#include "ui/forms/setup_window.h"

#include "support/fake_host.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QRadioButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeView>

#include <algorithm>
#include <map>
#include <stdexcept>

namespace tonquay::ui {
namespace {

using testing::ElementsAre;

/// The dialog over a form that only writes down what happens to it.
struct SetupView : testing::Test {
    test::FakeHost host;
    state::CdriptabControls form;
    SetupWindow window{form, host.files, host.dialogs};
    std::vector<std::string> events;

    SetupView()
    {
        form.form.onLoad = [this] {
            form.List2.add(L"D: Maker Model");
            form.List2.add(L"E: Maker Other");
            for (const wchar_t* mode : {L"Normal", L"Burst"})
                form.List4.add(mode);
            form.Option1.choose(1);
            form.Command17.caption = L"\n\nConvert";
        };
        form.List2.doubleClick = [this] { events.push_back("drive " + std::to_string(form.List2.index())); };
        form.Label12.doubleClick = [this] { events.emplace_back("choose encoder"); };
        form.Label17.visible = true;
        form.Label17.doubleClick = [this] { events.emplace_back("what quality is"); };
        form.Text3.enter = [this] { events.emplace_back("encoder enter"); };
        form.riptofile[state::oggFormat].mouseUp = [this] { events.emplace_back("ogg"); };
        form.dir1.change = [this] { events.emplace_back("folder"); };
        form.List4.click = [this] { events.push_back("mode " + std::to_string(form.List4.index())); };
        form.cmdOK.click = [this] { events.emplace_back("ok"); };
        form.cmdCancel.click = [this] { form.form.unload(); };
        form.Command14.click = [this] { events.emplace_back("add"); };
        form.List5.doubleClick = [this] { events.emplace_back("file"); };
        form.List6.doubleClick = [this] { events.emplace_back("queued"); };
        form.form.keyDown = [this](controls::Key key) {
            events.emplace_back(key == controls::Key::f1 ? "help" : "escape");
        };
        form.form.show();
        dialog().activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog()));
    }

    static QWidget& dialog()
    {
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (widget->isVisible() && widget->windowTitle() == "CD-Tonquay - CD Ripper Setup & Utilities")
                return *widget;
        static QWidget none;
        return none;
    }

    template <class Widget>
    static Widget& named(const QString& name)
    {
        for (Widget* widget : dialog().findChildren<Widget*>())
            if (widget->accessibleName() == name || widget->property("text").toString().remove('&') == name)
                return *widget;
        throw std::runtime_error("no widget is called " + name.toStdString());
    }

    static QTabWidget& tabs() { return *dialog().findChild<QTabWidget*>(); }
};

TEST_F(SetupView, controlsAndWidgetsFollowEachOther)
{
    EXPECT_TRUE(named<QRadioButton>("Track number").isChecked());
    QTest::mouseClick(&named<QRadioButton>("Artist - Album"), Qt::LeftButton);
    EXPECT_EQ(form.Option1.chosen(), 4);
    form.Option1.clear();
    EXPECT_FALSE(named<QRadioButton>("Artist - Album").isChecked()) << "back at the design none is on";

    QTest::mouseClick(&named<QAbstractButton>("OGG"), Qt::LeftButton);
    EXPECT_EQ(form.riptofile[state::oggFormat].value(), 1);
    QTest::keyClick(&named<QAbstractButton>("OGG"), Qt::Key_Space);
    EXPECT_EQ(form.riptofile[state::oggFormat].value(), 0);
    form.riptofile[state::mp3Format].setValue(1);
    EXPECT_TRUE(named<QAbstractButton>("MP3").isChecked());
    EXPECT_THAT(events, ElementsAre("ogg", "ogg"));

    form.Option3[13].visible = false;
    form.Option3[0].caption = L" 0";
    EXPECT_FALSE(named<QRadioButton>("320,000 bps").isVisible());
    EXPECT_TRUE(named<QRadioButton>("0").isVisible());
    form.SSFrame1.visible = false;
    form.SSFrame4.visible = true;
    EXPECT_TRUE(named<QLineEdit>("Encoder command line").isVisible());
    EXPECT_FALSE(named<QLineEdit>("Encoder command line").isEnabled());
    form.Text1.enabled = true;
    form.focusWanted = state::SetupFocus::commandLine;
    EXPECT_TRUE(named<QLineEdit>("Encoder command line").hasFocus());
    EXPECT_EQ(form.focusWanted.get(), state::SetupFocus::none) << "so that it can be wanted again";
}

TEST_F(SetupView, driveIsChosenByDoubleClickOrEnter)
{
    auto& drives = named<QListWidget>("CD drives");
    QTest::mouseClick(drives.viewport(), Qt::LeftButton, {}, drives.visualItemRect(drives.item(1)).center());
    QTest::mouseDClick(drives.viewport(), Qt::LeftButton, {}, drives.visualItemRect(drives.item(1)).center());
    drives.setFocus();
    QTest::keyClick(&drives, Qt::Key_Up);
    QTest::keyClick(&drives, Qt::Key_Return);
    EXPECT_THAT(events, ElementsAre("drive 1", "drive 0"));
    EXPECT_EQ(named<QLabel>("Selected drive").text(), "Selected drive");
    form.List3.add(L"E: Maker Other");
    const auto labels = dialog().findChildren<QLabel*>();
    EXPECT_TRUE(std::any_of(labels.begin(), labels.end(),
                            [](const QLabel* label) { return label->text() == "E: Maker Other"; }));
}

TEST_F(SetupView, pathsStandInTheFormOfThisSystem)
{
    form.Text3.text = L"C:\\CDTONQUAY\\lame.exe";
    auto& encoder = named<QLineEdit>("Encoder");
    EXPECT_EQ(encoder.text(), "/CDTONQUAY/lame.exe");
    encoder.setFocus();
    encoder.selectAll();
    QTest::keyClicks(&encoder, "/usr/bin/enc\"oder");
    EXPECT_EQ(encoder.text(), "/usr/bin/encoder") << "a double quote cannot be kept";
    EXPECT_EQ(form.Text3.text.get(), L"C:\\usr\\bin\\encoder");
    QTest::keyClick(&encoder, Qt::Key_Return);
    QTest::mouseClick(&named<QAbstractButton>("Choose the encoder"), Qt::LeftButton);
    QTest::mouseDClick(&named<QLabel>("Quality"), Qt::LeftButton);
    EXPECT_THAT(events, ElementsAre("encoder enter", "choose encoder", "what quality is"));
    form.Label3.caption = std::wstring(state::ripLocationLead) + L"C:\\home\\ann";
    EXPECT_EQ(named<QLabel>("Current rip location: /home/ann").text(), "Current rip location: /home/ann");
}

TEST_F(SetupView, folderIsTypedOrTakenFromTheTree)
{
    const QTemporaryDir folder;
    QDir(folder.path()).mkdir("Music");
    const std::wstring music = host.files.programPath((folder.path() + "/Music").toStdString());
    host.files.putFolder(music);
    QWidget& page = *tabs().currentWidget();
    auto& path = *page.findChildren<QLineEdit*>().front();
    ASSERT_EQ(path.accessibleName(), "Folder");
    path.setText(folder.path() + "/nowhere");
    QTest::keyClick(&path, Qt::Key_Return);
    path.setText(folder.path() + "/a \"b\"");
    host.files.putFolder(host.files.programPath(path.text().toStdString()));
    QTest::keyClick(&path, Qt::Key_Return);
    EXPECT_THAT(events, ElementsAre()) << "there is no such folder, and one that cannot be kept";
    path.setText(folder.path() + "/Music");
    QTest::keyClick(&path, Qt::Key_Return);
    EXPECT_EQ(form.dir1.path.get(), music);

    auto& tree = *page.findChild<QTreeView*>();
    ASSERT_TRUE(QTest::qWaitFor([&tree] { return tree.currentIndex().data() == "Music"; }));
    tree.setFocus();
    QTest::keyClick(&tree, Qt::Key_Left);
    EXPECT_EQ(form.dir1.path.get(), host.files.programPath(folder.path().toStdString()));
    EXPECT_EQ(path.text(), folder.path());
    EXPECT_THAT(events, ElementsAre("folder", "folder")) << "what code opens is no choice";
}

TEST_F(SetupView, ripModeIsToldOfEachChoice)
{
    form.List4.setIndex(0);
    auto& modes = named<QComboBox>("Rip mode");
    EXPECT_EQ(modes.currentText(), "Normal");
    modes.setFocus();
    QTest::keyClick(&modes, Qt::Key_Down);
    EXPECT_EQ(form.List4.index(), 1);
    EXPECT_THAT(events, ElementsAre("mode 0", "mode 1"));
}

TEST_F(SetupView, rowsOfMp3FilesMoveByKeyboardMouseAndDragging)
{
    form.tab = state::toWavTab;
    EXPECT_EQ(tabs().tabText(tabs().currentIndex()), "MP3 to WAV Utility");
    form.List5.append({L"a.mp3" + std::wstring(150, L' ') + L"C:\\Music", L"b.mp3" + std::wstring(150, L' ') + L"C:"});
    form.List6.append({L"c.mp3" + std::wstring(150, L' ') + L"C:\\Music"});
    auto& files = named<QListView>("MP3 files in the folder");
    auto& queue = named<QListView>("MP3 files to convert");
    EXPECT_EQ(files.model()->index(0, 0).data(), "a.mp3");
    EXPECT_EQ(files.model()->index(0, 0).data(Qt::ToolTipRole), "/Music/a.mp3");
    files.setFocus();
    QTest::keyClick(&files, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(form.List5.selectedCount(), 2);
    form.List5.deselectAll();
    EXPECT_TRUE(files.selectionModel()->selectedIndexes().isEmpty());
    QTest::keyClick(&files, Qt::Key_Return);
    QTest::mouseDClick(queue.viewport(), Qt::LeftButton, {}, queue.visualRect(queue.model()->index(0, 0)).center());
    QTest::keyClick(&queue, Qt::Key_Delete);
    QTest::mouseClick(&named<QAbstractButton>("Add -->"), Qt::LeftButton);
    EXPECT_THAT(events, ElementsAre("file", "queued", "queued", "add"));
    EXPECT_TRUE(files.dragEnabled());
    EXPECT_TRUE(queue.acceptDrops());

    form.converting = state::Mp3InHand{.number = 2, .count = 3, .row = form.List6.row(0)};
    const auto labels = dialog().findChildren<QLabel*>();
    EXPECT_TRUE(std::any_of(labels.begin(), labels.end(),
                            [](const QLabel* label) { return label->text() == "Converting 2 of 3: c.mp3"; }));
    EXPECT_EQ(queue.model()->index(0, 0).data(Qt::AccessibleTextRole), "c.mp3, being converted");
}

TEST_F(SetupView, tagPageShowsItsFieldsAndTakesWhatIsTyped)
{
    state::TagPageControls& page = form.tagPage;
    form.tab = state::tagUtilityTab;
    page.genlist1.rows = std::vector<std::wstring>{L"Blues", L"Rock"};
    page.List55.append({L"a.mp3", L"b.ogg"});
    page.Text8.text = L"Dawn";
    page.genlist1.text = L"Not in the list";
    page.Label10.caption = L"Size: 1 bytes\r\nType: MPEG\r\n";
    page.List55.click = [&] { events.emplace_back(page.List55.isSelected(1) ? "second" : "none"); };
    page.Text7.keyDown = [&] { events.emplace_back("key"); };
    page.genlist1.keyDown = [&] { events.emplace_back("genre key"); };
    page.Text7.enter = [&] { page.focusWanted = state::TagPageFocus::genre; };
    page.genlist1.enter = [&] { events.emplace_back("genre enter"); };
    page.Command4.click = [&] { events.emplace_back("save"); };

    QListView& list = named<QListView>("Files with tags");
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(list.model()->index(1, 0)).center());
    EXPECT_EQ(named<QLineEdit>("Title").text(), "Dawn");
    auto& genre = named<QComboBox>("Genre");
    EXPECT_EQ(genre.currentText(), "Not in the list");
    EXPECT_EQ(genre.count(), 2);
    QLineEdit& artist = named<QLineEdit>("Artist");
    artist.setFocus();
    QTest::keyClick(&artist, Qt::Key_Left);
    QTest::keyClicks(&artist, "Ann");
    EXPECT_EQ(page.Text7.text.get(), L"Ann");
    QTest::keyClick(&artist, Qt::Key_Return);
    ASSERT_EQ(QApplication::focusWidget(), &genre);
    genre.lineEdit()->selectAll();
    QTest::keyClicks(&genre, "X");
    EXPECT_EQ(page.genlist1.text.get(), L"X");
    QTest::keyClick(genre.lineEdit(), Qt::Key_Return);
    QTest::mouseClick(&named<QAbstractButton>("Save"), Qt::LeftButton);
    EXPECT_THAT(events, testing::IsSupersetOf({"second", "key", "genre key", "genre enter", "save"}));
    page.Frame3.visible = false;
    page.Text8.visible = false;
    EXPECT_FALSE(named<QLineEdit>("Title").isVisible());
}

TEST_F(SetupView, keysAndClosing)
{
    QTest::keyClick(&dialog(), Qt::Key_F1);
    QTest::keyClick(&dialog(), Qt::Key_Escape);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(form.tab.get(), state::tagUtilityTab);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(form.tab.get(), state::toWavTab);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(form.tab.get(), state::settingsTab);
    QTest::mouseClick(&named<QAbstractButton>("OK"), Qt::LeftButton);
    EXPECT_THAT(events, ElementsAre("help", "escape", "ok"));
    dialog().close();
    EXPECT_FALSE(form.form.isLoaded()) << "the window manager's close is Cancel";
    EXPECT_FALSE(dialog().isVisible());
}

TEST_F(SetupView, tabKeyGoesFromTheDriveDownToTheKeys)
{
    tabs().setFocus();
    QStringList places;
    for (int stop = 0; stop < 40 && !places.contains(QStringLiteral("Cancel")); ++stop) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        const QWidget& widget = *QApplication::focusWidget();
        places.append(widget.accessibleName().isEmpty() ? widget.property("text").toString().remove('&')
                                                        : widget.accessibleName());
    }
    EXPECT_FALSE(places.contains(QString())) << "a stop at nothing";
    QStringList wanted{"CD drives",  "Folder",          "MP3", "Encoder", "Track number", "Rip mode", "32,000 bps",
                       "Advanced >", "Encode as Batch", "OK",  "Cancel"};
    for (const QString& place : places)
        if (!wanted.isEmpty() && place == wanted.front())
            wanted.removeFirst();
    EXPECT_TRUE(wanted.isEmpty()) << wanted.join(", ").toStdString() << " in " << places.join(", ").toStdString();
}

TEST_F(SetupView, everythingHasANameForThoseWhoCannotSeeIt)
{
    for (const state::SetupTab tab : {state::settingsTab, state::toWavTab}) {
        form.tab = tab;
        for (QWidget* widget : tabs().currentWidget()->findChildren<QWidget*>()) {
            if (!widget->isVisible() || (widget->focusPolicy() & Qt::TabFocus) == 0)
                continue;
            const QAccessibleInterface* seen = QAccessible::queryAccessibleInterface(widget);
            ASSERT_NE(seen, nullptr);
            EXPECT_FALSE(seen->text(QAccessible::Name).trimmed().isEmpty()) << widget->metaObject()->className();
        }
    }
}

/// A letter that leads to two places leads to neither.
TEST_F(SetupView, lettersLeadToOnePlaceEach)
{
    for (const bool ogg : {false, true}) {
        if (ogg) {
            // As the tick of Ogg leaves the page.
            showOggQualities(form);
            form.Label17.enabled = false;
        }
        for (const state::SetupTab tab : {state::settingsTab, state::toWavTab}) {
            form.tab = tab;
            std::map<QChar, QStringList> places;
            const auto note = [&places](const QString& text) {
                for (qsizetype at = text.indexOf('&'); at >= 0 && at + 1 < text.size(); at = text.indexOf('&', at + 2))
                    if (text[at + 1] != '&')
                        places[text[at + 1].toLower()].append(text);
            };
            for (const QWidget* widget : dialog().findChildren<QWidget*>()) {
                if (!widget->isVisible() || !widget->isEnabled())
                    continue;
                if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
                    note(button->text());
                else if (const auto* box = qobject_cast<const QGroupBox*>(widget))
                    note(box->title());
                else if (const auto* label = qobject_cast<const QLabel*>(widget); label != nullptr && label->buddy())
                    note(label->text());
            }
            EXPECT_GT(places.size(), 8U);
            for (const auto& [letter, texts] : places)
                EXPECT_EQ(texts.size(), 1) << texts.join(", ").toStdString();
        }
    }
}

}
}
