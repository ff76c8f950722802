#include "host/oggtool/ogg_arguments.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <span>
#include <sys/mman.h>
#include <sys/stat.h>

namespace tonquay::host {

namespace {

std::string lowerCase(std::string_view text)
{
    std::string lower(text);
    for (char& c : lower)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return lower;
}

/// Where the name of the comments file stands among the arguments.
struct FileArgument {
    std::size_t index = 0;
    std::size_t offset = 0; ///< in that argument
};

/// How far an argument leads to the switch -c: the length up to its value, or nothing when it has none.
std::optional<std::size_t> commentSwitch(std::string_view argument)
{
    constexpr std::string_view longForm = "--commentfile";
    if (argument == longForm)
        return longForm.size();
    if (argument.starts_with(longForm) && argument[longForm.size()] == '=')
        return longForm.size() + 1;
    if (!argument.starts_with('-') || argument.starts_with("--"))
        return std::nullopt;
    // Switches without a value may stand before it in the same argument, as in "-wc FILE".
    const std::size_t end = argument.find_first_not_of("alwqhVRe", 1);
    if (end == std::string_view::npos || argument[end] != 'c')
        return std::nullopt;
    return end + 1;
}

std::optional<FileArgument> commentsFile(const Arguments& arguments)
{
    std::optional<FileArgument> found;
    for (std::size_t i = 0; i < arguments.size() && arguments[i] != "--"; ++i) {
        const auto value = commentSwitch(arguments[i]);
        if (value && *value < arguments[i].size())
            found = {i, *value};
        else if (value && i + 1 < arguments.size())
            found = {++i, 0};
        else if (arguments[i] == "-t" || arguments[i] == "-d" || arguments[i] == "--tag" || arguments[i] == "--rm")
            ++i;
    }
    return found;
}

std::string withLineFeeds(std::string text)
{
    std::size_t kept = 0;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] != '\r' || i + 1 == text.size() || text[i + 1] != '\n')
            text[kept++] = text[i];
    text.resize(kept);
    return text;
}

/// A file in memory only, which a program that is started from here inherits.
base::Result<Descriptor> fileInMemory(std::string_view bytes)
{
    constexpr const char* name = "comments";
    Descriptor file(memfd_create(name, 0));
    if (!file)
        return systemFailure(name, "copied", errno);
    std::size_t done = 0;
    if (auto written = writeAt(file.get(), std::as_bytes(std::span(bytes)), 0, name, done); !written)
        return written.failure();
    return file;
}

}

std::string_view machineProgramFor(std::string_view calledAs)
{
    std::string name = lowerCase(calledAs.substr(calledAs.rfind('/') + 1));
    if (name.ends_with(".exe"))
        name.resize(name.size() - 4);
    if (name == "oggenc" || name == "oggencp4")
        return "oggenc";
    if (name == "vorbiscomment")
        return "vorbiscomment";
    return {};
}

Arguments encoderArguments(Arguments arguments)
{
    constexpr std::string_view comment = "-c=";
    const auto end = std::ranges::find(arguments, "--");
    Arguments result;
    for (auto argument = arguments.begin(); argument != end; ++argument)
        if (argument->starts_with(comment))
            result.insert(result.end(), {"-c", "COMMENT=" + argument->substr(comment.size())});
        else
            result.push_back(std::move(*argument));
    result.insert(result.end(), std::make_move_iterator(end), std::make_move_iterator(arguments.end()));
    return result;
}

base::Result<CommentArguments> commentArguments(Arguments arguments)
{
    constexpr std::size_t limit = 16u << 20;
    const auto named = commentsFile(arguments);
    if (!named)
        return CommentArguments{std::move(arguments), {}};
    const std::string path = arguments[named->index].substr(named->offset);
    // Not blocking, and ordinary files only: a pipe can be read but once.
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status {};
    if (!file || fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode))
        return CommentArguments{std::move(arguments), {}};
    auto text = readToEnd(file.get(), limit, path);
    if (!text)
        return text.failure();
    auto copy = fileInMemory(withLineFeeds(std::move(*text)));
    if (!copy)
        return copy.failure();
    arguments[named->index].replace(named->offset, std::string::npos, "/proc/self/fd/" + std::to_string(copy->get()));
    return CommentArguments{std::move(arguments), std::move(*copy)};
}

}
