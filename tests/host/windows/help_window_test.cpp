#include "host/windows/help_window.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QTextBrowser>

#include <fstream>

namespace tonquay::host {
namespace {

struct Help : testing::Test {
    test::TempFolder folder;
    HelpWindow help{[this](std::wstring_view path) {
        EXPECT_EQ(path, L"C:\\CDTONQUAY\\tqhelp\\cdtonquay.chm");
        return folder / "cdtonquay.chm";
    }};

    Help()
    {
        write("1008-ripper.html", "<html><body><h1>The ripper</h1><p>Dusk and dawn.</p>"
                                  "<a href='1009-preview.html'>on</a><a href='http://example.org/x'>out</a>"
                                  "<img src='http://example.org/x.png'></body></html>");
        write("1009-preview.html", "<html><body><h1>Preview</h1></body></html>");
        write("index.html", "<html><body><h1>Contents</h1></body></html>");
        help.setFile(L"C:\\CDTONQUAY\\tqhelp\\cdtonquay.chm");
    }

    void write(const char* name, const char* html) { std::ofstream(folder / name) << html; }

    static QWidget* window()
    {
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (widget->isVisible() && widget->findChild<QTextBrowser*>() != nullptr)
                return widget;
        return nullptr;
    }
    static QTextBrowser& page() { return *window()->findChild<QTextBrowser*>(); }

    void show(std::int32_t topic)
    {
        help.setTopic(topic);
        help.display();
    }
};

TEST_F(Help, showsTopicsByNumberInOneWindow)
{
    show(1008);
    ASSERT_NE(window(), nullptr);
    EXPECT_TRUE(page().toPlainText().startsWith("The ripper"));
    QWidget* const first = window();
    show(1009);
    EXPECT_EQ(window(), first);
    EXPECT_TRUE(page().toPlainText().startsWith("Preview"));
    page().backward();
    EXPECT_TRUE(page().toPlainText().startsWith("The ripper"));
    QTest::keyClick(first, Qt::Key_Escape);
    EXPECT_EQ(window(), nullptr);
}

TEST_F(Help, saysWhereAMissingTopicWasLookedFor)
{
    show(4711);
    EXPECT_TRUE(page().toPlainText().contains("4711"));
    EXPECT_TRUE(page().toPlainText().contains(QString::fromStdString(folder.path())));
}

TEST_F(Help, takesNothingFromANetwork)
{
    show(1008);
    page().setSource(QUrl("http://example.org/x"));
    EXPECT_TRUE(page().toPlainText().startsWith("The ripper"));
    EXPECT_FALSE(page().loadResource(QTextDocument::ImageResource, QUrl("http://example.org/x.png")).isValid());
}

TEST_F(Help, findsAWordAndGoesRoundAtTheEnd)
{
    show(1008);
    auto& field = *window()->findChild<QLineEdit*>();
    QTest::keyClicks(&field, "d");
    EXPECT_EQ(page().textCursor().selectedText(), "D");
    const int first = page().textCursor().selectionStart();
    for (int i = 0; i < 3; ++i)
        QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_EQ(page().textCursor().selectionStart(), first) << "Dusk, and, dawn, and round again";
}

}
}
