#include "mass_storage.h"

#include <cstdio>
#include <fstream>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace tonquay::simulated {

int nextStat(const char* path, struct stat* status)
{
    return ::stat(path, status);
}

}

namespace {

/// Loads the kernel's modules that a file lists, one path a line.
bool loadModules(const char* list)
{
    std::ifstream lines(list);
    for (std::string path; std::getline(lines, path);) {
        const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
        if (file < 0 || ::syscall(SYS_finit_module, file, "", 0) != 0) {
            std::perror(path.c_str());
            return false;
        }
        ::close(file);
    }
    return true;
}

}

/// guest_drive MODULES DRIVE: loads the modules, plugs the drive in that the file DRIVE describes, and serves it.
int main(int argc, char** argv)
{
    using namespace tonquay;
    if (argc != 3 || !loadModules(argv[1]))
        return 1;
    simulated::Drive drive(argv[2]);
    guest::UsbLink link;
    guest::MassStorage device(drive);
    for (;;)
        device.handle(link, link.next());
}
