#pragma once

#include "platform/help_viewer.h"

#include <functional>
#include <memory>
#include <string>

namespace tonquay::host {

/// The help in a window of its own, made when it is first asked for. A topic is an HTML file in the folder of the help
/// file, "1008-ripper.html" for 1008; "index.html" there lists them all. Nothing is ever taken from a network.
class HelpWindow final : public platform::HelpViewer {
public:
    /// `hostPath` answers a path of the program as one of this system.
    explicit HelpWindow(std::function<std::string(std::wstring_view)> hostPath);
    ~HelpWindow() override;
    HelpWindow(const HelpWindow&) = delete;
    HelpWindow& operator=(const HelpWindow&) = delete;

    void setFile(std::wstring_view path) override { file_ = path; }
    void setTopic(std::int32_t topic) override { topic_ = topic; }
    void display() override;

private:
    class Browser;

    std::function<std::string(std::wstring_view)> hostPath_;
    std::wstring file_;
    std::int32_t topic_ = 0;
    std::unique_ptr<Browser> browser_;
};

}
