#pragma once

#include "controls/buttons.h"
#include "controls/displays.h"
#include "controls/folders.h"
#include "controls/form.h"
#include "controls/label.h"
#include "controls/lists.h"
#include "controls/option_group.h"
#include "controls/text_box.h"
#include "state/mp3_row.h"
#include "state/tag_page_controls.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace tonquay::state {

/// The pages of the setup dialog by the number of their tab.
enum SetupTab : std::int32_t { settingsTab = 1, tagUtilityTab = 2, toWavTab = 3 };

/// riptofile by index.
enum FileFormat : std::size_t { mp3Format = 0, wavFormat = 1, oggFormat = 2, wmaFormat = 3 };

/// What of the setup dialog can be given the keyboard by the program.
enum class SetupFocus { none, drives, encoder, commandLine, fileExtension, quality, advanced };

/// The setup dialog: the settings of the ripper, the tag page, and MP3 to WAV.
struct CdriptabControls {
    controls::Form form;
    controls::Property<std::int32_t> tab{settingsTab}; ///< TabStrip1's selected tab

    /// Set by the behaviour when the keyboard is to go somewhere; a view answers with none when it is there.
    controls::Property<SetupFocus> focusWanted{SetupFocus::none};

    controls::ChoiceList List2;                  ///< the drives to choose from
    controls::ChoiceList List3;                  ///< the selected drive
    controls::Label Label4;                      ///< heading of the output folder
    controls::Label Label3;                      ///< the output folder in words
    controls::DriveList Drive1;                  ///< drive of the output folder
    controls::FolderTree dir1;                   ///< the output folder
    std::array<controls::CheckBox, 4> riptofile; ///< by FileFormat
    controls::Label Label12;                     ///< a double click on it chooses an encoder
    controls::TextBox Text3;                     ///< the encoder
    controls::OptionGroup<7> Option1;            ///< names of the files
    controls::Frame SSFrame5;                    ///< around Option2
    controls::OptionGroup<2> Option2;            ///< mono, stereo
    controls::Frame SSFrame1;                    ///< around Option3
    controls::OptionGroup<14> Option3;           ///< bitrates, or qualities of Ogg
    controls::OptionGroup<2> Option4;            ///< batch, single
    controls::CheckBox Check1;                   ///< write a program file
    controls::CheckBox Check2;                   ///< encoders in the background
    controls::CheckBox Check3;                   ///< select all tracks at the start
    controls::CheckBox Check4;                   ///< checksums in MP3 files
    controls::CheckBox Check5;                   ///< variable bitrate, or high priority
    controls::CheckBox Check6;                   ///< switches of the user's own
    controls::TextBox Text1;                     ///< those
    controls::CheckBox Check7;                   ///< another file extension
    controls::TextBox Text2;                     ///< that
    controls::CheckBox Check8;                   ///< folders of artists
    controls::CheckBox Check9;                   ///< folders of artists and albums
    controls::CheckBox Check12;                  ///< minimise while a batch is encoded
    controls::CheckBox Check13;                  ///< end the program after a run
    controls::Label Label17;                     ///< heading of Text11
    controls::TextBox Text11;                    ///< quality of variable bitrate
    controls::Label Label7;                      ///< heading of List4
    controls::ChoiceList List4;                  ///< the rip modes
    controls::Label Label13;                     ///< the processor is one of a certain kind
    controls::Frame SSFrame4;                    ///< the advanced settings, in the place of SSFrame1
    controls::Button Command12;                  ///< flips between the two
    controls::Button cmdOK;
    controls::Button cmdCancel;

    TagPageControls tagPage;

    controls::Frame SSFrame7;                 ///< around MP3 to WAV
    controls::Label Label20;                  ///< heading of the folder of MP3 files
    controls::DriveList Drive3;               ///< its drive
    controls::FolderTree dir3;                ///< that folder
    controls::MultiSelectList List5;          ///< the MP3 files in it
    controls::Label Label18;                  ///< heading of the queue
    controls::MultiSelectList List6;          ///< the queue
    controls::Label Label8;                   ///< where the decoder is
    controls::Button Command14;               ///< adds the selected files
    controls::Button Command15;               ///< adds all
    controls::Button Command16;               ///< empties the queue
    controls::Button Command13;               ///< selects no file
    controls::Button Command10;               ///< takes the selected ones out of the queue
    controls::Button Command17;               ///< converts the queue
    controls::Property<Mp3InHand> converting; ///< what is being decoded
    std::array<controls::Image, 2> Image1;    ///< there is nothing to convert, there is something

    CdriptabControls();

private:
    void resetToDesign();
};

/// Shows the captions of the 14 bitrates, or of the 11 qualities of Ogg with the other rows hidden.
void showBitrates(CdriptabControls& setup);
void showOggQualities(CdriptabControls& setup);

inline constexpr std::wstring_view advancedCaption = L"Advanced >";
inline constexpr std::wstring_view basicCaption = L"< Basic";
inline constexpr std::wstring_view ripLocationLead = L"Current rip location: ";
inline constexpr std::wstring_view decoderLead = L"LAME Decoder Location:  ";
inline constexpr std::wstring_view vbrCaption = L"Enable VBR Encoding";
inline constexpr std::wstring_view highPriorityCaption = L"Enable high priority encoding";

}
