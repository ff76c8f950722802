#pragma once

#include "platform/help_viewer.h"

#include <string>
#include <utility>
#include <vector>

namespace tonquay::test {

/// Keeps what was displayed.
class FakeHelpViewer final : public platform::HelpViewer {
public:
    void setFile(std::wstring_view path) override { file_ = path; }
    void setTopic(std::int32_t topic) override { topic_ = topic; }
    void display() override { shown.emplace_back(file_, topic_); }

    std::vector<std::pair<std::wstring, std::int32_t>> shown;

private:
    std::wstring file_;
    std::int32_t topic_ = 0;
};

}
