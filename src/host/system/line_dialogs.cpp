#include "host/system/line_dialogs.h"

#include "base/text.h"
#include "host/system/one_line.h"

namespace tonquay::host {

platform::Dialogs::Answer LineDialogs::messageBox(std::wstring_view title, std::wstring_view text, Icon,
                                                  Buttons buttons)
{
    const std::string said = oneLine(base::utf8(text));
    sink_(title.empty() ? said : oneLine(base::utf8(title)) + ": " + said);
    return buttons == Buttons::ok ? Answer::ok : Answer::no;
}

std::optional<std::wstring> LineDialogs::inputBox(std::wstring_view, std::wstring_view, std::wstring_view)
{
    return std::nullopt;
}

std::optional<std::wstring> LineDialogs::openFile(const FileQuestion&)
{
    return std::nullopt;
}

}
