#include "rip/program_files.h"

#include "platform/diagnostics.h"

namespace tonquay::rip {

void ProgramFiles::savepgm(std::int16_t)
{
    platform_.log.line("program", "Program files cannot be written yet");
}

}
