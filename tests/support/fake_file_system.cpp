#include "support/fake_file_system.h"

#include "base/text.h"

#include <algorithm>

namespace tonquay::test {

using base::Failure;
using base::Status;

namespace {

Failure failure(Failure::Kind kind, std::wstring_view path, std::string_view text)
{
    return {kind, base::utf8(path), std::string(text)};
}

std::wstring folderOf(const std::wstring& full)
{
    const std::size_t slash = full.rfind(L'\\');
    return slash == 2 ? full.substr(0, 3) : full.substr(0, slash);
}

std::wstring nameOf(const std::wstring& full)
{
    return full.substr(full.rfind(L'\\') + 1);
}

/// `pattern` and `name` in upper case; * and ? as everywhere.
bool matches(std::wstring_view pattern, std::wstring_view name)
{
    if (pattern.empty())
        return name.empty();
    if (pattern.front() == L'*')
        return matches(pattern.substr(1), name) || (!name.empty() && matches(pattern, name.substr(1)));
    return !name.empty() && (pattern.front() == L'?' || pattern.front() == name.front()) &&
           matches(pattern.substr(1), name.substr(1));
}

}

/// Writes at once, so what the test finds in the file is what was written so far.
class FakeFileSystem::Binary final : public platform::BinaryFile {
public:
    Binary(FakeFileSystem& files, std::wstring full, bool toRead)
        : files_(files),
          full_(std::move(full)),
          toRead_(toRead)
    {}

    Status write(std::span<const std::byte> bytes) override
    {
        if (auto bad = files_.trouble(Operation::write, full_))
            return *bad;
        if (toRead_)
            return failure(Failure::Kind::other, full_, "is open for reading only");
        Entry* entry = files_.find(full_);
        if (entry == nullptr)
            return {}; // deleted meanwhile: the bytes go where nobody sees them
        const std::size_t end = place_ + bytes.size();
        const auto growth = static_cast<std::int64_t>(std::max(end, entry->bytes.size()) - entry->bytes.size());
        if (growth > files_.capacity - files_.used())
            return failure(Failure::Kind::full, full_, "no space left on device");
        if (entry->bytes.size() < end)
            entry->bytes.resize(end);
        std::ranges::transform(bytes, entry->bytes.begin() + static_cast<std::ptrdiff_t>(place_),
                               [](std::byte byte) { return static_cast<char>(byte); });
        place_ = end;
        return {};
    }

    base::Result<std::size_t> read(std::span<std::byte> buffer) override
    {
        if (auto bad = files_.trouble(Operation::read, full_))
            return *bad;
        const Entry* entry = files_.find(full_);
        const std::string_view bytes = entry == nullptr ? std::string_view() : entry->bytes;
        const std::string_view rest = bytes.substr(std::min(place_, bytes.size())).substr(0, buffer.size());
        std::ranges::transform(rest, buffer.begin(), [](char c) { return static_cast<std::byte>(c); });
        place_ += rest.size();
        return rest.size();
    }

    Status seek(std::int64_t offset) override
    {
        if (auto bad = files_.trouble(Operation::seek, full_))
            return *bad;
        if (offset < 0)
            return failure(Failure::Kind::invalid, full_, "a place before the start");
        place_ = static_cast<std::size_t>(offset);
        return {};
    }

    base::Result<Facts> facts() override { return Facts{files_.length(full_), files_.changed}; }

    Status endHere() override
    {
        if (auto bad = files_.trouble(Operation::write, full_))
            return *bad;
        if (toRead_)
            return failure(Failure::Kind::other, full_, "is open for reading only");
        if (Entry* entry = files_.find(full_))
            entry->bytes.resize(place_);
        return {};
    }

    Status close() override
    {
        if (auto bad = files_.trouble(Operation::close, full_))
            return *bad;
        return {};
    }

private:
    FakeFileSystem& files_;
    std::wstring full_;
    bool toRead_;
    std::size_t place_ = 0;
};

FakeFileSystem::FakeFileSystem()
{
    putFolder(L"C:\\");
    putFolder(L"C:\\WINDOWS\\SYSTEM");
    putFolder(L"C:\\CDTONQUAY");
    folders_[L'C'] = L"C:\\CDTONQUAY";
}

std::wstring FakeFileSystem::absolute(std::wstring_view given) const
{
    const std::wstring path = base::replaced(given, L'/', L'\\');
    std::wstring_view rest = path;
    wchar_t letter = drive_;
    if (rest.size() >= 2 && rest[1] == L':') {
        letter = base::upper(rest[0]);
        rest.remove_prefix(2);
    }
    std::wstring full = std::wstring(1, letter) + L':';
    if (!rest.starts_with(L'\\')) {
        const auto folder = folders_.find(letter);
        if (folder != folders_.end() && folder->second.size() > 3)
            full = folder->second;
    }
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(L'\\'), rest.size());
        const std::wstring_view part = rest.substr(0, end);
        if (part == L"..")
            full = full.size() > 2 ? full.substr(0, full.rfind(L'\\')) : full;
        else if (!part.empty() && part != L".")
            full.append(L"\\").append(part);
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return full.size() == 2 ? full + L'\\' : full;
}

std::wstring FakeFileSystem::keyOf(std::wstring_view path) const
{
    return base::upper(absolute(path));
}

const FakeFileSystem::Entry* FakeFileSystem::find(std::wstring_view path) const
{
    const auto found = path.empty() ? entries_.end() : entries_.find(keyOf(path));
    return found == entries_.end() ? nullptr : &found->second;
}

FakeFileSystem::Entry* FakeFileSystem::find(std::wstring_view path)
{
    const auto found = path.empty() ? entries_.end() : entries_.find(keyOf(path));
    return found == entries_.end() ? nullptr : &found->second;
}

int FakeFileSystem::tracksOn(std::wstring_view path) const
{
    const auto drive = discTracks.find(absolute(path)[0]);
    return drive == discTracks.end() ? -1 : drive->second;
}

bool FakeFileSystem::isDiscName(std::wstring_view full) const
{
    const std::wstring name = base::upper(full);
    if (name.size() != 14 || !name.substr(1).starts_with(L":\\TRACK") || !name.ends_with(L".CDA"))
        return false;
    const int number = (name[8] - L'0') * 10 + (name[9] - L'0');
    return number >= 1 && number <= tracksOn(full);
}

std::optional<Failure> FakeFileSystem::trouble(Operation operation, std::wstring_view path)
{
    if (untilCut_ && (*untilCut_)-- <= 0)
        return failure(Failure::Kind::other, path, "fails because the test has cut the power");
    for (const std::wstring& key : {path.empty() ? std::wstring() : keyOf(path), std::wstring()}) {
        const auto found = troubles_.find({operation, key});
        if (found == troubles_.end())
            continue;
        if (found->second.second > 0)
            --found->second.second;
        else
            return failure(found->second.first, path, "fails because the test says so");
    }
    return std::nullopt;
}

/// Why no file can be made or replaced at `path`, if so.
std::optional<Failure> FakeFileSystem::cannotPlace(std::wstring_view path) const
{
    if (path.empty() || path.find(L'\0') != std::wstring_view::npos)
        return failure(Failure::Kind::notFound, path, "is no path");
    const std::wstring full = absolute(path);
    if (full[0] != L'C')
        return failure(Failure::Kind::refused, path, "a disc cannot be written");
    const Entry* folder = find(folderOf(full));
    if (folder == nullptr || !folder->folder)
        return failure(Failure::Kind::notFound, path, "no such folder");
    const Entry* there = find(full);
    if (there != nullptr && there->folder)
        return failure(Failure::Kind::refused, path, "is a folder");
    if (there != nullptr && there->readOnly && !cleared_.contains(keyOf(full)))
        return failure(Failure::Kind::refused, path, "is read-only");
    return std::nullopt;
}

FakeFileSystem::Entry& FakeFileSystem::make(const std::wstring& full)
{
    Entry& entry = entries_[base::upper(full)];
    if (entry.name.empty()) {
        const Entry* folder = find(folderOf(full));
        const std::wstring above = folder != nullptr ? folder->name : folderOf(full);
        entry.name = above + (above.ends_with(L'\\') ? L"" : L"\\") + nameOf(full);
    }
    return entry;
}

bool FakeFileSystem::isHeld(const std::wstring& key) const
{
    const auto found = held_.find(key);
    return found != held_.end() && found->second > 0;
}

std::int64_t FakeFileSystem::used() const
{
    std::int64_t sum = 0;
    for (const auto& [key, entry] : entries_)
        sum += static_cast<std::int64_t>(entry.bytes.size());
    return sum;
}

base::Result<std::string> FakeFileSystem::readAll(std::wstring_view path, std::size_t limit)
{
    if (auto bad = trouble(Operation::readAll, path))
        return *bad;
    const Entry* entry = find(path);
    if (entry == nullptr || entry->folder)
        return failure(Failure::Kind::notFound, path, "no such file");
    if (entry->bytes.size() > limit)
        return failure(Failure::Kind::invalid, path, "larger than it may be");
    return entry->bytes;
}

Status FakeFileSystem::writeWhole(std::wstring_view path, std::string_view bytes)
{
    if (auto bad = trouble(Operation::writeWhole, path))
        return *bad;
    if (auto bad = cannotPlace(path))
        return *bad;
    if (isHeld(keyOf(path)))
        return failure(Failure::Kind::refused, path, "is held by a child process");
    const Entry* there = find(path);
    const std::size_t before = there == nullptr ? 0 : there->bytes.size();
    if (static_cast<std::int64_t>(bytes.size()) - static_cast<std::int64_t>(before) > capacity - used())
        return failure(Failure::Kind::full, path, "no space left on device");
    Entry& entry = make(absolute(path));
    entry.bytes = bytes;
    entry.readOnly = false;
    cleared_.erase(keyOf(path));
    return {};
}

base::Result<std::unique_ptr<platform::BinaryFile>> FakeFileSystem::openBinary(std::wstring_view path)
{
    if (auto bad = trouble(Operation::openBinary, path))
        return *bad;
    if (auto bad = cannotPlace(path))
        return *bad;
    if (isHeld(keyOf(path)))
        return failure(Failure::Kind::refused, path, "is held by a child process");
    make(absolute(path)).readOnly = false;
    cleared_.erase(keyOf(path));
    return std::unique_ptr<platform::BinaryFile>(std::make_unique<Binary>(*this, absolute(path), false));
}

base::Result<std::unique_ptr<platform::BinaryFile>> FakeFileSystem::openForReading(std::wstring_view path)
{
    if (auto bad = trouble(Operation::openForReading, path))
        return *bad;
    const Entry* entry = find(path);
    if (entry == nullptr || entry->folder)
        return failure(Failure::Kind::notFound, path, "no such file");
    return std::unique_ptr<platform::BinaryFile>(std::make_unique<Binary>(*this, absolute(path), true));
}

bool FakeFileSystem::fileExists(std::wstring_view path)
{
    const Entry* entry = find(path);
    return entry != nullptr ? !entry->folder : !path.empty() && isDiscName(absolute(path));
}

bool FakeFileSystem::folderExists(std::wstring_view path)
{
    const Entry* entry = find(path);
    return entry != nullptr ? entry->folder : !path.empty() && absolute(path).size() == 3 && tracksOn(path) > 0;
}

std::int64_t FakeFileSystem::length(std::wstring_view path)
{
    const Entry* entry = find(path);
    return entry == nullptr || entry->folder ? 0 : static_cast<std::int64_t>(entry->bytes.size());
}

base::Result<std::chrono::local_seconds> FakeFileSystem::lastChange(std::wstring_view path)
{
    if (!fileExists(path))
        return Failure{Failure::Kind::notFound, base::utf8(path), "is no file"};
    return changed;
}

bool FakeFileSystem::isReadOnly(std::wstring_view path)
{
    const Entry* entry = find(path);
    return entry != nullptr && !entry->folder && entry->readOnly && !cleared_.contains(keyOf(path));
}

Status FakeFileSystem::clearAttributes(std::wstring_view path)
{
    if (auto bad = trouble(Operation::clearAttributes, path))
        return *bad;
    if (!fileExists(path))
        return failure(Failure::Kind::notFound, path, "no such file");
    cleared_.insert(keyOf(path));
    return {};
}

Status FakeFileSystem::remove(std::wstring_view path)
{
    if (auto bad = trouble(Operation::remove, path))
        return *bad;
    const Entry* entry = find(path);
    if (entry == nullptr || entry->folder)
        return failure(Failure::Kind::notFound, path, "no such file");
    if (entry->readOnly && !cleared_.contains(keyOf(path)))
        return failure(Failure::Kind::refused, path, "is read-only");
    if (const auto kept = kept_.find(keyOf(path)); kept != kept_.end()) {
        kept->second = true;
        return {};
    }
    entries_.erase(keyOf(path));
    cleared_.erase(keyOf(path));
    return {};
}

void FakeFileSystem::allowRemoval(std::wstring_view path)
{
    const auto kept = kept_.extract(keyOf(path));
    if (!kept.empty() && kept.mapped())
        entries_.erase(keyOf(path));
}

Status FakeFileSystem::rename(std::wstring_view from, std::wstring_view to)
{
    for (const std::wstring_view path : {from, to})
        if (auto bad = trouble(Operation::rename, path))
            return *bad;
    const Entry* entry = find(from);
    if (entry == nullptr || entry->folder)
        return failure(Failure::Kind::notFound, from, "no such file");
    if (kept_.contains(keyOf(from)))
        return failure(Failure::Kind::refused, from, "is about to be opened by a child process");
    if (keyOf(from) != keyOf(to)) {
        if (auto bad = cannotPlace(to))
            return *bad;
        if (isHeld(keyOf(to)))
            return failure(Failure::Kind::refused, to, "is held by a child process");
    }
    Entry moved = std::move(entries_.at(keyOf(from)));
    entries_.erase(keyOf(from));
    Entry& target = make(absolute(to));
    target.bytes = std::move(moved.bytes);
    target.readOnly = moved.readOnly;
    cleared_.erase(keyOf(from));
    cleared_.erase(keyOf(to));
    return {};
}

Status FakeFileSystem::copy(std::wstring_view from, std::wstring_view to)
{
    for (const std::wstring_view path : {from, to})
        if (auto bad = trouble(Operation::copy, path))
            return *bad;
    const Entry* entry = find(from);
    if (entry == nullptr || entry->folder)
        return failure(Failure::Kind::notFound, from, "no such file");
    if (keyOf(from) == keyOf(to))
        return failure(Failure::Kind::invalid, to, "is the same file");
    const Entry source = *entry;
    auto done = writeWhole(to, source.bytes);
    if (done)
        find(to)->readOnly = source.readOnly;
    return done;
}

Status FakeFileSystem::replace(std::wstring_view from, std::wstring_view to)
{
    for (const std::wstring_view path : {from, to})
        if (auto bad = trouble(Operation::replace, path))
            return *bad;
    for (const std::wstring_view path : {from, to})
        if (const Entry* entry = find(path); entry == nullptr || entry->folder)
            return failure(Failure::Kind::notFound, path, "no such file");
    if (keyOf(from) == keyOf(to))
        return failure(Failure::Kind::invalid, to, "is the same file");
    if (kept_.contains(keyOf(from)))
        return failure(Failure::Kind::refused, from, "is about to be opened by a child process");
    if (auto bad = cannotPlace(to))
        return *bad;
    if (isHeld(keyOf(to)))
        return failure(Failure::Kind::refused, to, "is held by a child process");
    Entry& target = *find(to);
    target.bytes = std::move(find(from)->bytes);
    target.readOnly = false;
    entries_.erase(keyOf(from));
    cleared_.erase(keyOf(from));
    cleared_.erase(keyOf(to));
    return {};
}

Status FakeFileSystem::createFolder(std::wstring_view path)
{
    if (auto bad = trouble(Operation::createFolder, path))
        return *bad;
    if (auto bad = cannotPlace(path))
        return *bad;
    if (find(path) != nullptr)
        return failure(Failure::Kind::refused, path, "exists already");
    make(absolute(path)).folder = true;
    return {};
}

base::Result<std::vector<std::wstring>> FakeFileSystem::list(std::wstring_view folder, std::wstring_view pattern)
{
    if (auto bad = trouble(Operation::list, folder))
        return *bad;
    if (!folderExists(folder))
        return failure(Failure::Kind::notFound, folder, "no such folder");
    const std::wstring full = absolute(folder);
    const std::wstring wanted = pattern == L"*.*" ? L"*" : base::upper(pattern);
    std::vector<std::wstring> names;
    for (const auto& [key, entry] : entries_)
        if (!entry.folder && folderOf(key) == base::upper(full) && matches(wanted, nameOf(key)))
            names.push_back(nameOf(entry.name));
    for (int track = 1; full.size() == 3 && track <= tracksOn(folder); ++track) {
        const std::wstring name = L"track" + std::wstring(track < 10 ? L"0" : L"") + std::to_wstring(track) + L".cda";
        if (matches(wanted, base::upper(name)))
            names.push_back(name);
    }
    return names;
}

Status FakeFileSystem::changeDrive(std::wstring_view path)
{
    if (auto bad = trouble(Operation::changeDrive, path))
        return *bad;
    const wchar_t letter = path.empty() ? wchar_t{0} : base::upper(path[0]);
    if (letter != L'C' && !discTracks.contains(letter))
        return failure(Failure::Kind::notFound, path, "no such drive");
    drive_ = letter;
    return {};
}

Status FakeFileSystem::changeFolder(std::wstring_view path)
{
    if (auto bad = trouble(Operation::changeFolder, path))
        return *bad;
    if (!folderExists(path))
        return failure(Failure::Kind::notFound, path, "no such folder");
    const Entry* entry = find(path);
    folders_[absolute(path)[0]] = entry != nullptr ? entry->name : absolute(path);
    return {};
}

std::wstring FakeFileSystem::currentFolder()
{
    return absolute(L".");
}

std::string FakeFileSystem::hostPath(std::wstring_view path)
{
    const std::wstring full = absolute(path);
    const Entry* entry = find(path);
    const std::wstring named = entry != nullptr ? entry->name : full;
    return named[0] == L'C' ? base::utf8(base::replaced(named.substr(2), L'\\', L'/')) : base::utf8(named);
}

std::wstring FakeFileSystem::programPath(std::string_view hostPath)
{
    const std::wstring path = base::replaced(base::fromHostBytes(hostPath), L'/', L'\\');
    return path.starts_with(L'\\') ? L"C:" + path : path;
}

void FakeFileSystem::put(std::wstring_view path, std::string_view bytes)
{
    const std::wstring full = absolute(path);
    putFolder(folderOf(full));
    make(full).bytes = bytes;
}

void FakeFileSystem::putFolder(std::wstring_view path)
{
    const std::wstring full = absolute(path);
    if (full.size() > 3)
        putFolder(folderOf(full));
    Entry& entry = full.size() > 3 ? make(full) : entries_[full];
    if (full.size() == 3)
        entry.name = full;
    entry.folder = true;
}

void FakeFileSystem::setReadOnly(std::wstring_view path, bool readOnly)
{
    if (Entry* entry = find(path))
        entry->readOnly = readOnly;
}

std::optional<std::string> FakeFileSystem::contents(std::wstring_view path) const
{
    const Entry* entry = find(path);
    return entry == nullptr || entry->folder ? std::nullopt : std::optional(entry->bytes);
}

std::vector<std::wstring> FakeFileSystem::allFiles() const
{
    std::vector<std::wstring> paths;
    for (const auto& [key, entry] : entries_)
        if (!entry.folder)
            paths.push_back(entry.name);
    return paths;
}

void FakeFileSystem::fail(Operation operation, std::wstring_view path, Failure::Kind kind, int after)
{
    troubles_[{operation, path.empty() ? std::wstring() : keyOf(path)}] = {kind, after};
}

void FakeFileSystem::heal(Operation operation, std::wstring_view path)
{
    troubles_.erase({operation, path.empty() ? std::wstring() : keyOf(path)});
}

}
