#include "utility/tag_desk.h"

#include "base/numbers.h"
#include "base/text.h"
#include "tags/tag_error.h"
#include "utility/frame_words.h"
#include "utility/losses.h"
#include "utility/planned_tag.h"

#include <algorithm>
#include <iterator>
#include <span>

namespace tonquay::utility {

namespace {

using platform::Dialogs;

constexpr std::wstring_view title = L"CD-Tonquay";

void addList(std::wstring& text, std::wstring_view heading, std::span<const std::wstring> lines)
{
    constexpr std::size_t most = 12;
    if (lines.empty())
        return;
    text.append(text.empty() ? L"" : L"\n\n").append(heading);
    const std::size_t shown = lines.size() <= most ? lines.size() : most - 1;
    for (const std::wstring& line : lines.first(shown))
        text.append(L"\n\u2022 ").append(line);
    if (shown < lines.size())
        text.append(L"\n\u2022 and " + base::digits(static_cast<std::int64_t>(lines.size() - shown)) + L" more");
}

/// The pointer says that the program is at work as long as this lives.
class Busy {
public:
    explicit Busy(Dialogs& dialogs) : dialogs_(dialogs) { dialogs_.setPointer(Dialogs::Pointer::busy); }
    ~Busy() { dialogs_.setPointer(Dialogs::Pointer::normal); }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;

private:
    Dialogs& dialogs_;
};

}

/// What a person is to know before the file changes.
struct TagDesk::Concerns {
    bool readOnly = false;
    std::vector<std::wstring> lost{};
    std::vector<std::wstring> misread{};
};

TagDesk::TagDesk(TagServices services, Dialogs& dialogs) : services_(std::move(services)), dialogs_(dialogs) {}

bool TagDesk::open(std::wstring_view path)
{
    if (!mayLoseChanges(L"Open another file and lose them?"))
        return false;
    auto read = readTagFile(services_, path);
    if (!read) {
        tell(read.failure());
        return false;
    }
    show(std::move(*read));
    return true;
}

bool TagDesk::openHost(const std::string& hostPath)
{
    const std::wstring path = services_.files.programPath(hostPath);
    if (!path.empty())
        return open(path);
    tell({base::Failure::Kind::notFound, hostPath, "is no path of a file"});
    return false;
}

void TagDesk::chooseFile()
{
    std::wstring folder = services_.startFolder;
    if (isOpen())
        folder = file_->path.substr(0, file_->path.find_last_of(L"\\/") + 1);
    const auto chosen = dialogs_.openFile(
        {.title = L"Open an MP3 file", .folder = std::move(folder), .filterName = L"MP3 files", .pattern = L"*.mp3"});
    if (chosen)
        open(*chosen);
}

void TagDesk::show(TagFile file)
{
    edited_ = file.values;
    file_ = std::move(file);
}

/// What was changed stays changed.
base::Status TagDesk::readAnew()
{
    const Changes changed = changes();
    auto read = readTagFile(services_, file_->path);
    if (!read)
        return read.failure();
    show(std::move(*read));
    for (std::size_t field = 0; field < fieldCount; ++field)
        if (changed[field])
            edited_[field] = *changed[field];
    return {};
}

std::string TagDesk::hostPath() const
{
    return isOpen() ? services_.files.hostPath(file_->path) : std::string();
}

std::string TagDesk::fileName() const
{
    const std::string path = hostPath();
    return path.substr(path.rfind('/') + 1);
}

Changes TagDesk::changes() const
{
    Changes changed;
    for (std::size_t field = 0; isOpen() && field < fieldCount; ++field)
        if (edited_[field] != file_->values[field])
            changed[field] = edited_[field];
    return changed;
}

bool TagDesk::isEdited() const
{
    return std::ranges::any_of(changes(), [](const auto& change) { return change.has_value(); });
}

std::wstring TagDesk::summary() const
{
    if (!isOpen())
        return L"No file is open. One can be dropped here.";
    if (!hasTag())
        return L"This file has no ID3v2 tag.";
    const std::wstring version = L"2." + base::digits(file_->header.version());
    const std::wstring size = sizeText(static_cast<std::size_t>(file_->header.bodySize()));
    if (!file_->isKnown())
        return L"This file has an ID3v" + version + L" tag of " + size +
               L". Only version 2.3 can be shown here; what is written takes the place of the whole tag.";
    return L"ID3v2.3 tag of " + size;
}

std::vector<std::wstring> TagDesk::losses() const
{
    return isOpen() ? lossesOfWriting(file_->contents, file_->tag->frames(), changes()) : std::vector<std::wstring>();
}

std::vector<std::wstring> TagDesk::warnings() const
{
    return isOpen() ? misreadings(file_->tag->frames(), changes()) : std::vector<std::wstring>();
}

bool TagDesk::agrees(const Concerns& concerns, std::wstring_view question)
{
    std::wstring text;
    if (concerns.readOnly)
        text = L"This file is read-only. It will be writable afterwards.";
    addList(text, L"This would be lost:", concerns.lost);
    addList(text, L"What may go wrong:", concerns.misread);
    if (text.empty())
        return true;
    text.append(L"\n\n").append(question);
    return dialogs_.messageBox(title, text, Dialogs::Icon::question, Dialogs::Buttons::yesNo) == Dialogs::Answer::yes;
}

/// True when there is nothing to tell.
bool TagDesk::told(const base::Status& status)
{
    if (status)
        return true;
    tell(status.failure());
    return false;
}

void TagDesk::tell(const base::Failure& failure)
{
    dialogs_.messageBox(title, base::fromHostBytes(base::describe(failure)), Dialogs::Icon::exclamation);
}

/// The one place that meets what the writing of a tag raises. Afterwards the file is read anew; after a failure what
/// was changed stays changed.
template <class Work>
void TagDesk::work(Work work)
{
    try {
        const Busy busy(dialogs_);
        work();
        edited_ = file_->values;
    } catch (const tags::TagError& error) {
        tell(error.failure());
        passOver(services_.log, readAnew(), "Read the tag anew that could not be written");
        return;
    }
    told(readAnew());
}

void TagDesk::write()
{
    // What is lost is told of the file as it is now, whatever became of it since it was opened.
    if (!isEdited() || !told(readAnew()))
        return;
    Concerns concerns{.readOnly = services_.files.isReadOnly(file_->path), .lost = losses(), .misread = warnings()};
    std::ranges::move(oddities(*file_, true), std::back_inserter(concerns.misread));
    if (!agrees(concerns, L"Write the tag all the same?"))
        return;
    work([&] {
        applyChanges(*file_->tag, changes());
        file_->tag->WriteTag(file_->path, concerns.readOnly);
    });
}

void TagDesk::remove()
{
    if (!hasTag() || !told(readAnew()))
        return;
    Concerns concerns{.readOnly = services_.files.isReadOnly(file_->path),
                      .lost = lossesOfRemoving(file_->contents),
                      .misread = oddities(*file_, false)};
    if (isEdited())
        concerns.lost.emplace_back(L"The changes that were not written");
    if (agrees(concerns, L"Remove the tag?"))
        work([&] { file_->tag->removeTag(file_->path, concerns.readOnly); });
}

bool TagDesk::mayClose()
{
    return mayLoseChanges(L"Close and lose them?");
}

bool TagDesk::mayLoseChanges(std::wstring_view question)
{
    if (!isEdited())
        return true;
    const std::wstring text = L"The changes to " + base::fromHostBytes(fileName()) + L" are not written yet.\n\n";
    return dialogs_.messageBox(title, text + std::wstring(question), Dialogs::Icon::question,
                               Dialogs::Buttons::yesNo) == Dialogs::Answer::yes;
}

}
