#pragma once

#include "app/program.h"
#include "host/real/real_host.h"
#include "host/windows/help_window.h"
#include "host/windows/window_dialogs.h"
#include "ui/forms/windows.h"
#include "ui/ripdeck/run_report.h"

#include <atomic>
#include <memory>
#include <string>

namespace tonquay::ui {

/// The desktop program put together: this system, the logic, and a window for each form. One for a process; the
/// application object of Qt is made before it.
class Ripdeck {
public:
    Ripdeck();

    /// Comes up with the main window. `commandLine` is the program folder as a host path; an empty one stands for the
    /// folder that the installation has recorded. Anything else is taken as it stands, and nothing is found there.
    /// May end the process, as every command of the program may; returns when the window is ready. Fails when this
    /// system lacks what the program cannot do without.
    base::Status start(const std::string& commandLine);

    /// After start().
    app::Program& program() { return *program_; }

private:
    void makeReport();
    void showReport(const RunReport::Result& result);

    host::RealHost host_;
    host::WindowDialogs dialogs_;
    host::HelpWindow help_;
    std::unique_ptr<app::Program> program_;
    std::unique_ptr<Windows> windows_;
    std::unique_ptr<RunReport> report_;
    std::atomic<platform::EventLoop*> reportLoop_{nullptr}; ///< asked by whatever thread leaves a line
};

}
