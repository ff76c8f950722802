#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace tonquay::host {

/// A temporary folder with a simulated drive and the image of the disc in it, for as long as this lives.
class SimulatedDisc {
public:
    /// `table` are the lines of the drive's file that tell its disc.
    explicit SimulatedDisc(const std::string& table = threeTracks, int sectors = 1500);
    ~SimulatedDisc();
    SimulatedDisc(const SimulatedDisc&) = delete;
    SimulatedDisc& operator=(const SimulatedDisc&) = delete;

    static constexpr const char* threeTracks = "track audio 0\ntrack audio 500\ntrack audio 900\nlead_out 1500\n";

    std::string device() const { return (folder_ / "sr0").string(); }
    const std::filesystem::path& folder() const { return folder_; }

    /// The bytes that the sectors hold.
    std::vector<std::byte> sound(int firstSector, int count) const;

    /// Turns the page: the drive is as told at first and these lines besides, from its next request on.
    void page(const std::string& lines) const;

    /// What the drive noted of its door and lock; empty when nothing moved yet.
    std::string state() const;

private:
    std::filesystem::path folder_;
    std::string table_;
    std::vector<std::byte> image_;
};

/// Waits for something that a watch is to notice. False when it did not within the limit.
inline bool eventually(const std::function<bool()>& happened,
                       std::chrono::milliseconds limit = std::chrono::milliseconds(2000))
{
    const auto deadline = std::chrono::steady_clock::now() + limit;
    while (!happened()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

}
