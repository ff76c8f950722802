#include "tags/vorbis_fields.h"

#include "base/numbers.h"
#include "base/text.h"
#include "tags/vorbis_tag.h"

#include <array>

namespace tonquay::tags {

namespace {

struct Line {
    std::wstring_view key;
    std::wstring TagFields::*text;
};

constexpr std::array lines{
    Line{L"title=", &TagFields::title},     Line{L"artist=", &TagFields::artist},
    Line{L"album=", &TagFields::album},     Line{L"genre=", &TagFields::genre},
    Line{L"date=", &TagFields::year},       Line{L"tracknumber=", &TagFields::track},
    Line{L"comment=", &TagFields::comment},
};

std::wstring trimmed(std::wstring_view text)
{
    return std::wstring(base::trim(text));
}

std::wstring onOneLine(std::wstring text)
{
    for (const wchar_t end : {L'\r', L'\n', L'\0'})
        text = base::replaced(text, end, L' ');
    return trimmed(text);
}

/// In double quotes. A quote inside, which file names may have here, is marked, and so are the backslashes before it.
std::wstring quoted(std::wstring_view path)
{
    std::wstring text;
    std::size_t slashes = 0;
    for (const wchar_t c : path) {
        if (c == L'"')
            text.append(slashes + 1, L'\\');
        slashes = c == L'\\' ? slashes + 1 : 0;
        text += c;
    }
    return L'"' + text + L'"';
}

}

TagFields shownFields(const VorbisTag& tag)
{
    return {.title = trimmed(tag.Title),
            .artist = trimmed(tag.Artist),
            .album = trimmed(tag.Album),
            .genre = trimmed(tag.Genre),
            .year = trimmed(tag.Date),
            .track = tag.TrackNumber > 0 ? base::digits(tag.TrackNumber) : std::wstring(),
            .comment = trimmed(tag.Comment)};
}

std::wstring oggInformation(std::int64_t length, std::wstring_view date)
{
    if (length < 1)
        return L"Corrupt file";
    return L"Size:" + base::str(length) + L" bytes,  Date: " + std::wstring(date) + L"\r\nType: Ogg Vorbis\r\n";
}

std::wstring commentsFileText(const TagFields& fields)
{
    std::wstring text;
    for (const Line& line : lines)
        text += std::wstring(line.key) + onOneLine(fields.*line.text) + L"\r\n";
    return text;
}

std::wstring vorbisCommentCommand(std::wstring_view commentsFile, std::wstring_view file)
{
    return L"vorbiscomment.exe  -w -c " + quoted(commentsFile) + L' ' + quoted(base::trim(file));
}

std::wstring vorbisCommentDraftCommand(std::wstring_view commentsFile, std::wstring_view file, std::wstring_view draft)
{
    return L"vorbiscomment.exe -w -R -e -c " + quoted(commentsFile) + L' ' + quoted(file) + L' ' + quoted(draft);
}

}
