#pragma once

#include "platform/wma_encoder.h"

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace tonquay::test {

/// An encoder that keeps what it is given.
class FakeWmaEncoder final : public platform::WmaEncoder {
public:
    struct File {
        std::uint32_t bitrate = 0;
        std::vector<std::pair<std::wstring, std::wstring>> tags{};
        bool tagsComplete = false;
        std::string sound{};
        std::vector<std::size_t> blocks{}; ///< sizes of the writes
        bool closed = false;
    };

    std::vector<std::uint32_t> BASS_WMA_EncodeGetRates(std::uint32_t frequency, std::uint32_t channels,
                                                       std::uint32_t) override
    {
        return frequency == 44100 && channels == 2 ? rates : std::vector<std::uint32_t>{};
    }

    std::int32_t BASS_ErrorGetCode() override { return rates.empty() ? 1 : 0; }

    Handle BASS_WMA_EncodeOpenFile(std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t bitrate,
                                   std::wstring_view file) override
    {
        if (std::find(rates.begin(), rates.end(), bitrate) == rates.end())
            return 0;
        open_[++lastHandle_] = std::wstring(file);
        files[std::wstring(file)] = File{.bitrate = bitrate};
        return lastHandle_;
    }

    bool BASS_WMA_EncodeSetTag(Handle encoder, std::wstring_view tag, std::wstring_view text, std::uint32_t) override
    {
        File* const file = find(encoder);
        if (file == nullptr || file->tagsComplete)
            return false;
        if (tag.empty())
            file->tagsComplete = true;
        else
            file->tags.emplace_back(tag, text);
        return true;
    }

    bool BASS_WMA_EncodeWrite(Handle encoder, std::span<const std::byte> sound) override
    {
        File* const file = find(encoder);
        if (file == nullptr || file->blocks.size() >= mostBlocks)
            return false;
        file->blocks.push_back(sound.size());
        for (const std::byte byte : sound)
            file->sound += static_cast<char>(byte);
        return true;
    }

    bool BASS_WMA_EncodeClose(Handle encoder) override
    {
        File* const file = find(encoder);
        if (file != nullptr)
            file->closed = true;
        return open_.erase(encoder) > 0;
    }

    bool BASS_ChannelStop(Handle encoder) override { return open_.contains(encoder); }
    bool BASS_StreamFree(Handle encoder) override { return BASS_WMA_EncodeClose(encoder); }

    std::size_t openCount() const { return open_.size(); }

    std::vector<std::uint32_t> rates{32000, 128000, 320000};
    std::size_t mostBlocks = 1000000; ///< further writes fail
    std::map<std::wstring, File> files;

private:
    File* find(Handle encoder)
    {
        const auto found = open_.find(encoder);
        return found == open_.end() ? nullptr : &files[found->second];
    }

    std::map<Handle, std::wstring> open_;
    Handle lastHandle_ = 0x80000000;
};

}
