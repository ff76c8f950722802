#include "state/rip_settings_file.h"

#include "base/numbers.h"
#include "base/sequential.h"
#include "base/text.h"
#include "state/settings_text.h"

#include <array>

namespace tonquay::state {

namespace {

constexpr std::wstring_view settingsName = L"acdset.ini";
constexpr std::wstring_view ripTypeName = L"riptype.ini";

void readText(base::SequentialReader& reader, std::wstring& field)
{
    reader.read(field);
    field = base::trim(field);
}

/// The first encoder that is there, and with it the wish to encode and to keep no WAV.
void findEncoder(platform::FileSystem& files, const Folders& folders, RipSettings& settings)
{
    if (base::trim(settings.encoderPath).size() >= 2)
        return;
    settings.encodeWanted = 1;
    settings.deleteWav = 1;
    const std::array<std::wstring, 6> places{
        inFolder(folders.appFolder, L"lame.exe"),    inFolder(folders.appFolder, L"bladeenc.exe"),
        L"c:\\program files\\lame\\lame.exe",        L"c:\\program files\\bladeenc\\bladeenc.exe",
        L"c:\\program files\\mp3 encoder\\lame.exe", L"c:\\program files\\mp3 encoder\\bladeenc.exe",
    };
    for (const std::wstring& place : places) {
        if (files.fileExists(place)) {
            settings.encoderPath = place;
            return;
        }
    }
    settings.encoderPath.clear();
}

void write(base::SequentialWriter& writer, const RipSettings& s)
{
    std::wstring_view output = base::trim(s.outputFolder);
    if (output.size() == 3)
        output = output.substr(0, 2);
    writer.text(s.driveLetter)
        .text(output)
        .number(s.createProgram)
        .number(s.nameFormat)
        .text(s.encoderPath)
        .number(s.encodeWanted)
        .number(s.deleteWav)
        .number(s.crcCheck)
        .number(s.highPriority)
        .number(s.stereo)
        .number(s.bitrateIndex)
        .text(s.encoderCmdLine)
        .text(s.encoderFileExt)
        .number(s.ripMethod)
        .text(base::digits(s.dirMode))
        .number(s.encodeSingle)
        .number(s.vbrQuality)
        .number(s.minimizeWhileEncoding)
        .number(s.ripToWma)
        .number(s.turboMode)
        .number(s.autoSelectAll)
        .number(s.autoClose)
        .endRecord();
}

}

RipSettings parseRipSettings(std::wstring_view text, std::wstring_view dataFolder)
{
    RipSettings s;
    s.outputFolder = dataFolder;
    base::SequentialReader reader(text);
    readText(reader, s.driveLetter);
    readText(reader, s.outputFolder);
    reader.read(s.createProgram);
    reader.read(s.nameFormat);
    readText(reader, s.encoderPath);
    reader.read(s.encodeWanted);
    reader.read(s.deleteWav);
    reader.read(s.crcCheck);
    reader.read(s.highPriority);
    reader.read(s.stereo);
    reader.read(s.bitrateIndex);
    readText(reader, s.encoderCmdLine);
    readText(reader, s.encoderFileExt);
    reader.read(s.ripMethod);
    if (!reader.atEnd()) {
        // The one number that is stored as a text; a text that is no number is 0.
        std::wstring dirMode;
        reader.read(dirMode);
        base::store(base::val(dirMode), s.dirMode);
    }
    reader.read(s.encodeSingle);
    reader.read(s.vbrQuality);
    reader.read(s.minimizeWhileEncoding);
    reader.read(s.ripToWma);
    reader.read(s.turboMode);
    reader.read(s.autoSelectAll);
    reader.read(s.autoClose);
    return s;
}

RipSettings savedRipSettings(platform::FileSystem& files, platform::Diagnostics& log, std::wstring_view programFolder,
                             std::wstring_view dataFolder)
{
    return parseRipSettings(settingsText(files, log, inFolder(programFolder, settingsName)).value_or(L""), dataFolder);
}

std::string ripSettingsText(const RipSettings& settings)
{
    base::SequentialWriter writer;
    write(writer, settings);
    return writer.bytes();
}

void racdset(platform::FileSystem& files, platform::Diagnostics& log, const Folders& folders, Forms& forms,
             RipSettings& settings)
{
    const std::wstring path = inFolder(folders.appFolder, settingsName);
    const bool firstRun = !files.fileExists(path);
    settings = parseRipSettings(settingsText(files, log, path).value_or(L""), folders.dataFolder);
    findEncoder(files, folders, settings);
    if (firstRun)
        forms.cdriptab().Text3.text = settings.encoderPath;
}

void writeRipSettings(platform::FileSystem& files, platform::Diagnostics& log, const Folders& folders,
                      const RipSettings& settings)
{
    passOver(log, files.changeFolder(folders.appFolder), "Change to the program folder");
    passOver(log, files.changeDrive(folders.appFolder), "Change to the program folder's drive");
    // The full path: a change of folder that failed must not write the settings somewhere else.
    const std::wstring path = inFolder(folders.appFolder, settingsName);
    if (files.fileExists(path))
        passOver(log, files.clearAttributes(path), "Make the settings writable");
    base::SequentialWriter writer;
    write(writer, settings);
    if (writer.cleaned())
        log.line("settings", "a double quote or line end in a setting cannot be kept; it is written as ' or a blank");
    passOver(log, files.writeWhole(path, writer.bytes()), "Write the settings");
}

std::optional<std::int16_t> readRipType(platform::FileSystem& files, platform::Diagnostics& log, const Folders& folders)
{
    const std::wstring path = inFolder(folders.appFolder, ripTypeName);
    if (!files.fileExists(path))
        return std::nullopt;
    std::int16_t ripEngineMode = 0;
    if (const auto text = settingsText(files, log, path))
        base::SequentialReader(*text).read(ripEngineMode);
    return ripEngineMode;
}

void writeRipType(platform::FileSystem& files, platform::Diagnostics& log, const Folders& folders,
                  std::int16_t ripEngineMode)
{
    base::SequentialWriter writer;
    writer.text(base::digits(ripEngineMode)).endRecord();
    passOver(log, files.writeWhole(inFolder(folders.appFolder, ripTypeName), writer.bytes()), "Write the rip path");
}

void ForceAltRipMode(platform::FileSystem& files, platform::Diagnostics& log, const Folders& folders, RipPath& path,
                     RipSettings& settings)
{
    path.ripEngineMode = 0;
    writeRipType(files, log, folders, path.ripEngineMode);
    settings.ripMethod = engineMethod;
}

}
