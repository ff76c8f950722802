#include "host/audio/cd_text_block.h"

#include "base/text.h"

namespace tonquay::host {

namespace {

void append(std::string& block, const std::string& key, const std::wstring& text)
{
    // A NUL would end the string early and make the rest of the text another one.
    const std::string bytes = base::utf8(std::wstring_view(text).substr(0, text.find(L'\0')));
    if (!bytes.empty())
        block += key + "=" + bytes + '\0';
}

}

std::string cdTextBlock(const platform::DiscNames& names)
{
    std::string block;
    append(block, "TITLE0", names.album);
    append(block, "PERFORMER0", names.artist);
    for (std::size_t track = 0; track < names.titles.size(); ++track)
        append(block, "TITLE" + std::to_string(track + 1), names.titles[track]);
    if (!block.empty())
        block += '\0';
    return block;
}

}
