#include "state/suite_files.h"

#include "base/sequential.h"
#include "base/text.h"
#include "state/settings_text.h"

namespace tonquay::state {

namespace {

constexpr int dataFolderField = 16;

void readFont(base::SequentialReader& reader, DisplayFont& font)
{
    reader.read(font.name);
    reader.read(font.size);
    for (std::int16_t& flag : font.style)
        reader.read(flag);
    reader.read(font.colour);
}

}

std::wstring readDataFolder(platform::FileSystem& files, platform::Diagnostics& log, const Folders& folders)
{
    std::wstring dataFolder;
    if (const auto text = settingsText(files, log, inFolder(folders.appFolder, L"tqwin.ini"))) {
        base::SequentialReader reader(*text);
        reader.skip(dataFolderField - 1);
        reader.read(dataFolder);
    }
    dataFolder = base::trim(dataFolder);
    return dataFolder.size() < 3 ? inFolder(folders.appFolder, L"datacd") : dataFolder;
}

void writeDataFolder(platform::FileSystem& files, platform::Diagnostics& log, const Folders& folders,
                     std::wstring_view dataFolder)
{
    base::SequentialWriter writer;
    for (int field = 1; field < dataFolderField; ++field)
        writer.text(L"");
    writer.text(dataFolder).endRecord();
    passOver(log, files.writeWhole(inFolder(folders.appFolder, L"tqwin.ini"), writer.bytes()),
             "Write the folder for data");
}

void readMixerPath(platform::FileSystem& files, platform::Diagnostics& log, const Folders& folders,
                   std::wstring& mixerPath)
{
    if (const auto text = settingsText(files, log, inFolder(folders.appFolder, L"TQWIN1.INI")))
        base::SequentialReader(*text).read(mixerPath);
    if (base::isBlank(mixerPath))
        mixerPath = inFolder(folders.systemFolder, L"sndvol32.exe");
}

void writeMixerPath(platform::FileSystem& files, platform::Diagnostics& log, const Folders& folders,
                    std::wstring_view mixerPath)
{
    constexpr int fields = 11;
    base::SequentialWriter writer;
    writer.text(mixerPath);
    for (int field = 2; field <= fields; ++field)
        writer.text(L"");
    passOver(log, files.writeWhole(inFolder(folders.appFolder, L"TQWIN1.INI"), writer.endRecord().bytes()),
             "Write the mixer");
}

void readDisplayFonts(platform::FileSystem& files, platform::Diagnostics& log, const Folders& folders,
                      DisplayFonts& fonts, Theme& theme)
{
    const auto text = settingsText(files, log, inFolder(folders.appFolder, L"TQWIN3.INI"));
    if (!text)
        return;
    base::SequentialReader reader(*text);
    readFont(reader, fonts.disc);
    readFont(reader, fonts.status);
    reader.skip(6);
    readFont(reader, fonts.track);
    for (std::int32_t& colour : theme.panelColours)
        reader.read(colour);
}

void readTheme(platform::FileSystem& files, platform::Diagnostics& log, const Folders& folders, Theme& theme,
               bool& plainTrackFont)
{
    const auto text = settingsText(files, log, inFolder(folders.appFolder, L"TQWIN4.INI"));
    if (!text)
        return;
    base::SequentialReader reader(*text);
    reader.skip(13);
    std::int16_t plain = 0;
    reader.read(plain);
    plainTrackFont = plain == 1;
    reader.skip(2);
    reader.read(theme.useThemeColours);
    reader.read(theme.themeColourA);
    reader.read(theme.themeColourB);
    if (theme.useThemeColours == 1)
        theme.panelColours.fill(theme.themeColourB);
}

void readWindowChoices(platform::FileSystem& files, platform::Diagnostics& log, const Folders& folders,
                       WindowState& window)
{
    const auto text = settingsText(files, log, inFolder(folders.appFolder, L"TQWIN7.INI"));
    if (!text)
        return;
    base::SequentialReader reader(*text);
    reader.skip(7);
    reader.read(window.keepWindowPlace);
    reader.skip(13);
    reader.read(window.keypadStyle);
}

bool readWindowPlace(platform::FileSystem& files, platform::Diagnostics& log, const Folders& folders,
                     WindowState& window)
{
    const std::wstring path = inFolder(folders.appFolder, L"RIPPOS.DAT");
    if (!files.fileExists(path))
        return false;
    const std::wstring text = settingsText(files, log, path).value_or(L"");
    base::SequentialReader reader(text);
    reader.read(window.savedLeft);
    reader.read(window.savedTop);
    return true;
}

void writeWindowPlace(platform::FileSystem& files, platform::Diagnostics& log, const Folders& folders,
                      const WindowState& window)
{
    const std::wstring path = inFolder(folders.appFolder, L"RIPPOS.DAT");
    if (files.fileExists(path))
        passOver(log, files.clearAttributes(path), "Make the window's place writable");
    base::SequentialWriter writer;
    writer.number(window.savedLeft).number(window.savedTop).endRecord();
    passOver(log, files.writeWhole(path, writer.bytes()), "Write the window's place");
}

}
