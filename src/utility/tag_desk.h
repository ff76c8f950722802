#pragma once

#include "platform/dialogs.h"
#include "utility/tag_file.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tonquay::utility {

/// What the utility does, without its window: one file's ID3v2 tag, shown, changed, written and taken away.
///
/// Nothing is written or taken away before what would be lost by it was said and agreed to; where nothing would be,
/// nothing is asked. Questions and errors are message boxes. Whatever fails leaves the file as it was.
class TagDesk {
public:
    TagDesk(TagServices services, platform::Dialogs& dialogs);

    /// Shows another file. Asks first when changes would be lost. When the file cannot be read that is told, and
    /// whatever was open stays. True when it is open now.
    bool open(std::wstring_view path);
    /// The same for a file as this system writes it; one without folders lies where the program was started.
    bool openHost(const std::string& hostPath);

    /// Asks for a file, beginning in the folder of the one that is open, and opens it.
    void chooseFile();

    bool isOpen() const { return file_.has_value(); }
    bool hasTag() const { return isOpen() && file_->hasTag(); }

    /// The file's name alone, and with its folders, as this system writes them; empty when none is open.
    std::string fileName() const;
    std::string hostPath() const;

    /// The values as they stand in the window.
    const std::wstring& value(std::size_t field) const { return edited_[field]; }
    void edit(std::size_t field, std::wstring_view value) { edited_[field] = value; }
    bool isEdited() const;

    /// What the file has, in one line.
    std::wstring summary() const;
    /// What Write would lose as it stands, a line each.
    std::vector<std::wstring> losses() const;
    /// What is wrong with the values as they stand, a line each.
    std::vector<std::wstring> warnings() const;

    /// Writes the values that were changed into the tag, and reads the file anew. Nothing happens when none were.
    void write();

    /// Takes the tag away, and reads the file anew. Nothing happens without a tag.
    void remove();

    /// Whether the window may close: when nothing was changed, or the changes are to be lost.
    bool mayClose();

private:
    struct Concerns;

    Changes changes() const;
    void show(TagFile file);
    base::Status readAnew();
    bool agrees(const Concerns& concerns, std::wstring_view question);
    bool told(const base::Status& status);
    void tell(const base::Failure& failure);
    bool mayLoseChanges(std::wstring_view question);
    template <class Work>
    void work(Work work);

    TagServices services_;
    platform::Dialogs& dialogs_;
    std::optional<TagFile> file_;
    Values edited_;
};

}
