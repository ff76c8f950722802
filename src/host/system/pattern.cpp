#include "host/system/pattern.h"

#include "base/text.h"

namespace tonquay::host {

bool fitsPattern(std::wstring_view name, std::wstring_view pattern)
{
    if (pattern == L"*.*")
        pattern = L"*";
    std::size_t n = 0;
    std::size_t p = 0;
    // Where to try again when the latest * turns out to have taken too little.
    std::size_t starNext = std::wstring_view::npos;
    std::size_t starName = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == L'*') {
            starNext = ++p;
            starName = n;
        } else if (p < pattern.size() && (pattern[p] == L'?' || base::upper(pattern[p]) == base::upper(name[n]))) {
            ++p;
            ++n;
        } else if (starNext != std::wstring_view::npos) {
            p = starNext;
            n = ++starName;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of(L'*', p) == std::wstring_view::npos;
}

}
