#pragma once

#include "host/posix/descriptor.h"
#include "platform/diagnostics.h"

#include <functional>
#include <mutex>
#include <string>

namespace tonquay::host {

/// The log file. Each line has its UTC time and area in front. When it has grown past a mebibyte it becomes "log.1" and
/// a new one is begun, so the two never take much more than two.
class HostDiagnostics final : public platform::Diagnostics {
public:
    static constexpr std::int64_t mostBytes = 1 << 20;

    using Sink = std::function<void(std::string_view area, std::string_view text)>;

    /// Makes the folder of `logFile` if need be. `also` gets every line too, on the thread that it came from, one at a
    /// time.
    explicit HostDiagnostics(std::string logFile, Sink also = {});

    void line(std::string_view area, std::string_view text) override;

private:
    void open();
    void begin();

    std::mutex mutex_;
    std::string path_;
    Sink also_;
    Descriptor file_;
};

}
