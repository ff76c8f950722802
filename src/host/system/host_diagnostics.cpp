#include "host/system/host_diagnostics.h"

#include "host/system/one_line.h"
#include "host/system/places.h"

#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tonquay::host {

namespace {

std::string timeNow()
{
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    gmtime_r(&now, &parts);
    char text[32];
    return {text, std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ ", &parts)};
}

}

HostDiagnostics::HostDiagnostics(std::string logFile, Sink also) : path_(std::move(logFile)), also_(std::move(also))
{
    makeFolders(path_.substr(0, path_.rfind('/')));
    open();
}

void HostDiagnostics::open()
{
    file_ = Descriptor(::open(path_.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600));
}

/// Puts a log that is large enough aside and begins a new one.
void HostDiagnostics::begin()
{
    struct stat status {};
    if (!file_ || fstat(file_.get(), &status) != 0 || status.st_size < mostBytes)
        return;
    // Another process of the same user may have done so already; then its new file is the one to go on with.
    struct stat there {};
    if (stat(path_.c_str(), &there) == 0 && there.st_ino == status.st_ino)
        std::rename(path_.c_str(), (path_ + ".1").c_str());
    open();
}

void HostDiagnostics::line(std::string_view area, std::string_view text)
{
    const std::string said = oneLine(text);
    const std::string entry = timeNow() + oneLine(area) + ": " + said + '\n';
    const std::lock_guard lock(mutex_);
    begin();
    // There is nobody to tell when the log itself cannot be written; later there may be room again.
    if (file_)
        static_cast<void>(!write(file_.get(), entry.data(), entry.size()));
    if (also_)
        also_(area, said);
}

}
