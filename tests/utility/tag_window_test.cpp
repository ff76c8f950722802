#include "utility/tag_window.h"

#include "made_file.h"
#include "support/fake_host.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPushButton>
#include <QTest>

#include <set>

namespace tonquay::utility {
namespace {

using platform::Dialogs;
using test::MadeFile;

const std::wstring path = L"C:\\Music\\song.mp3";

struct Window : testing::Test {
    test::FakeHost host;
    MadeFile made;
    TagDesk desk{{.files = host.files,
                  .log = host.log,
                  .clock = host.clock,
                  .readContents = [this](const std::string&) -> base::Result<platform::Id3v2Contents> {
                      return *host.files.contents(path) == made.bytes() ? made.contents : platform::Id3v2Contents{};
                  }},
                 host.dialogs};
    std::unique_ptr<TagWindow> window;

    void show(const MadeFile& file)
    {
        made = file;
        host.files.put(path, made.bytes());
        window = std::make_unique<TagWindow>(desk);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        desk.open(path);
        window->takeOver();
    }
    QLineEdit& field(const char* name)
    {
        for (QLineEdit* edit : window->findChildren<QLineEdit*>())
            if (edit->accessibleName() == QLatin1String(name))
                return *edit;
        ADD_FAILURE() << name;
        static QLineEdit none;
        return none;
    }
    QPushButton& key(const char* name)
    {
        for (QPushButton* button : window->findChildren<QPushButton*>())
            if (button->accessibleName() == QLatin1String(name))
                return *button;
        ADD_FAILURE() << name;
        static QPushButton none;
        return none;
    }
    bool says(const QString& text) const
    {
        for (const QLabel* label : window->findChildren<QLabel*>())
            if (label->isVisible() && label->text().contains(text))
                return true;
        return false;
    }
    QListWidget& losses() { return *window->findChild<QListWidget*>(); }
};

TEST_F(Window, whatIsTypedIsWrittenByCtrlSAndReadAnew)
{
    show(MadeFile().text("TIT2", "Dawn").text("TPE1", "Ann"));
    EXPECT_EQ(window->windowTitle(), "song.mp3[*] - ID3v2 tag");
    EXPECT_FALSE(key("Write").isEnabled());
    EXPECT_FALSE(losses().isVisible());
    EXPECT_TRUE(field("Title").hasFocus());
    QTest::keyClicks(&field("Title"), "  Noon");
    EXPECT_TRUE(window->isWindowModified());
    QTest::keySequence(window.get(), QKeySequence::Save);
    EXPECT_THAT(*host.files.contents(path), testing::HasSubstr(test::text("TIT2", "  Noon")));
    EXPECT_EQ(field("Title").text(), "  Noon");
    EXPECT_EQ(field("Artist").text(), "Ann");
    EXPECT_FALSE(window->isWindowModified());
    EXPECT_TRUE(says("ID3v2.3 tag of 257 bytes"));
    QTest::keySequence(window.get(), QKeySequence::Open);
    EXPECT_EQ(host.dialogs.questions.size(), 1U);
}

TEST_F(Window, showsWhatWouldBeLostAndWarnsWhileATextIsTyped)
{
    show(MadeFile().text("TIT2", "Dawn").text("TPE2", "Band"));
    ASSERT_EQ(losses().count(), 1);
    EXPECT_EQ(losses().item(0)->text(), "Album artist: Band");
    EXPECT_FALSE(says("too long"));
    field("Comment").setFocus();
    QTest::keyClicks(&field("Comment"), QString(122, 'x'));
    EXPECT_TRUE(says("Comment: too long for other programs by 1 letter"));
    QTest::keyClick(&field("Comment"), Qt::Key_Backspace);
    EXPECT_FALSE(says("too long"));
    QTest::mouseClick(&key("Write"), Qt::LeftButton);
    EXPECT_EQ(host.dialogs.boxes.size(), 1U);
    EXPECT_EQ(*host.files.contents(path), made.bytes()) << "nobody agreed";
    QTest::mouseClick(&key("Remove"), Qt::LeftButton);
    EXPECT_EQ(host.dialogs.boxes.size(), 2U);
    host.dialogs.answers = {Dialogs::Answer::yes};
    QTest::mouseClick(&key("Remove"), Qt::LeftButton);
    EXPECT_EQ(field("Title").text(), "");
    EXPECT_FALSE(key("Remove").isEnabled());
    EXPECT_TRUE(says("no ID3v2 tag"));
}

TEST_F(Window, enterLeadsThroughAllFieldsToTheWriteKey)
{
    show(MadeFile().text("TIT2", "Dawn"));
    const char* const names[] = {"Title",         "Artist",    "Album",    "Track number",    "Year",
                                 "Genre",         "Comment",   "Composer", "Original artist", "Copyright",
                                 "User web link", "Encoded by"};
    for (const char* name : names) {
        ASSERT_EQ(QApplication::focusWidget(), &field(name));
        QTest::keyClicks(QApplication::focusWidget(), "1");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    }
    ASSERT_EQ(QApplication::focusWidget(), &key("Write"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    for (const char* name : names)
        EXPECT_EQ(field(name).text(), "1");
    EXPECT_FALSE(window->isWindowModified());
}

TEST_F(Window, escapeAsksBeforeChangesAreLost)
{
    show(MadeFile().text("TIT2", "Dawn"));
    QTest::keyClicks(&field("Title"), "x");
    QTest::keyClick(&field("Title"), Qt::Key_Escape);
    EXPECT_TRUE(window->isVisible());
    host.dialogs.answers = {Dialogs::Answer::yes};
    QTest::mouseClick(&key("Close"), Qt::LeftButton);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(host.dialogs.boxes.size(), 2U);
    EXPECT_EQ(*host.files.contents(path), made.bytes());
}

TEST_F(Window, aDroppedFileIsOpened)
{
    window = std::make_unique<TagWindow>(desk);
    window->show();
    EXPECT_TRUE(says("can be dropped here"));
    EXPECT_FALSE(field("Title").isEnabled());
    made.text("TIT2", "Dropped");
    host.files.put(path, made.bytes());
    QMimeData data;
    data.setUrls(
        {QUrl("http://example.com/x.mp3"), QUrl::fromLocalFile(QString::fromStdString(host.files.hostPath(path)))});
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, {});
    static_cast<QObject*>(window.get())->event(&drop);
    ASSERT_TRUE(QTest::qWaitFor([this] { return field("Title").text() == "Dropped"; }, 2000));
    EXPECT_TRUE(field("Title").isEnabled());
}

TEST_F(Window, everythingHasAnAcceleratorOfItsOwnANameAndATip)
{
    show(MadeFile().text("TIT2", "Dawn").text("TPE2", "Band"));
    std::set<QChar> letters;
    const auto take = [&](const QString& caption) {
        const qsizetype at = caption.indexOf('&');
        ASSERT_GE(at, 0) << caption.toStdString();
        EXPECT_TRUE(letters.insert(caption[at + 1].toUpper()).second) << caption.toStdString();
    };
    for (const QLabel* label : window->findChildren<QLabel*>())
        if (label->buddy() != nullptr)
            take(label->text());
    for (const QPushButton* button : window->findChildren<QPushButton*>())
        take(button->text());
    EXPECT_EQ(letters.size(), 17U);
    for (QWidget* widget : window->findChildren<QWidget*>()) {
        if (widget->focusPolicy() == Qt::NoFocus || !widget->isVisible() || widget->objectName().startsWith("qt_"))
            continue;
        QAccessibleInterface* const seen = QAccessible::queryAccessibleInterface(widget);
        ASSERT_NE(seen, nullptr);
        EXPECT_FALSE(seen->text(QAccessible::Name).isEmpty()) << widget->metaObject()->className();
        EXPECT_FALSE(widget->toolTip().isEmpty()) << widget->metaObject()->className();
    }
}

}
}
