#pragma once

#include <cstdint>
#include <string_view>

namespace tonquay::platform {

/// Shows a topic of a help file to the user, in a window of its own that stays open beside the program's.
class HelpViewer {
public:
    virtual ~HelpViewer() = default;

    virtual void setFile(std::wstring_view path) = 0;
    virtual void setTopic(std::int32_t topic) = 0;

    /// Returns at once. Without the file or the topic it says so where the topic would stand.
    virtual void display() = 0;
};

}
