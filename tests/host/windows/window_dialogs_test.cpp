#include "host/windows/window_dialogs.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

namespace tonquay::host {
namespace {

using platform::Dialogs;

/// C: is the host's root.
std::string hostForm(std::wstring_view path)
{
    QString text = QString::fromWCharArray(path.data(), static_cast<qsizetype>(path.size()));
    return text.mid(2).replace('\\', '/').toStdString();
}

std::wstring programForm(std::string_view path)
{
    return L"C:" +
           QString::fromUtf8(path.data(), static_cast<qsizetype>(path.size())).replace('/', '\\').toStdWString();
}

struct Boxes : testing::Test {
    WindowDialogs dialogs{{.hostPath = [](std::wstring_view path) { return hostForm(path); },
                           .programPath = [](std::string_view path) { return programForm(path); }}};
    int ticks = 0;

    /// Presses a key in the box that is open by then.
    static void pressSoon(Qt::Key key)
    {
        QTimer::singleShot(50, [key] { QTest::keyClick(QApplication::activeModalWidget(), key); });
    }
};

TEST_F(Boxes, areAnsweredByKeyboard)
{
    const auto ask = [this](Qt::Key key) {
        pressSoon(key);
        return dialogs.messageBox(L"T", L"Overwrite?", Dialogs::Icon::question, Dialogs::Buttons::yesNo);
    };
    EXPECT_EQ(ask(Qt::Key_Return), Dialogs::Answer::no) << "the harmless one is the default";
    EXPECT_EQ(ask(Qt::Key_Escape), Dialogs::Answer::no);
    EXPECT_EQ(ask(Qt::Key_Y), Dialogs::Answer::yes);
    pressSoon(Qt::Key_Escape);
    EXPECT_EQ(dialogs.messageBox(L"T", L"Done", Dialogs::Icon::information, Dialogs::Buttons::ok), Dialogs::Answer::ok);
}

TEST_F(Boxes, showTheirTextAsItIsWhileTimersGoOn)
{
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [this] { ++ticks; });
    timer.start(5);
    QTimer::singleShot(120, [this] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->text(), "<b>Not</b> found\n\nLook & see");
        EXPECT_EQ(box->textFormat(), Qt::PlainText);
        EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::ArrowCursor) << "somebody has to answer";
        box->close();
    });
    dialogs.setPointer(Dialogs::Pointer::busy);
    dialogs.setPointer(Dialogs::Pointer::busy);
    dialogs.messageBox(L"T", L"      <b>Not</b> found\n\nLook & see", Dialogs::Icon::stop, Dialogs::Buttons::ok);
    EXPECT_GT(ticks, 5);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::BusyCursor);
    dialogs.setPointer(Dialogs::Pointer::normal);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr) << "twice busy is busy once";
}

TEST_F(Boxes, showPathsInTheFormOfThisSystem)
{
    QString text;
    QTimer::singleShot(50, [&text] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        text = box->text();
        box->close();
    });
    dialogs.messageBox(L"T", L"Encoder:  C:\\usr\\my lame  Not Found!\nsaved as: C:\\m\\a.pg1\nD:\\",
                       Dialogs::Icon::none, Dialogs::Buttons::ok);
    EXPECT_EQ(text, "Encoder:  /usr/my lame  Not Found!\nsaved as: /m/a.pg1\nD:\\");
}

TEST_F(Boxes, inputIsTakenOrCancelled)
{
    QTimer::singleShot(50, [] {
        auto* edit = QApplication::activeModalWidget()->findChild<QLineEdit*>();
        ASSERT_NE(edit, nullptr);
        EXPECT_EQ(edit->selectedText(), "Dawn");
        QTest::keyClicks(edit, "Dusk");
        QTest::keyClick(edit, Qt::Key_Return);
    });
    EXPECT_EQ(dialogs.inputBox(L"T", L"New title", L"Dawn"), L"Dusk");
    pressSoon(Qt::Key_Escape);
    EXPECT_EQ(dialogs.inputBox(L"T", L"New title", L"Dawn"), std::nullopt);
}

TEST_F(Boxes, fileIsChosenAmongProgramsAsWell)
{
    const QTemporaryDir folder;
    const auto put = [&folder](const char* name, bool program) {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.setPermissions(program ? QFile::ReadOwner | QFile::ExeOwner : QFile::ReadOwner);
    };
    put("lame.exe", true);
    put("encoder", true);
    const Dialogs::FileQuestion question{.title = L"Select",
                                         .folder = programForm(folder.path().toStdString()),
                                         .filterName = L"MP3 Encoder (*.exe)",
                                         .pattern = L"*.exe",
                                         .fileName = {}};
    const auto choose = [&](const QString& name) {
        QTimer::singleShot(0, [&] {
            QFileDialog* box = nullptr;
            ASSERT_TRUE(QTest::qWaitFor([&box] {
                box = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
                return box != nullptr;
            }));
            EXPECT_EQ(box->windowTitle(), "Select");
            EXPECT_EQ(box->nameFilters(), QStringList({"MP3 Encoder (*.exe)", "Programs (*)"}));
            box->selectFile(folder.filePath(name));
            QTest::keyClick(box->findChild<QLineEdit*>("fileNameEdit"), Qt::Key_Return);
        });
        return dialogs.openFile(question);
    };
    EXPECT_EQ(choose("encoder"), programForm(folder.filePath("encoder").toStdString()));
    EXPECT_EQ(choose("lame.exe"), programForm(folder.filePath("lame.exe").toStdString()));
    pressSoon(Qt::Key_Escape);
    EXPECT_EQ(dialogs.openFile(question), std::nullopt);
}

}
}
