#include "state/disc_display.h"

#include "base/text.h"

namespace tonquay::state {

void showDiscNames(RipdeckControls& ripdeck, const DiscInfo& disc)
{
    ripdeck.Label12.caption =
        base::isBlank(disc.discAlbum) ? disc.discArtist : disc.discArtist + L" - " + disc.discAlbum;
    // Letters from here on are taken for Cyrillic ones in the suite's one-byte texts.
    constexpr wchar_t lastLatin = 191;
    const std::wstring_view artist = base::trim(disc.discArtist);
    if (!artist.empty() && artist.front() > lastLatin) {
        constexpr std::wstring_view cyrillicFont = L"ER Kurier 1251";
        ripdeck.list1.fontName = std::wstring(cyrillicFont);
        for (controls::Label* label : {&ripdeck.Label12, &ripdeck.Label13, &ripdeck.Label6[genreLabel]})
            label->fontName = std::wstring(cyrillicFont);
    }
}

void placeTitle(RipdeckControls& ripdeck)
{
    constexpr std::int32_t gap = 50;
    ripdeck.Label13.left = ripdeck.Label12.left + ripdeck.Label12.width + gap;
}

void showDiscTags(RipdeckControls& ripdeck, const DiscInfo& disc)
{
    const auto show = [&ripdeck](StatusLabel label, const std::wstring& text) {
        ripdeck.Label6[label].caption = text;
        ripdeck.Label6[label].visible = !text.empty();
    };
    show(yearLabel, disc.discYear);
    show(genreLabel, disc.discGenre);
    show(commentLabel, disc.discComment);
}

}
