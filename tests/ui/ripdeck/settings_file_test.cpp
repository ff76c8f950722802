#include "desktop_program.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>

#include <functional>
#include <iterator>
#include <sstream>

namespace tonquay::ui {
namespace {

namespace fs = std::filesystem;

/// The settings dialog of the whole program, used by its widgets, and its file as another program's reader of such
/// files takes it apart.
struct SettingsFile : DesktopProgram {
    fs::path kept = folder.path() / "kept";

    SettingsFile() { fs::create_directory(kept); }

    /// For each file that was kept, in their order, what became of which field since the one before: "16=1 20=1".
    std::vector<std::string> changes() const
    {
        const auto read = test::runProgram({"python3", "-c", R"(
import csv, pathlib, sys
before = None
for path in sorted(pathlib.Path(sys.argv[1]).iterdir()):
    fields = [field for row in csv.reader(path.open(newline='', encoding='utf-8')) for field in row]
    assert len(fields) == 22, path
    if before:
        print(*[f'{i}={new}' for i, (old, new) in enumerate(zip(before, fields), 1) if old != new])
    before = fields
)",
                                            kept.string()});
        EXPECT_EQ(read.status, 0) << read.out;
        std::vector<std::string> found;
        std::istringstream lines(read.out);
        for (std::string line; std::getline(lines, line);)
            found.push_back(line);
        return found;
    }

    void keepFile() const
    {
        const auto number = std::distance(fs::directory_iterator(kept), fs::directory_iterator());
        fs::copy_file(folder.path() / "program/acdset.ini", kept / std::to_string(100 + number));
    }

    static void press(const QString& caption)
    {
        for (QWidget* widget : QApplication::allWidgets()) {
            auto* button = qobject_cast<QAbstractButton*>(widget);
            if (button != nullptr && button->isVisible() && button->text().remove('&') == caption) {
                ASSERT_TRUE(button->isEnabled()) << caption.toStdString();
                button->click();
                return;
            }
        }
        FAIL() << "no button " << caption.toStdString();
    }

    static void type(const char* field, const QString& text, bool enter)
    {
        for (QWidget* widget : QApplication::allWidgets()) {
            auto* edit = qobject_cast<QLineEdit*>(widget);
            if (edit == nullptr || !edit->isVisible() || edit->accessibleName() != QLatin1String(field))
                continue;
            ASSERT_TRUE(edit->isEnabled()) << field;
            edit->setFocus();
            edit->selectAll();
            QTest::keyClicks(edit, text);
            if (enter)
                QTest::keyClick(edit, Qt::Key_Return);
            return;
        }
        FAIL() << "no field " << field;
    }

    static void chooseMode(Qt::Key key)
    {
        auto& modes = named<QComboBox>("Rip mode");
        modes.setFocus();
        QTest::keyClick(&modes, key);
    }

    /// Opens the dialog, acts, presses OK, and keeps the file.
    void save(const std::function<void()>& act) const
    {
        click("Setup");
        EXPECT_TRUE(named<QListWidget>("CD drives").isVisible());
        act();
        press("OK");
        EXPECT_FALSE(named<QListWidget>("CD drives").isVisible());
        keepFile();
    }
};

TEST_F(SettingsFile, everyFieldIsWhatWasChosen)
{
    // Two drives, so that there is one to choose.
    fs::create_directory(folder.path() / "second");
    const fs::path second = test::makeDisc(folder.path() / "second", disc);
    setenv("TONQUAY_DISCS", (std::string(std::getenv("TONQUAY_DISCS")) + ":" + second.string()).c_str(), 1);
    start(true, 0);
    const fs::path encoder = folder.path() / "my lame";
    fs::copy_file("/bin/true", encoder);
    std::string encoderField = "C:" + encoder.string();
    std::string folderField = "C:" + (music / "Ö out").string();
    for (std::string* path : {&encoderField, &folderField})
        std::ranges::replace(*path, '/', '\\');
    fs::create_directory(music / "Ö out");
    const std::string lame = "C:\\CDTONQUAY\\lame.exe";

    struct Case {
        const char* name;
        std::function<void()> act;
        std::string changes;
    };
    const Case cases[]{
        {"drive",
         [] {
             auto& drives = named<QListWidget>("CD drives");
             drives.setFocus();
             drives.setCurrentRow(1);
             QTest::keyClick(&drives, Qt::Key_Return);
         },
         "1=E"},
        {"folder", [] { type("Folder", QString::fromStdString("~/Music/Ö out"), true); }, "2=" + folderField},
        {"program file", [] { press("Create program"); }, "3=1"},
        {"names", [] { press("Track number - name"); }, "4=6"},
        {"encoder", [&] { type("Encoder", QString::fromStdString(encoder.string()), true); }, "5=" + encoderField},
        {"encoder that was only typed", [] { type("Encoder", "/bin/false", false); }, ""},
        {"keep WAV", [] { press("WAV"); }, "7=0"},
        {"no MP3", [] { press("MP3"); }, "5=" + lame + " 6=0"},
        {"MP3", [] { press("MP3"); }, "6=1"},
        {"checksums",
         [] {
             press("Advanced >");
             press("Enable CRC Check");
         },
         "8=1"},
        {"variable bitrate", [] { press("Enable VBR Encoding"); }, "9=1"},
        {"quality", [] { type("VBR quality", "7", true); }, "17=7"},
        {"mono", [] { press("Mono"); }, "10=0"},
        {"bitrate", [] { press("320,000 bps"); }, "11=13"},
        {"switches",
         [] {
             press("Advanced >");
             press("Encoder Cmd Line:");
             type("Encoder command line", "-V 2 --\"nohist", false);
         },
         "12=-V 2 --nohist"},
        {"extension",
         [] {
             press("Advanced >");
             press("File Extension:");
             type("File extension", "mpg", true);
         },
         "13=mpg"},
        {"rip mode", [] { chooseMode(Qt::Key_Down); }, "14=1"},
        {"folders of artists", [] { press("Create directory using Artist name"); }, "15=1"},
        {"folders of albums", [] { press("Create directory using Artist\\Album names"); }, "15=2"},
        {"no folders", [] { press("Create directory using Artist\\Album names"); }, "15=0"},
        {"batch", [] { press("Encode as Batch"); }, "16=0"},
        {"single and turbo",
         [] {
             press("Encode Single");
             press("Turbo Mode");
         },
         "16=1 20=1"},
        {"minimise", [] { press("Minimize CD Ripper during encoding"); }, "18=1"},
        {"select all", [] { press("Auto Select All Tracks"); }, "21=1"},
        {"auto close", [] { press("Auto Close"); }, "22=1"},
    };
    keepFile();
    save([] {});
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        save(c.act);
    }
    const std::vector<std::string> changed = changes();
    ASSERT_EQ(changed.size(), 1 + std::size(cases));
    EXPECT_EQ(changed[0], "5=" + lame) << "found at the start; looking at the settings changes nothing else";
    for (std::size_t i = 0; i < std::size(cases); ++i)
        EXPECT_EQ(changed[i + 1], cases[i].changes) << cases[i].name;
}

TEST_F(SettingsFile, formatsOfTheAudioEngine)
{
    start(true);
    const fs::path tools = folder.path() / "program/oggtools";
    fs::create_directory(tools);
    fs::copy_file("/bin/true", tools / "oggenc.exe");
    const std::string ogg = "C:\\CDTONQUAY\\oggtools\\oggenc.exe";
    save([] {});
    save([] {
        press("OGG");
        press("7");
    });
    save([] {});
    save([] { press("WMA"); });
    save([] {});
    EXPECT_EQ(changes(), (std::vector<std::string>{"5=" + ogg + " 6=0 11=7", "", "5= 19=1", ""}));
}

}
}
