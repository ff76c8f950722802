#pragma once

#include "platform/help_viewer.h"

namespace tonquay::host {

/// The help of a program without windows: there is none to show.
class NoHelp final : public platform::HelpViewer {
public:
    void setFile(std::wstring_view) override {}
    void setTopic(std::int32_t) override {}
    void display() override {}
};

}
