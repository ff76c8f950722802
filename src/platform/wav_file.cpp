#include "platform/wav_file.h"

namespace tonquay::platform {

base::Status WavFile::writeHeader(const base::WaveFormat& format)
{
    const base::WaveHeader header = base::waveHeader(format);
    if (auto written = file_->write(header.riff); !written)
        return written;
    if (auto written = file_->write(header.format); !written)
        return written;
    return file_->write(header.data);
}

base::Status WavFile::write(std::span<const std::byte> sound)
{
    return file_->write(sound);
}

base::Status WavFile::finish(std::int64_t soundBytes)
{
    const auto sizeField = [](std::int64_t bytes) { return base::littleEndian(static_cast<std::uint32_t>(bytes)); };
    if (auto moved = file_->seek(base::riffSizeOffset); !moved)
        return moved;
    if (auto written = file_->write(sizeField(soundBytes + base::waveHeaderBytes - 8)); !written)
        return written;
    if (auto moved = file_->seek(base::dataSizeOffset); !moved)
        return moved;
    if (auto written = file_->write(sizeField(soundBytes)); !written)
        return written;
    return file_->close();
}

}
