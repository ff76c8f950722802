#include "tagging/tag_page.h"

#include "base/numbers.h"
#include "base/text.h"
#include "naming/prefix_move.h"
#include "platform/diagnostics.h"
#include "platform/dialogs.h"
#include "platform/file_system.h"
#include "platform/processes.h"
#include "state/settings_text.h"
#include "tagging/tag_values.h"
#include "tags/id3v1.h"
#include "tags/vorbis_comments.h"
#include "tags/vorbis_fields.h"
#include "tags/vorbis_tag.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>
#include <vector>

namespace tonquay::tagging {

namespace {

using platform::Dialogs;

constexpr std::wstring_view utilityName = L"tqutil.exe";

std::wstring trimmed(const controls::Property<std::wstring>& text)
{
    return std::wstring(base::trim(text.get()));
}

bool isListed(std::wstring_view name)
{
    const std::wstring whole = base::upper(name);
    return whole.ends_with(L".MP3") || whole.ends_with(L".WAV") || whole.ends_with(L".OGG");
}

bool isOgg(std::wstring_view path)
{
    return base::upper(path).ends_with(L"OGG");
}

std::wstring fullPath(std::wstring_view folder, const std::wstring& name)
{
    constexpr std::size_t neverTrimmed = 4;
    if (folder.size() > neverTrimmed)
        folder = base::trim(folder);
    return std::wstring(folder) + (folder.ends_with(L'\\') ? L"" : L"\\") + name;
}

}

TagPage::TagPage(state::AppState& state, state::Forms& forms, platform::Platform& platform)
    : state_(state),
      forms_(forms),
      setup_(forms.controlsOf<state::CdriptabControls>()),
      page_(setup_.tagPage),
      platform_(platform)
{
    page_.Drive2.change = [this] { openDrive(); };
    page_.dir2.change = [this] { openFolder(); };
    page_.List55.click = [this] { selectFile(); };
    page_.Command1.click = [this] { openUtility(); };
    page_.Command2.click = [this] {
        TagChanged = false;
        showMp3();
    };
    page_.Command3.click = [this] {
        show(tags::TagFields{});
        TagChanged = false;
    };
    page_.Command4.click = [this] { save(); };
    page_.Command5.click = [this] { copy(); };
    page_.Command6.click = [this] { paste(); };
    page_.Command9.click = [this] { autoTag(); };
    for (controls::TextBox* box : {&page_.Text4, &page_.Text5, &page_.Text6, &page_.Text7, &page_.Text8, &page_.Text10})
        box->keyDown = [this] { TagChanged = true; };
    page_.genlist1.keyDown = [this] { TagChanged = true; };
    leadByEnter();
}

void TagPage::leadByEnter()
{
    using enum state::TagPageFocus;
    const auto leadTo = [this](state::TagPageFocus next) { return [this, next] { page_.focusWanted = next; }; };
    page_.Text8.enter = leadTo(artist);
    page_.Text7.enter = leadTo(album);
    page_.Text6.enter = leadTo(genre);
    page_.genlist1.enter = leadTo(year);
    page_.Text5.enter = leadTo(state::TagPageFocus::save);
    const auto leadFrom = [this](controls::TextBox& box, double most, state::TagPageFocus next) {
        return [this, &box, most, next] {
            const double value = base::val(box.text.get());
            if (box.text.get().empty() || (value >= 1 && value <= most)) {
                page_.focusWanted = next;
                return;
            }
            platform_.dialogs.beep();
            box.text = L"";
        };
    };
    constexpr double lastYear = 3000;
    constexpr double lastTrack = 99;
    page_.Text4.enter = leadFrom(page_.Text4, lastYear, track);
    page_.Text10.enter = leadFrom(page_.Text10, lastTrack, comment);
}

void TagPage::load()
{
    const std::wstring& output = state_.settings.outputFolder;
    const std::wstring folder = base::isBlank(output) ? L"c:\\" : std::wstring(base::trim(output));
    page_.Drive2.drive = folder.substr(0, 1) + L":";
    page_.dir2.path = folder;
    controls::ComboBox genres;
    FillGenreList(genres);
    std::vector<std::wstring> rows;
    rows.reserve(static_cast<std::size_t>(genres.rowCount()));
    for (std::int32_t row = 0; row < genres.rowCount(); ++row)
        rows.push_back(genres.row(row).text);
    page_.genlist1.rows = std::move(rows);
    const bool sibling = platform_.files.fileExists(state::inFolder(state_.folders.appFolder, utilityName));
    page_.Command1.enabled = sibling;
    page_.Command1.toolTip =
        sibling ? L"Edit the ID3v2 tag of this file" : L"The program for ID3v2 tags is not installed";
    TagChanged = false;
    listFiles();
}

void TagPage::openDrive()
{
    TagChanged = false;
    show(tags::TagFields{});
    page_.dir2.open(page_.Drive2.drive.get().substr(0, 1) + L":\\");
}

void TagPage::openFolder()
{
    TagChanged = false;
    show(tags::TagFields{});
    listFiles();
}

void TagPage::listFiles()
{
    page_.List55.clear();
    std::vector<std::wstring> rows;
    const auto names = platform_.files.list(page_.dir2.path.get(), L"*.*");
    if (passOver(platform_.log, names, "List the files of a folder"))
        std::ranges::copy_if(*names, std::back_inserter(rows), isListed);
    page_.List55.append(std::move(rows));
}

void TagPage::selectFile()
{
    std::int32_t row = 0;
    while (row < page_.List55.rowCount() && !page_.List55.isSelected(row))
        ++row;
    if (row == page_.List55.rowCount())
        return;
    const std::wstring name(base::trim(page_.List55.row(row)));
    TagChanged = false;
    page_.Label10.caption = L"";
    state_.TagFilePath = fullPath(page_.dir2.path.get(), name);
    const tags::FileSort sort = tags::fileSort(name);
    if (sort == tags::FileSort::ogg) {
        for (controls::Button* key : {&page_.Command1, &page_.Command2, &page_.Command9})
            key->visible = false;
        showOgg();
    } else if (sort == tags::FileSort::wav) {
        showEditing(false);
        showWav();
    } else {
        showEditing(true);
        showMp3();
    }
}

void TagPage::showEditing(bool shown)
{
    for (controls::Button* key : {&page_.Command1, &page_.Command2, &page_.Command3, &page_.Command4, &page_.Command5,
                                  &page_.Command6, &page_.Command9})
        key->visible = shown;
    for (controls::TextBox* box : {&page_.Text4, &page_.Text5, &page_.Text6, &page_.Text7, &page_.Text8, &page_.Text10})
        box->visible = shown;
    for (controls::CheckBox* box : {&page_.Check10, &page_.Check11})
        box->visible = shown;
    page_.genlist1.visible = shown;
    page_.Frame3.visible = shown;
}

void TagPage::showMp3()
{
    tags::COptions options(platform_.settings, state_.folders.appFolder);
    show(tags::mp3Sight(platform_.files, platform_.log, platform_.clock, options, state_.tags, state_.TagFilePath));
}

void TagPage::showOgg()
{
    show(tags::oggSight(platform_.files, platform_.log, state_.TagFilePath));
}

void TagPage::showWav()
{
    page_.Label10.caption = tags::wavSight(platform_.files, platform_.log, state_.wav, state_.TagFilePath).information;
}

void TagPage::show(const tags::FileSight& sight)
{
    show(sight.fields);
    page_.Label10.caption = sight.information;
}

void TagPage::show(const tags::TagFields& fields)
{
    page_.Text8.text = fields.title;
    page_.Text7.text = fields.artist;
    page_.Text6.text = fields.album;
    page_.genlist1.text = fields.genre;
    page_.Text4.text = fields.year;
    page_.Text10.text = fields.track;
    page_.Text5.text = fields.comment;
}

void TagPage::copy()
{
    state_.TagClipboard = {trimmed(page_.Text8.text), trimmed(page_.Text7.text), trimmed(page_.Text6.text),
                           trimmed(page_.Text5.text), trimmed(page_.Text4.text), trimmed(page_.genlist1.text),
                           trimmed(page_.Text10.text)};
    platform_.dialogs.messageBox(L"CD-Tonquay", L"Tag Information Copied", Dialogs::Icon::none);
}

void TagPage::paste()
{
    const auto& kept = state_.TagClipboard;
    page_.Text8.text = kept[0];
    page_.Text7.text = kept[1];
    page_.Text6.text = kept[2];
    page_.Text5.text = kept[3];
    page_.Text4.text = kept[4];
    page_.genlist1.text = kept[5];
    page_.Text10.text = kept[6];
    TagChanged = true;
}

void TagPage::autoTag()
{
    state::showTagger(forms_.controlsOf<state::Id3autoControls>(), state_.flags, state::tagDisc);
}

void TagPage::openUtility()
{
    const std::wstring command =
        state::inFolder(state_.folders.appFolder, utilityName) + L" CDR \"" + state_.TagFilePath + L'"';
    passOver(platform_.log, platform_.processes.start(command, platform::Processes::WindowStyle::normal),
             "Start the ID3v2 utility");
}

void TagPage::save()
{
    if (base::isBlank(state_.TagFilePath) || !TagChanged)
        return;
    std::wstring title = naming::fixedWidth(trimmed(page_.Text8.text), naming::nameWidth);
    std::wstring artist = naming::fixedWidth(trimmed(page_.Text7.text), naming::nameWidth);
    // The tick of the settings page decides, whatever the one of this page says.
    if (setup_.riptofile[state::mp3Format].value() == 1) {
        title = naming::prefixMoved(title);
        artist = naming::prefixMoved(artist);
    }
    if (page_.Check10.value() == 1)
        std::swap(title, artist);
    page_.Text7.text = artist;
    page_.Text8.text = title;
    if (isOgg(state_.TagFilePath))
        saveOgg();
    else
        saveMp3();
}

void TagPage::saveMp3()
{
    const TagValues values{.artist = page_.Text7.text.get(),
                           .album = page_.Text6.text.get(),
                           .year = page_.Text4.text.get(),
                           .comment = page_.Text5.text.get(),
                           .genre = trimmed(page_.genlist1.text)};
    fillTagInfo(state_.tags, values, page_.Text8.text.get(), trimmed(page_.Text10.text));
    tags::COptions options(platform_.settings, state_.folders.appFolder);
    tags::WriteId3v1Tag(platform_.files, platform_.log, options, state_.tags, state_.TagFilePath);
}

void TagPage::saveOgg()
{
    const std::wstring tools = state::inFolder(state_.folders.appFolder, L"oggtools");
    if (!platform_.files.fileExists(state::inFolder(tools, L"vorbiscomment.exe"))) {
        platform_.dialogs.messageBox(L"CD-Tonquay", L"Required 'vorbiscomment.exe' utility program not found!",
                                     Dialogs::Icon::exclamation);
        return;
    }
    if (!mayReplaceComments())
        return;
    const std::wstring comments = state::inFolder(tools, L"comments.txt");
    const tags::TagFields fields{.title = page_.Text8.text.get(),
                                 .artist = page_.Text7.text.get(),
                                 .album = page_.Text6.text.get(),
                                 .genre = page_.genlist1.text.get(),
                                 .year = page_.Text4.text.get(),
                                 .track = page_.Text10.text.get(),
                                 .comment = page_.Text5.text.get()};
    const auto written = platform_.files.writeWhole(comments, base::utf8(tags::commentsFileText(fields)));
    if (!passOver(platform_.log, written, "Write the comments of an Ogg file"))
        return;
    passOver(platform_.log, platform_.files.changeDrive(tools), "Change to the drive of the Ogg tools");
    passOver(platform_.log, platform_.files.changeFolder(tools), "Change to the folder of the Ogg tools");
    const std::wstring command = tags::vorbisCommentCommand(comments, base::trim(state_.TagFilePath));
    passOver(platform_.log, platform_.processes.start(command, platform::Processes::WindowStyle::hidden),
             "Write the comments into an Ogg file");
    passOver(platform_.log, platform_.files.changeFolder(state_.folders.appFolder), "Change to the program folder");
}

/// The whole of the comments is replaced. Those of most of today's encoders cannot be shown here, so nobody would know
/// what goes.
bool TagPage::mayReplaceComments()
{
    const std::wstring& path = state_.TagFilePath;
    if (tags::ReadVorbisTag(platform_.files, platform_.log, path) != tags::VorbisTag{} ||
        !tags::hasVorbisComments(platform_.files, platform_.log, path))
        return true;
    return platform_.dialogs.messageBox(L"CD-Tonquay",
                                        L"This file has comments that cannot be shown here. Replace all of them?",
                                        Dialogs::Icon::question, Dialogs::Buttons::yesNo) == Dialogs::Answer::yes;
}

}
