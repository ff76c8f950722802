#include "utility/arguments.h"

#include <vector>

namespace tonquay::utility {

Arguments readArguments(std::span<const std::string_view> words)
{
    Arguments result;
    std::vector<std::string> files;
    bool options = true;
    for (const std::string_view word : words) {
        if (!options || !word.starts_with('-') || word == "-") {
            files.emplace_back(word);
        } else if (word == "--") {
            options = false;
        } else if (word == "-h" || word == "--help") {
            result.wish = Arguments::Wish::help;
        } else if (word == "--version") {
            result.wish = Arguments::Wish::version;
        } else {
            result.problem = std::string(word) + ": there is no such option";
        }
    }
    if (files.size() == 2 && files.front() == "CDR") {
        result.handedOver = true;
        files.erase(files.begin());
    }
    if (files.size() > 1)
        result.problem = "one file at a time";
    else if (!files.empty())
        result.file = files.front();
    return result;
}

}
