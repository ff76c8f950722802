#include "tagging/automatic_tagger.h"

#include "base/format.h"
#include "base/numbers.h"
#include "base/text.h"
#include "naming/prefix_move.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "state/disc_display.h"
#include "tagging/file_search.h"
#include "tags/id3v1.h"

#include <utility>

namespace tonquay::tagging {

namespace {

void choose(controls::ComboBox& list, std::wstring_view text)
{
    for (std::int32_t row = 0; row < list.rowCount(); ++row) {
        if (list.row(row).text == text) {
            list.setIndex(row);
            return;
        }
    }
}

std::wstring trimmed(const controls::TextBox& field)
{
    return std::wstring(base::trim(field.text.get()));
}

}

AutomaticTagger::AutomaticTagger(state::AppState& state, state::Forms& forms, platform::Platform& platform)
    : state_(state),
      main_(forms.ripdeck()),
      form_(forms.controlsOf<state::Id3autoControls>()),
      platform_(platform)
{
    form_.form.onLoad = [this] { load(); };
    form_.form.onQueryUnload = [this] { closed(); };
    form_.Command1.click = [this] { start(); };
    form_.Command2.click = [this] { form_.form.unload(); };
    leadByEnter();
}

void AutomaticTagger::leadByEnter()
{
    using enum state::TaggerFocus;
    const auto leadTo = [this](state::TaggerFocus next) { return [this, next] { form_.focused = next; }; };
    form_.Text2.enter = leadTo(album);
    form_.Text3.enter = leadTo(year);
    form_.Text4.enter = leadTo(genre);
    form_.list1.enter = leadTo(comment);
    form_.Text5.enter = leadTo(startButton);
}

void AutomaticTagger::load()
{
    FillGenreList(form_.list1);
    const TagValues values = tagValuesOf(state_.disc);
    form_.Text2.text = values.artist;
    form_.Text3.text = values.album;
    form_.Text4.text = values.year;
    form_.Text5.text = values.comment;
    choose(form_.list1, values.genre);
    if (state_.flags.autoTagMode == state::tagRun) {
        constexpr std::int32_t outOfSight = 100000;
        form_.form.left = outOfSight;
        form_.Command1.press();
    }
}

void AutomaticTagger::start()
{
    if (state_.flags.autoTagMode == state::enterDiscTags)
        keepForDisc();
    else
        tagFiles();
    form_.form.unload();
}

void AutomaticTagger::keepForDisc()
{
    state::DiscInfo& disc = state_.disc;
    std::wstring album = naming::fixedWidth(trimmed(form_.Text3), naming::nameWidth);
    std::wstring artist = naming::fixedWidth(trimmed(form_.Text2), naming::nameWidth);
    if (form_.Check2.value() == 1) {
        album = naming::prefixMoved(album);
        artist = naming::prefixMoved(artist);
    }
    if (form_.Check1.value() == 1)
        std::swap(artist, album);
    disc.discArtist = base::trim(artist);
    disc.discAlbum = base::trim(album);
    disc.discComment = trimmed(form_.Text5);
    if (disc.discComment.empty())
        disc.discComment = L"Created " + base::dayMonthYear(platform_.clock.today());
    disc.discYear = trimmed(form_.Text4);
    disc.discGenre = form_.list1.chosen().text;
    state::showDiscNames(main_, disc);
    state::showDiscTags(main_, disc);
}

void AutomaticTagger::tagFiles()
{
    const bool ofRun = state_.flags.autoTagMode == state::tagRun;
    state_.flags.autoTagBusy = 1;
    const std::int32_t tagged = tagTracks(ofRun);
    if (!ofRun)
        report(tagged);
}

std::int32_t AutomaticTagger::tagTracks(bool selectedOnly)
{
    const TagValues values = entered();
    const std::wstring folder = tagFolder(platform_.files, state_.settings.outputFolder, state_.disc);
    tags::COptions options(platform_.settings, state_.folders.appFolder);
    std::int32_t tagged = 0;
    for (std::int32_t row = 0; row < main_.list1.rowCount(); ++row) {
        const std::int32_t track = row + 1;
        if (selectedOnly && !main_.list1.isSelected(row))
            continue;
        const auto path = findTrackFile(platform_.files, folder, state_.disc, track);
        if (!path)
            continue;
        fillTagInfo(state_.tags, values, state_.disc.trackTitles(track), base::digits(track));
        tags::WriteId3v1Tag(platform_.files, platform_.log, options, state_.tags, *path);
        ++tagged;
    }
    return tagged;
}

void AutomaticTagger::report(std::int32_t tagged)
{
    constexpr std::wstring_view title = L"CD-Tonquay";
    if (tagged == 0) {
        platform_.dialogs.messageBox(
            title, L"No MP3 files found which match the audio CD in your CD-ROM drive - ID3 tagging cancelled.",
            platform::Dialogs::Icon::exclamation);
        return;
    }
    const std::wstring_view found = tagged == 1 ? L" matching MP3 file has" : L" matching MP3 files have";
    platform_.dialogs.messageBox(
        title, base::digits(tagged) + std::wstring(found) + L" been found and automatically ID3 tagged.",
        platform::Dialogs::Icon::information);
}

TagValues AutomaticTagger::entered() const
{
    return {form_.Text2.text, form_.Text3.text, form_.Text4.text, form_.Text5.text, form_.list1.chosen().text};
}

void AutomaticTagger::closed()
{
    if (state_.flags.autoTagMode == state::enterDiscTags)
        main_.form.enabled = true;
    state_.flags.autoTagBusy = 0;
    main_.form.windowState = controls::Form::WindowState::normal;
}

}
