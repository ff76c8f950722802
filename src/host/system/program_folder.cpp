#include "host/system/program_folder.h"

#include "host/posix/descriptor.h"
#include "host/posix/program_search.h"

#include <cerrno>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace tonquay::host {

namespace fs = std::filesystem;
using base::Failure;
using base::Status;

namespace {

enum class Found { nothing, link, other };

Found look(const std::string& path)
{
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0)
        return Found::nothing;
    return S_ISLNK(status.st_mode) ? Found::link : Found::other;
}

bool leadsTo(const std::string& link, const std::string& target)
{
    std::error_code error;
    return fs::read_symlink(link, error) == fs::path(target) && !error;
}

Status makeFolder(const std::string& folder)
{
    if (mkdir(folder.c_str(), 0777) == 0)
        return {};
    const int error = errno;
    struct stat status {};
    if (stat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode))
        return {};
    return systemFailure(folder, "made", error);
}

/// In one step, so that a program which is started meanwhile finds the old link or the new one.
Status makeLink(const std::string& link, const std::string& target)
{
    const std::string temporary = link + '.' + std::to_string(getpid());
    if (symlink(target.c_str(), temporary.c_str()) != 0)
        return systemFailure(link, "made", errno);
    if (rename(temporary.c_str(), link.c_str()) == 0)
        return {};
    const int error = errno;
    unlink(temporary.c_str());
    return systemFailure(link, "replaced", error);
}

/// `missing` is why there is no target.
Status withoutTarget(const std::string& link, Failure missing)
{
    if (isProgramFile(link) && !isOggTool(link))
        return {};
    if (look(link) == Found::link && unlink(link.c_str()) != 0)
        return systemFailure(link, "deleted", errno);
    return missing;
}

Status withTarget(const std::string& link, const std::string& target)
{
    switch (look(link)) {
    case Found::other:
        if (isProgramFile(link))
            return {};
        return Failure{Failure::Kind::refused, link, "is in the way and is no program"};
    case Found::link:
        if (leadsTo(link, target))
            return {};
        break;
    case Found::nothing: break;
    }
    return makeLink(link, target);
}

/// The first program of that name which is not our adapter; empty for none. With no link in its path: one that leads
/// through the program folder would make ours lead to itself.
std::string machineProgram(const std::string& name, const std::string& searchPath)
{
    for (std::string& path : programsOnPath(name, searchPath))
        if (std::error_code error; !isOggTool(path))
            return fs::canonical(path, error).string();
    return {};
}

}

platform::MachinePrograms ProgramFolder::refresh() const
{
    if (const Status made = makeFolder(settings_.folder); !made)
        return {made, made, made};
    return {refreshLame(), refreshOggTool("oggenc", {"oggenc.exe", "oggencp4.exe"}),
            refreshOggTool("vorbiscomment", {"vorbiscomment.exe"})};
}

base::Result<std::string> ProgramFolder::linkEncoder(const std::string& program, const std::string& name) const
{
    const std::string folder = settings_.folder + "/encoder";
    if (const Status made = makeFolder(folder); !made)
        return made.failure();
    std::string link = folder + '/' + name;
    if (const Status made = withTarget(link, program); !made)
        return made.failure();
    return link;
}

Status ProgramFolder::linkLauncher(const std::string& program) const
{
    return withTarget(settings_.folder + "/tqlaunch.exe", program);
}

Status ProgramFolder::linkUtility(const std::string& program) const
{
    const std::string link = settings_.folder + "/tqutil.exe";
    if (program.empty())
        return withoutTarget(link, {Failure::Kind::notFound, "tqutil", "is not installed"});
    return withTarget(link, program);
}

Status ProgramFolder::linkHelp(const std::string& folder) const
{
    const std::string link = settings_.folder + "/tqhelp";
    if (folder.empty() || look(link) == Found::other || (look(link) == Found::link && leadsTo(link, folder)))
        return {};
    return makeLink(link, folder);
}

Status ProgramFolder::refreshLame() const
{
    const std::string link = settings_.folder + "/lame.exe";
    const std::string target = machineProgram("lame", settings_.searchPath);
    if (target.empty())
        return withoutTarget(link, {Failure::Kind::notFound, "lame", "no such program on PATH"});
    return withTarget(link, target);
}

Status ProgramFolder::refreshOggTool(const std::string& program, std::initializer_list<const char*> names) const
{
    const std::string folder = settings_.folder + "/oggtools";
    Failure missing{Failure::Kind::notFound, program, "no such program on PATH"};
    const bool there = !machineProgram(program, settings_.searchPath).empty();
    const bool adapterThere = isProgramFile(settings_.oggTool);
    if (there && !adapterThere)
        missing = {Failure::Kind::notFound, program,
                   "cannot be called, since " + std::string(oggToolName) + " is not installed"};
    if (there && adapterThere)
        if (Status made = makeFolder(folder); !made)
            return made;
    Status whole;
    for (const char* name : names) {
        const std::string link = folder + '/' + name;
        Status done = there && adapterThere ? withTarget(link, settings_.oggTool) : withoutTarget(link, missing);
        if (!done && whole)
            whole = std::move(done);
    }
    return whole;
}

std::string helpOfThisProgram()
{
    const std::string own = ownProgramFile();
    const std::string folder = own.substr(0, own.rfind('/') + 1);
    for (const char* place : {"help", "../share/cd-tonquay/help"}) {
        std::error_code error;
        const fs::path path = fs::canonical(folder + place, error);
        if (!own.empty() && !error && fs::is_directory(path, error))
            return path.string();
    }
    return {};
}

std::string oggToolOfThisProgram()
{
    const std::string own = ownProgramFile();
    const std::string folder = own.substr(0, own.rfind('/') + 1);
    for (const char* place : {"", "../libexec/cd-tonquay/"}) {
        std::string path = folder + place + std::string(oggToolName);
        std::error_code error;
        if (!own.empty() && isProgramFile(path))
            return fs::canonical(path, error).string();
    }
    return {};
}

}
