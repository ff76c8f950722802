#include "launcher/launcher_window.h"
#include "support/fake_host.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>

namespace tonquay::launcher {
namespace {

using platform::DriveDescription;

class FakeShelf final : public Shelf {
public:
    explicit FakeShelf(test::FakeDiscs& discs) : discs_(discs) {}

    platform::Discs& discs() override { return discs_; }
    base::Status open(const std::string& image) override
    {
        opened.push_back(image);
        if (image.find("bad") != std::string::npos)
            return base::Failure{base::Failure::Kind::invalid, image, "line 3: no such file"};
        discs_.list.insert(discs_.list.begin(), {.letter = L'D', .hostPath = image, .image = true, .disc = true});
        discs_.tables[L'D'] = {
            .tracks = {{.number = 1, .sectorCount = 4500}}, .names = {.artist = L"Image Artist"}, .discId = "image"};
        return {};
    }

    std::vector<std::string> opened;

private:
    test::FakeDiscs& discs_;
};

struct Window : testing::Test {
    test::FakeHost host;
    FakeShelf shelf{host.discs};
    std::unique_ptr<LaunchDesk> desk;
    std::unique_ptr<LauncherWindow> window;
    bool finished = false;

    void show()
    {
        host.files.putFolder(L"C:\\CDTONQUAY");
        host.files.putFolder(L"C:\\Names");
        host.processes.scripts = {{.named = L"ripdeck"}};
        desk = std::make_unique<LaunchDesk>(host.platform(), Machine{.programFolder = L"C:\\CDTONQUAY",
                                                                     .keptNamesFolder = L"C:\\Names",
                                                                     .ripper = L"C:\\usr\\bin\\ripdeck",
                                                                     .musicFolder = {},
                                                                     .mixer = {},
                                                                     .programs = {}});
        window = std::make_unique<LauncherWindow>(*desk, shelf);
        window->finished = [this] { finished = true; };
        window->show();
    }

    void putDisc()
    {
        host.discs.list = {{.letter = L'E', .vendor = "ACME", .product = "CD-1", .hostPath = "/dev/sr0", .disc = true}};
        host.discs.tables[L'E'] = {.tracks = {{.number = 1, .sectorCount = 4500}, {.number = 2, .sectorCount = 9000}},
                                   .names = {.artist = L"Ann Lee", .titles = {L"Dawn", L"Noon"}},
                                   .discId = "disc"};
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
    QTableWidget& titles() { return *window->findChild<QTableWidget*>(); }
    QListWidget& drives() { return *window->findChild<QListWidget*>(); }
    QPushButton& start()
    {
        for (QPushButton* button : window->findChildren<QPushButton*>())
            if (button->text() == "&Start ripper")
                return *button;
        static QPushButton none;
        return none;
    }
    bool says(const QString& text)
    {
        for (const QLabel* label : window->findChildren<QLabel*>())
            if (label->isVisible() && label->text().contains(text))
                return true;
        return false;
    }
};

TEST_F(Window, showsTheDiscAndStartsTheRipperWithEditedNames)
{
    putDisc();
    show();
    EXPECT_EQ(field("Artist").text(), "Ann Lee");
    EXPECT_TRUE(says("CD-Text"));
    EXPECT_EQ(titles().item(1, 1)->text(), "Noon");
    EXPECT_EQ(titles().item(1, 2)->text(), "2:00");
    field("Album").setText("  Light ");
    titles().item(0, 1)->setText("Morning");
    QTest::keyClick(&start(), Qt::Key_Return);
    EXPECT_TRUE(finished);
    EXPECT_THAT(*host.files.contents(L"C:\\CDTONQUAY\\audiocd.dat"),
                testing::StartsWith("\"Ann Lee\",\"Light\",2\r\n\"Morning\"\r\n\"Noon\"\r\n"));
    EXPECT_TRUE(host.files.fileExists(L"C:\\Names\\disc.json"));
}

TEST_F(Window, withoutADriveItOffersAnImageAndTakesADroppedOne)
{
    show();
    EXPECT_FALSE(start().isEnabled());
    EXPECT_TRUE(says("open a disc image"));
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile("/tmp/a disc.cue")});
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, {});
    static_cast<QObject*>(window.get())->event(&drop);
    EXPECT_THAT(shelf.opened, testing::ElementsAre("/tmp/a disc.cue"));
    EXPECT_EQ(field("Artist").text(), "Image Artist");
    EXPECT_TRUE(start().isEnabled());
    window->openImage("/tmp/bad.cue");
    EXPECT_TRUE(says("line 3: no such file"));
}

TEST_F(Window, discThatComesAndGoesShowsWhileTypedNamesStay)
{
    host.discs.list = {{.letter = L'E', .hostPath = "/dev/sr0", .problemText = "Close the tray."}};
    show();
    EXPECT_TRUE(says("Close the tray."));
    putDisc();
    ASSERT_TRUE(QTest::qWaitFor([this] { return start().isEnabled(); }, 3000));
    field("Artist").setText("Typed");
    host.discs.list.push_back({.letter = L'F', .hostPath = "/dev/sr1", .problemText = "No disc."});
    ASSERT_TRUE(QTest::qWaitFor([this] { return drives().count() == 2; }, 3000));
    EXPECT_EQ(field("Artist").text(), "Typed");
    host.discs.list[0].disc = false;
    ASSERT_TRUE(QTest::qWaitFor([this] { return !start().isEnabled(); }, 3000));
    EXPECT_EQ(titles().rowCount(), 0);
}

TEST_F(Window, saysWhyTheRipperDoesNotStart)
{
    putDisc();
    show();
    host.processes.scripts.clear();
    QTest::mouseClick(&start(), Qt::LeftButton);
    EXPECT_FALSE(finished);
    EXPECT_TRUE(says("could not be started"));
    QTest::keyClick(window.get(), Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
}

}
}
