#pragma once

#include "end_to_end/sandbox.h"

#include <filesystem>
#include <string>

namespace tonquay::test {

/// A disc in the simulated drive, for a program that is run with variables() and told to read device().
class SimulatedDisc {
public:
    /// `lines` are further ones for the drive's file, see its README.
    SimulatedDisc(const Sandbox& box, const DiscPlan& plan, const std::string& lines = {});

    std::filesystem::path device() const { return "/dev/simulated"; }
    Environment variables() const;

    /// What the drive is from now on: the disc as it is, with these lines.
    void turnPage(const std::string& lines) const;

    /// The drive's own account: "door closed\nlock on\n".
    std::string state() const;

private:
    std::filesystem::path file_;
    std::string disc_;
};

}
