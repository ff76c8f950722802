#include "host/system/host_settings_store.h"

#include "base/text.h"
#include "host/posix/descriptor.h"
#include "host/system/places.h"
#include "host/system/replaced_file.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <vector>

namespace tonquay::host {

namespace {

constexpr std::size_t mostBytes = 1 << 20;

std::string escaped(std::wstring_view value)
{
    std::string text;
    for (const char c : base::utf8(value)) {
        if (c == '\\')
            text += "\\\\";
        else if (c == '\n')
            text += "\\n";
        else if (c == '\r')
            text += "\\r";
        else
            text += c;
    }
    if (text.starts_with(' '))
        text.replace(0, 1, "\\_");
    if (text.ends_with(' '))
        text.replace(text.size() - 1, 1, "\\_");
    return text;
}

std::wstring unescaped(std::string_view text)
{
    std::string value;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 == text.size()) {
            value += text[i];
            continue;
        }
        const char c = text[++i];
        value += c == 'n' ? '\n' : c == 'r' ? '\r' : c == '_' ? ' ' : c;
    }
    return base::fromHostBytes(value);
}

/// A section's or key's name: it must not look like something else in the file.
std::string cleanName(std::wstring_view name)
{
    std::string text = escaped(name);
    std::ranges::replace(text, '=', '-');
    std::ranges::replace(text, ']', ')');
    return text;
}

std::vector<std::string> linesOf(std::string_view bytes)
{
    std::vector<std::string> lines;
    while (!bytes.empty()) {
        const std::size_t end = std::min(bytes.find('\n'), bytes.size());
        lines.emplace_back(bytes.substr(0, end));
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
    }
    return lines;
}

/// Where a setting stands, or would have to be put in.
struct Spot {
    std::optional<std::size_t> line;
    std::optional<std::size_t> sectionEnd;
};

bool sameName(std::string_view left, std::string_view right)
{
    return base::sameText(base::fromHostBytes(left), base::fromHostBytes(right));
}

Spot find(const std::vector<std::string>& lines, const std::string& section, const std::string& key)
{
    Spot spot;
    bool inside = false;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::size_t equals = lines[i].find('=');
        if (lines[i].starts_with('['))
            inside = sameName(lines[i], '[' + section + ']');
        else if (inside && equals != std::string::npos && sameName(std::string_view(lines[i]).substr(0, equals), key))
            spot.line = i;
        if (inside && !lines[i].empty())
            spot.sectionEnd = i + 1;
    }
    return spot;
}

/// No file yet is an empty one.
base::Result<std::string> readFile(const std::string& path)
{
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file)
        return errno == ENOENT ? base::Result<std::string>(std::string()) : systemFailure(path, "opened", errno);
    return readToEnd(file.get(), mostBytes, path);
}

}

std::wstring HostSettingsStore::get(std::wstring_view section, std::wstring_view key, std::wstring_view fallback)
{
    const auto bytes = readFile(file_);
    if (!bytes)
        return std::wstring(fallback);
    const auto lines = linesOf(*bytes);
    const Spot spot = find(lines, cleanName(section), cleanName(key));
    if (!spot.line)
        return std::wstring(fallback);
    const std::string_view line = lines[*spot.line];
    return unescaped(line.substr(line.find('=') + 1));
}

std::map<std::wstring, std::wstring> HostSettingsStore::all(std::wstring_view section)
{
    std::map<std::wstring, std::wstring> values;
    const auto bytes = readFile(file_);
    if (!bytes)
        return values;
    const std::string title = '[' + cleanName(section) + ']';
    bool inside = false;
    for (const std::string& line : linesOf(*bytes)) {
        const std::size_t equals = line.find('=');
        if (line.starts_with('['))
            inside = sameName(line, title);
        else if (inside && equals != std::string::npos)
            values.insert_or_assign(base::upper(unescaped(std::string_view(line).substr(0, equals))),
                                    unescaped(std::string_view(line).substr(equals + 1)));
    }
    return values;
}

void HostSettingsStore::set(std::wstring_view section, std::wstring_view key, std::wstring_view value)
{
    const auto bytes = readFile(file_);
    if (!platform::passOver(log_, bytes, "Read the settings to change one"))
        return;
    auto lines = linesOf(*bytes);
    const std::string title = cleanName(section);
    const std::string name = cleanName(key);
    const std::string entry = name + '=' + escaped(value);
    const Spot spot = find(lines, title, name);
    if (spot.line) {
        std::string& line = lines[*spot.line];
        line = line.substr(0, line.find('=') + 1) + escaped(value);
    } else if (spot.sectionEnd) {
        lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(*spot.sectionEnd), entry);
    } else {
        lines.push_back('[' + title + ']');
        lines.push_back(entry);
    }
    std::string text;
    for (const std::string& line : lines)
        text += line + '\n';
    makeFolders(file_.substr(0, file_.rfind('/')));
    platform::passOver(log_, replaceFile(file_, text, 0), "Store a setting");
}

}
