#include "encode/encoder_kind.h"

#include <gtest/gtest.h>

namespace tonquay::encode {
namespace {

TEST(EncoderKind, isToldFromTheWholePathAndTheLastWordWins)
{
    struct Case {
        const wchar_t* path;
        EncoderKind kind;
    };
    const Case cases[] = {
        {L"", EncoderKind::generic},
        {L"C:\\USR\\BIN\\FLAC", EncoderKind::generic},
        {L"C:\\BIN\\LAME.EXE", EncoderKind::lame},
        {L"C:\\Bin\\lame", EncoderKind::lame},
        {L"C:\\FLAMES\\ENC.EXE", EncoderKind::lame},
        {L"C:\\BLADEENC.EXE", EncoderKind::blade},
        {L"C:\\PLUGGER.EXE", EncoderKind::plugger},
        {L"C:\\MP3ENC31.EXE", EncoderKind::mp3enc},
        {L"C:\\XINGMP3.EXE", EncoderKind::xing},
        {L"C:\\XMCODE.EXE", EncoderKind::xing},
        {L"C:\\XING\\TOMPG.EXE", EncoderKind::generic},
        {L"C:\\OGGTOOLS\\OGGENC.EXE", EncoderKind::oggenc},
        {L"C:\\OGGTOOLS\\OGG.EXE", EncoderKind::generic},
        {L"C:\\LAME\\BLADEENC.EXE", EncoderKind::blade},
        {L"C:\\BLADE\\LAME.EXE", EncoderKind::blade},
        {L"C:\\PLUGGER\\BLADEENC.EXE", EncoderKind::plugger},
        {L"C:\\MP3ENC\\PLUGGER.EXE", EncoderKind::mp3enc},
        {L"C:\\XMCODE\\MP3ENC.EXE", EncoderKind::xing},
        {L"C:\\OGGENC\\XINGMP3.EXE", EncoderKind::oggenc},
        {L"C:\\LAME\\OGGENC.EXE", EncoderKind::oggenc},
    };
    for (const Case& c : cases)
        EXPECT_EQ(encoderKind(c.path), c.kind) << c.path;
}

}
}
