#include "host/drives/cdio_drive.h"

#include "base/text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <mutex>
#include <string_view>
#include <utility>

#include <cdio/cdio.h>
#include <cdio/cdtext.h>
#include <cdio/logging.h>
#include <cdio/mmc_hl_cmds.h>
#include <cdio/mmc_ll_cmds.h>
#include <cdio/mmc_util.h>

namespace tonquay::host {
namespace {

constexpr unsigned capabilitiesPageCode = 0x2a;
constexpr unsigned commandTimeout = 10'000;

/// Opening and closing count in tables that all threads share.
std::mutex& libraryTables()
{
    static std::mutex tables;
    return tables;
}

/// The library's own log writes to the terminal and ends the program: on an error, and when two threads have something
/// to say at once. Below this level it is not reached.
void silenceLibrary()
{
    static std::once_flag silenced;
    std::call_once(silenced, [] {
        cdio_loglevel_default = CDIO_LOG_ASSERT;
        cdio_log_set_handler([](cdio_log_level_t, const char*) {});
    });
}

CdIo_t* cdioOf(void* handle)
{
    return static_cast<CdIo_t*>(handle);
}

std::string trimmed(const char* padded)
{
    std::string text(padded);
    text.erase(text.find_last_not_of(' ') + 1);
    text.erase(0, text.find_first_not_of(' '));
    return text;
}

std::wstring field(const cdtext_t* text, cdtext_field_t key, int track)
{
    const char* value = cdtext_get_const(text, key, static_cast<track_t>(track));
    return value ? base::fromFileBytes(value) : std::wstring{};
}

/// The genre's own words, else the name of its code.
std::wstring genre(const cdtext_t* text)
{
    std::wstring words = field(text, CDTEXT_FIELD_GENRE, 0);
    const cdtext_genre_t code = cdtext_get_genre(text);
    // Codes 0 and 1 say that no genre is told.
    if (words.empty() && code > 1)
        if (const char* name = cdtext_genre2str(code))
            words = base::fromFileBytes(name);
    return words;
}

}

void CdioDrive::Closer::operator()(void* handle) const
{
    const std::lock_guard guard(libraryTables());
    cdio_destroy(cdioOf(handle));
}

CdioDrive::CdioDrive(std::unique_ptr<void, Closer> handle) : handle_(std::move(handle)) {}

std::optional<CdioDrive> CdioDrive::open(const std::string& device, Access access)
{
    silenceLibrary();
    const std::lock_guard guard(libraryTables());
    const char* mode = access == Access::commanding ? "MMC_RDWR" : "IOCTL";
    std::unique_ptr<void, Closer> handle(cdio_open_am(device.c_str(), DRIVER_LINUX, mode));
    if (!handle)
        return std::nullopt;
    return CdioDrive(std::move(handle));
}

std::optional<CdioDrive::Hardware> CdioDrive::hardware() const
{
    cdio_hwinfo_t info{};
    if (!cdio_get_hwinfo(cdioOf(handle_.get()), &info))
        return std::nullopt;
    return Hardware{trimmed(info.psz_vendor), trimmed(info.psz_model), trimmed(info.psz_revision)};
}

std::optional<CapabilitiesPage> CdioDrive::capabilities() const
{
    constexpr std::size_t header = 8;
    std::array<std::uint8_t, 256> answer{};
    if (mmc_mode_sense_10(cdioOf(handle_.get()), answer.data(), answer.size(), capabilitiesPageCode) !=
        DRIVER_OP_SUCCESS)
        return std::nullopt;
    const std::size_t told = 2 + (std::size_t{answer[0]} << 8 | answer[1]);
    const std::size_t page = header + (std::size_t{answer[6]} << 8 | answer[7]);
    const std::size_t end = std::min(told, answer.size());
    if (page >= end)
        return std::nullopt;
    return parseCapabilitiesPage(std::span(answer).subspan(page, end - page));
}

std::optional<RawTable> CdioDrive::table() const
{
    CdIo_t* handle = cdioOf(handle_.get());
    const track_t first = cdio_get_first_track_num(handle);
    const track_t count = cdio_get_num_tracks(handle);
    if (first == CDIO_INVALID_TRACK || count == CDIO_INVALID_TRACK)
        return std::nullopt;
    RawTable table;
    for (int number = first; number < first + count; ++number) {
        const auto track = static_cast<track_t>(number);
        table.entries.push_back(
            {number, cdio_get_track_lsn(handle, track), cdio_get_track_format(handle, track) == TRACK_FORMAT_AUDIO});
    }
    table.leadOut = cdio_get_track_lsn(handle, CDIO_CDROM_LEADOUT_TRACK);
    lsn_t session = 0;
    if (count > 0 && cdio_get_last_session(handle, &session) == DRIVER_OP_SUCCESS &&
        session > table.entries.front().firstSector)
        table.lastSession = session;
    return table;
}

platform::DiscNames CdioDrive::names(const std::vector<platform::DiscTrack>& tracks) const
{
    platform::DiscNames names;
    const cdtext_t* text = cdio_get_cdtext(cdioOf(handle_.get()));
    if (!text)
        return names;
    names.artist = field(text, CDTEXT_FIELD_PERFORMER, 0);
    names.album = field(text, CDTEXT_FIELD_TITLE, 0);
    names.genre = genre(text);
    names.comment = field(text, CDTEXT_FIELD_MESSAGE, 0);
    for (const platform::DiscTrack& track : tracks)
        names.titles.push_back(field(text, CDTEXT_FIELD_TITLE, track.number));
    while (!names.titles.empty() && names.titles.back().empty())
        names.titles.pop_back();
    return names;
}

CdioDrive::Answer CdioDrive::readAudio(int firstSector, int count, std::span<std::byte> buffer) const
{
    const auto result =
        cdio_read_audio_sectors(cdioOf(handle_.get()), buffer.data(), firstSector, static_cast<std::uint32_t>(count));
    if (result == DRIVER_OP_SUCCESS)
        return Answer::good;
    return senseSaysNoMedium() ? Answer::noMedium : Answer::failed;
}

bool CdioDrive::senseSaysNoMedium() const
{
    cdio_mmc_request_sense_t* sense = nullptr;
    const int bytes = mmc_last_cmd_sense(cdioOf(handle_.get()), &sense);
    const std::unique_ptr<cdio_mmc_request_sense_t, void (*)(void*)> owner(sense, cdio_free);
    constexpr int neededBytes = 13;
    constexpr unsigned notReady = 2;
    constexpr unsigned mediumNotPresent = 0x3a;
    return sense && bytes >= neededBytes && sense->sense_key == notReady && sense->asc == mediumNotPresent;
}

bool CdioDrive::ejectDisc() const
{
    return mmc_start_stop_unit(cdioOf(handle_.get()), true, false, 0, commandTimeout) == DRIVER_OP_SUCCESS;
}

bool CdioDrive::allowRemoval() const
{
    return mmc_prevent_allow_medium_removal(cdioOf(handle_.get()), false, false, commandTimeout) == DRIVER_OP_SUCCESS;
}

}
