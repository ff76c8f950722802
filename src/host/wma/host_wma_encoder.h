#pragma once

#include "base/result.h"
#include "platform/diagnostics.h"
#include "platform/file_system.h"
#include "platform/wma_encoder.h"

#include <map>
#include <memory>

namespace tonquay::host {

/// The WMA encoder of this system. Files are those of the platform's file system: an older one is emptied, its name and
/// its rights stay.
class HostWmaEncoder final : public platform::WmaEncoder {
public:
    HostWmaEncoder(platform::FileSystem& files, platform::Diagnostics& log);
    ~HostWmaEncoder() override; ///< closes what is open
    HostWmaEncoder(const HostWmaEncoder&) = delete;
    HostWmaEncoder& operator=(const HostWmaEncoder&) = delete;

    std::vector<std::uint32_t> BASS_WMA_EncodeGetRates(std::uint32_t frequency, std::uint32_t channels,
                                                       std::uint32_t flags) override;
    std::int32_t BASS_ErrorGetCode() override { return lastError_; }
    Handle BASS_WMA_EncodeOpenFile(std::uint32_t frequency, std::uint32_t channels, std::uint32_t flags,
                                   std::uint32_t bitrate, std::wstring_view file) override;
    bool BASS_WMA_EncodeSetTag(Handle encoder, std::wstring_view tag, std::wstring_view text,
                               std::uint32_t form) override;
    bool BASS_WMA_EncodeWrite(Handle encoder, std::span<const std::byte> sound) override;
    bool BASS_WMA_EncodeClose(Handle encoder) override;
    bool BASS_ChannelStop(Handle encoder) override;
    bool BASS_StreamFree(Handle encoder) override { return BASS_WMA_EncodeClose(encoder); }

    /// Closes what is open, for a program that ends without being taken down.
    void closeAll();

private:
    class Recording;

    Recording* find(Handle encoder);
    /// True for a step that was done; else its failure is told.
    bool tell(const base::Status& done);

    platform::FileSystem& files_;
    platform::Diagnostics& log_;
    std::map<Handle, std::unique_ptr<Recording>> recordings_;
    Handle lastHandle_;
    std::int32_t lastError_ = 0;
};

}
