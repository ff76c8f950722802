#include "tags/tag_text.h"

#include "tags/tagger_options.h"

namespace tonquay::tags {

std::wstring TrimTagText(std::wstring_view text)
{
    while (!text.empty() && (text.back() == L' ' || text.back() == L'\0'))
        text.remove_suffix(1);
    return std::wstring(text);
}

std::wstring FitTagText(std::wstring_view text, std::size_t maximum, COptions& options)
{
    if (text.size() <= maximum)
        return std::wstring(text);
    options.readOptions();
    const std::wstring& end = options.FillUp();
    if (end.size() > maximum)
        return {};
    return std::wstring(text.substr(0, maximum - end.size())) + end;
}

std::wstring BlankToNul(std::wstring_view text)
{
    std::wstring stored(text);
    for (std::size_t last = stored.size(); last > 1 && stored[last - 1] == L' '; --last)
        stored[last - 1] = L'\0';
    // The first character alone does not become NUL: a field of one blank stays.
    if (stored.size() > 1 && stored[1] == L'\0' && stored[0] == L' ')
        stored[0] = L'\0';
    return stored;
}

}
