#include "console/run.h"
#include "host/posix/program_search.h"
#include "host/real/real_host.h"
#include "host/system/music_folder.h"
#include "host/system/places.h"
#include "host/tags/file_tags.h"
#include "host/wma/wma_file.h"
#include "platform/file_system.h"

#include <csignal>
#include <cstdlib>

using namespace tonquay;

namespace {

/// The drives that a choice is made among: a named image or device is the only one; else the images that the user has
/// opened, and the machine's drives.
host::DriveSources sourcesFor(const console::DiscChoice& choice)
{
    host::DriveSources sources;
    switch (choice.kind) {
    case console::DiscChoice::Kind::image:
        sources.images = {choice.path};
        sources.machine = false;
        break;
    case console::DiscChoice::Kind::device:
        sources.devices = {choice.path};
        sources.machine = false;
        break;
    default:
        if (const char* discs = std::getenv("TONQUAY_DISCS"))
            sources.images = host::openedImages(discs);
        break;
    }
    return sources;
}

class ThisSystem final : public console::Host {
public:
    explicit ThisSystem(const console::DiscChoice& choice) : real_(sourcesFor(choice)) {}

    platform::Discs& discs() override { return real_.discs(); }

    base::Result<platform::Platform> open(console::RunListener listener) override
    {
        const base::Status opened = real_.open({.say = std::move(listener.say),
                                                .diagnose = std::move(listener.diagnose),
                                                .interrupt = std::move(listener.interrupt),
                                                .decodeEnd = std::move(listener.decodeEnd)});
        if (!opened)
            return opened.failure();
        return real_.platform();
    }

    platform::MachinePrograms programs() override { return real_.programs(); }
    base::Result<std::string> findProgram(const std::string& name) override
    {
        std::vector<std::string> found = host::programsOnPath(name, host::searchPath());
        if (found.empty())
            return base::Failure{base::Failure::Kind::notFound, name, "no program of this name is on PATH"};
        return std::move(found.front());
    }

    base::Result<std::wstring> linkEncoder(const std::string& program, const std::string& name) override
    {
        const base::Result<std::string> link = real_.linkEncoder(program, name);
        if (!link)
            return link.failure();
        return real_.platform().files.programPath(*link);
    }

    std::string programOutput() override { return real_.programOutput(); }
    void endChildren() override { real_.endChildren(); }
    std::string savedSettingsFolder() override { return host::places().programFolder; }
    std::string musicFolder() override { return host::musicFolder(); }
    base::Result<platform::FileTags> readTags(const std::string& hostPath, platform::SoundReading reading) override
    {
        return host::readFileTags(hostPath, reading);
    }
    base::Result<platform::WmaFile> readWma(const std::string& hostPath) override
    {
        return host::readWmaFile(hostPath);
    }

private:
    host::RealHost real_;
};

base::Result<std::unique_ptr<console::Host>> makeHost(const console::DiscChoice& choice)
{
    return std::unique_ptr<console::Host>(std::make_unique<ThisSystem>(choice));
}

}

int main(int count, char** arguments)
{
    // A reader of our output that ends early costs its own lines only, not a track that is half written.
    std::signal(SIGPIPE, SIG_IGN);
    // Whoever started us may have had children's ends ignored; then no encoder's status would reach us.
    std::signal(SIGCHLD, SIG_DFL);
    console::StandardScreen screen;
    const std::vector<std::string> words(arguments + (count > 0 ? 1 : 0), arguments + count);
    return static_cast<int>(console::run(words, screen, makeHost));
}
