#include "simulated_disc.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <random>
#include <unistd.h>

namespace tonquay::host {
namespace {

constexpr std::size_t sectorBytes = 2352;

std::filesystem::path newFolder()
{
    std::string name = (std::filesystem::temp_directory_path() / "drive-XXXXXX").string();
    return ::mkdtemp(name.data());
}

}

SimulatedDisc::SimulatedDisc(const std::string& table, int sectors)
    : folder_(newFolder()),
      table_(table),
      image_(static_cast<std::size_t>(sectors) * sectorBytes)
{
    std::mt19937_64 noise(1);
    for (std::size_t at = 0; at < image_.size(); at += sizeof(std::uint64_t)) {
        const std::uint64_t bits = noise();
        std::memcpy(&image_[at], &bits, sizeof bits);
    }
    std::string bytes(image_.size(), '\0');
    std::memcpy(bytes.data(), image_.data(), bytes.size());
    std::ofstream(folder_ / "disc.bin", std::ios::binary) << bytes;
    page("");
    ::setenv("SIMULATED_DRIVE", (folder_ / "drive.txt").c_str(), 1);
}

SimulatedDisc::~SimulatedDisc()
{
    ::unsetenv("SIMULATED_DRIVE");
    std::error_code error;
    std::filesystem::remove_all(folder_, error);
}

std::vector<std::byte> SimulatedDisc::sound(int firstSector, int count) const
{
    const auto begin = image_.begin() + firstSector * static_cast<std::ptrdiff_t>(sectorBytes);
    return {begin, begin + count * static_cast<std::ptrdiff_t>(sectorBytes)};
}

void SimulatedDisc::page(const std::string& lines) const
{
    std::ofstream(folder_ / "drive.new") << "device " << device() << "\nimage " << (folder_ / "disc.bin").string()
                                         << '\n'
                                         << table_ << lines;
    std::filesystem::rename(folder_ / "drive.new", folder_ / "drive.txt");
}

std::string SimulatedDisc::state() const
{
    std::ifstream input(folder_ / "drive.txt.state");
    return {std::istreambuf_iterator<char>(input), {}};
}

}
