#include "host/tags/frame_fields.h"

#include "base/text.h"
#include "host/tags/library_text.h"

#include <algorithm>
#include <array>

namespace tonquay::host {

namespace {

using Frame = platform::Id3v2Contents::Frame;

enum class Encoding : unsigned char { latin, utf16, utf16BigEndian, utf8 };

/// Takes one field after the other from the front of a body.
class Fields {
public:
    explicit Fields(std::string_view body) : rest_(body) {}

    unsigned char byte()
    {
        const std::string_view one = take(1);
        return one.empty() ? '\0' : static_cast<unsigned char>(one.front());
    }
    std::string_view take(std::size_t count)
    {
        const std::string_view taken = rest_.substr(0, count);
        rest_.remove_prefix(taken.size());
        return taken;
    }
    std::string_view latin() { return upTo(rest_.find('\0'), 1); }
    std::wstring text(Encoding encoding)
    {
        switch (encoding) {
        case Encoding::utf16: return decoded(wide(), TagLib::String::UTF16);
        case Encoding::utf16BigEndian: return decoded(wide(), TagLib::String::UTF16BE);
        case Encoding::utf8: return decoded(latin(), TagLib::String::UTF8);
        case Encoding::latin: break;
        }
        return base::fromWindows1252(latin());
    }
    std::size_t rest() const { return rest_.size(); }

private:
    static std::wstring decoded(std::string_view bytes, TagLib::String::Type type)
    {
        const TagLib::ByteVector data(bytes.data(), static_cast<unsigned int>(bytes.size()));
        return textOf(TagLib::String(data, type));
    }
    /// Up to two NULs in the place of one character.
    std::string_view wide()
    {
        std::size_t end = 0;
        while (end + 1 < rest_.size() && (rest_[end] != '\0' || rest_[end + 1] != '\0'))
            end += 2;
        return upTo(end + 1 < rest_.size() ? end : std::string_view::npos, 2);
    }
    std::string_view upTo(std::size_t end, std::size_t terminator)
    {
        if (end == std::string_view::npos)
            return take(rest_.size());
        const std::string_view taken = take(end);
        take(terminator);
        return taken;
    }

    std::string_view rest_;
};

/// What a body holds, one letter a field: e encoding, l language, m type of media, f picture format of three letters,
/// p type of picture, d description, t text, o owner, u link.
struct Layout {
    std::string_view identifier, older; ///< `older`: in version 2.2
    std::string_view fields;
};

constexpr std::array layouts = std::to_array<Layout>({
    {"TXXX", "TXX", "edt"},
    {"WXXX", "WXX", "edu"},
    {"COMM", "COM", "eldt"},
    {"USLT", "ULT", "eldt"},
    {"APIC", "", "empd"},
    {"", "PIC", "efpd"},
    {"PRIV", "", "o"},
    {"UFID", "UFI", "o"},
    {"POPM", "POP", "o"},
    {"GEOB", "GEO", "emtd"},
});

std::string_view layoutOf(const std::string& identifier)
{
    const auto* const found = std::ranges::find_if(
        layouts, [&](const Layout& entry) { return entry.identifier == identifier || entry.older == identifier; });
    if (found != layouts.end())
        return found->fields;
    return identifier.starts_with('T') ? "et" : identifier.starts_with('W') ? "u" : "";
}

}

void fillFields(Frame& frame, std::string_view body)
{
    constexpr std::size_t codeBytes = 3;
    Fields fields(body);
    auto encoding = Encoding::latin;
    for (const char field : layoutOf(frame.identifier)) {
        switch (field) {
        case 'e': encoding = static_cast<Encoding>(std::min<unsigned char>(fields.byte(), 3)); break;
        case 'l': frame.language = fields.take(codeBytes); break;
        case 'm': frame.mime = fields.latin(); break;
        case 'f': frame.mime = fields.take(codeBytes); break;
        case 'p': frame.pictureType = fields.byte(); break;
        case 'd': frame.description = fields.text(encoding); break;
        case 't': frame.text = fields.text(encoding); break;
        case 'o': frame.description = base::fromWindows1252(fields.latin()); break;
        case 'u': frame.text = base::fromWindows1252(fields.latin()); break;
        default: break;
        }
    }
    frame.dataBytes = fields.rest();
}

}
