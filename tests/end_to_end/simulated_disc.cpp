#include "end_to_end/simulated_disc.h"

#include <fstream>
#include <sstream>

namespace tonquay::test {

SimulatedDisc::SimulatedDisc(const Sandbox& box, const DiscPlan& plan, const std::string& lines)
    : file_(box.discs() / "drive.txt")
{
    // What the image of one file holds is what a drive delivers, as long as no gap is left out of it.
    static_cast<void>(makeDisc(box.discs(), plan));
    disc_ = "device " + device().string() + "\nimage " + (box.discs() / (plan.name + ".bin")).string() + "\n";
    int leadOut = 0;
    for (const platform::DiscTrack& track : expectedTable(plan)) {
        disc_ += std::string("track ") + (track.audio ? "audio " : "data ") + std::to_string(track.firstSector) + "\n";
        leadOut = track.firstSector + track.sectorCount;
    }
    disc_ += "lead_out " + std::to_string(leadOut) + "\n";
    turnPage(lines);
}

Environment SimulatedDisc::variables() const
{
    return {{"LD_PRELOAD", TONQUAY_SIMULATED_DRIVE},
            {"SIMULATED_DRIVE", file_.string()},
            {"ASAN_OPTIONS", "verify_asan_link_order=0"}};
}

void SimulatedDisc::turnPage(const std::string& lines) const
{
    const std::filesystem::path next = file_.string() + ".next";
    writeFile(next, disc_ + lines);
    std::filesystem::rename(next, file_);
}

std::string SimulatedDisc::state() const
{
    std::ostringstream text;
    text << std::ifstream(file_.string() + ".state").rdbuf();
    return text.str();
}

}
