#include "encode/encoder_kind.h"

#include "base/text.h"

#include <array>

namespace tonquay::encode {

namespace {

struct Test {
    std::wstring_view word;
    EncoderKind kind;
};

// clang-format off
constexpr std::array tests{
    Test{L"LAME", EncoderKind::lame},
    Test{L"BLADE", EncoderKind::blade},
    Test{L"PLUGGER", EncoderKind::plugger},
    Test{L"MP3ENC", EncoderKind::mp3enc},
    Test{L"XINGMP", EncoderKind::xing},
    Test{L"XMCODE", EncoderKind::xing},
    Test{L"OGGENC", EncoderKind::oggenc},
};
// clang-format on

}

EncoderKind encoderKind(std::wstring_view encoderPath)
{
    EncoderKind kind = EncoderKind::generic;
    for (const Test& test : tests)
        if (pathNames(encoderPath, test.word))
            kind = test.kind;
    return kind;
}

bool pathNames(std::wstring_view encoderPath, std::wstring_view word)
{
    return base::upper(encoderPath).find(word) != std::wstring::npos;
}

}
