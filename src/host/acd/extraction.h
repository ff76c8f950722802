#pragma once

#include "host/acd/sector_reader.h"
#include "host/audio/thread_reaper.h"
#include "platform/decode_report.h"
#include "platform/diagnostics.h"
#include "platform/file_system.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace tonquay::host {

/// One track, or a part of it, on its way into a WAV file.
///
/// Two threads of its own do it: one reads, by its mode, the other writes. So a drive that hangs holds up neither the
/// logic nor an abort. The file tells of no sound until all of it is there: what is broken off never looks whole.
class Extraction {
public:
    struct Job {
        std::shared_ptr<Disc> disc;
        std::uint32_t drive = 0;
        std::int32_t track = 0;     ///< from 0
        int trackSector = 0;        ///< the track's first sector
        std::int64_t firstByte = 0; ///< of the wanted part, from the track's first sample
        std::int64_t bytes = 0;     ///< of the wanted part; more than 0, whole frames
        SectorRun allowed{};        ///< sound that may be read for comparison, the wanted part included
        SectorReader::Mode mode = SectorReader::Mode::burst;
        std::unique_ptr<platform::BinaryFile> file;
        std::string name;                         ///< for the log
        std::chrono::milliseconds patience{5000}; ///< without sound, until a line says so
    };

    /// Called on the writing thread.
    struct Calls {
        std::function<void(std::int32_t tenthsOfPercent)> progress; ///< rising, as often as eyes follow
        std::function<void(platform::DecodeReport)> ended;          ///< the last call, when the file is closed
    };

    /// Starts at once. `log` outlives it. Throws std::system_error when the system has no thread to give.
    Extraction(Job job, Calls calls, platform::Diagnostics& log, ThreadReaper& reaper);

    /// Like abort(), and waits until the file is closed; the reaper gets a reader that hangs.
    ~Extraction();
    Extraction(const Extraction&) = delete;
    Extraction& operator=(const Extraction&) = delete;

    /// Ends it as soon as the file can be closed, whether the drive answers or not.
    void abort();

private:
    struct Work;

    std::shared_ptr<Work> work_;
    ThreadReaper& reaper_;
    BackgroundThread reading_;
    BackgroundThread writing_;
};

}
