#pragma once

#include "platform/settings_store.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace tonquay::tags {

/// The options of the tagger. They belong to the user and lie in the settings store, in a section of their own,
/// "ID3Tagger/Options": the store has one level of sections, the application's name and its section are joined.
///
/// The program reads them and uses two: the genre that an unread tag has, and the text that ends a cut title. The
/// others are kept for whoever shares the store.
///
/// Until readOptions() is called each option has the value that it has without an entry in the store.
class COptions {
public:
    static constexpr std::wstring_view section = L"ID3Tagger/Options";

    /// `store` outlives this. The application folder is where a list of genres and music are first looked for.
    COptions(platform::SettingsStore& store, std::wstring_view applicationFolder);

    /// The file of the list of genres. Nothing opens it; the genres are built in.
    const std::wstring& genListName() const { return genreListName_; }
    void genListName(std::wstring path) { genreListName_ = std::move(path); }

    std::uint8_t defaultGenre() const { return defaultGenre_; }
    void defaultGenre(std::uint8_t genre) { defaultGenre_ = genre; }

    const std::wstring& startDir() const { return startDir_; }
    void startDir(std::wstring path) { startDir_ = std::move(path); }

    /// Ends a text that was too long for its field; empty: it is plainly cut.
    const std::wstring& FillUp() const { return fillUp_; }
    void FillUp(std::wstring text) { fillUp_ = std::move(text); }

    bool AskReadOnly() const { return askReadOnly_; }
    void AskReadOnly(bool on) { askReadOnly_ = on; }

    bool NextConvert() const { return nextConvert_; }
    void NextConvert(bool on) { nextConvert_ = on; }

    bool ShowMp3Error() const { return showMp3Error_; }
    void ShowMp3Error(bool on) { showMp3Error_ = on; }

    /// Which forms of file names are recognised; a set of digits from 1 to 5.
    bool RecognizeRoundPar() const { return recognizes(L'1'); }
    bool RecognizeSquarePar() const { return recognizes(L'2'); }
    bool RecognizeSpace() const { return recognizes(L'3'); }
    bool RecognizeSquareSpace() const { return recognizes(L'4'); }
    bool RecognizeIntelligent() const { return recognizes(L'5'); }
    void RecognizeString(std::wstring digits) { recognize_ = std::move(digits); }

    /// Which one form a file name is turned into; a number from 1 to 4.
    bool ConvertToRoundPar() const { return convertTo_ == 1; }
    bool ConvertToSquarePar() const { return convertTo_ == 2; }
    bool ConvertToSpace() const { return convertTo_ == 3; }
    bool ConvertToSquareSpace() const { return convertTo_ == 4; }
    void ConvertTo(std::int16_t form) { convertTo_ = form; }

    bool ConvertUnderscore() const;
    void ConvertUnderscore(bool on);

    const std::wstring& mp3Player() const { return mp3Player_; }
    void mp3Player(std::wstring path) { mp3Player_ = std::move(path); }

    const std::wstring& InfoInclude() const { return infoInclude_; }
    void InfoInclude(std::wstring text) { infoInclude_ = std::move(text); }

    bool FillOnlyEmpty() const { return fillOnlyEmpty_; }
    void FillOnlyEmpty(bool on) { fillOnlyEmpty_ = on; }

    std::uint8_t TrackNo() const { return trackNo_; }
    void TrackNo(std::uint8_t digits) { trackNo_ = digits; }

    bool Lowercase() const { return lowercase_; }
    void Lowercase(bool on) { lowercase_ = on; }

    /// Reads all options. A number that is none, or too large for its option, leaves the value that was there.
    void readOptions();

    /// Stores all options.
    void writeOptions();

private:
    bool recognizes(wchar_t digit) const { return recognize_.find(digit) != std::wstring::npos; }

    platform::SettingsStore& store_;
    std::wstring applicationFolder_;
    std::wstring defaultGenreList_;

    std::wstring genreListName_;
    std::uint8_t defaultGenre_ = 0;
    std::wstring startDir_;
    std::wstring fillUp_;
    bool askReadOnly_ = true;
    bool nextConvert_ = true;
    bool showMp3Error_ = false;
    bool convertTrackNo_ = true;
    std::wstring recognize_ = L"12345";
    std::int16_t convertTo_ = 1;
    std::wstring convertUnderscore_ = L"True";
    std::wstring mp3Player_;
    std::wstring infoInclude_;
    bool fillOnlyEmpty_ = true;
    std::uint8_t trackNo_ = 2;
    bool lowercase_ = true;
};

}
