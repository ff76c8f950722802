#include "encode/encoder_pipeline.h"

#include "platform/diagnostics.h"

namespace tonquay::encode {

EncoderPipeline::Next EncoderPipeline::encodeTrack(std::int32_t, std::wstring_view)
{
    platform_.log.line("encoder", "Encoders cannot be driven yet; the WAV file stays");
    return Next::track;
}

EncoderPipeline::Next EncoderPipeline::encodeBatch(std::wstring_view)
{
    platform_.log.line("encoder", "Encoders cannot be driven yet; the WAV files stay");
    return Next::finish;
}

}
