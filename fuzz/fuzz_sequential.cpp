#include "base/sequential.h"
#include "base/text.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tonquay::base;
    const std::wstring text = fromFileBytes(std::string(data, data + size));
    std::wstring field;
    std::int16_t small = 0;
    std::int32_t large = 0;
    SequentialWriter writer;
    // Each kind of field in turn, and one more of each past the end.
    SequentialReader reader(text);
    for (std::size_t i = 0; i < text.size() + 4 && !(reader.atEnd() && i > text.size()); ++i) {
        switch (i % 4) {
        case 0:
            reader.read(field);
            writer.text(field);
            break;
        case 1:
            reader.read(small);
            writer.number(small);
            break;
        case 2:
            reader.read(large);
            writer.number(large).endRecord();
            break;
        default:
            reader.skip(1);
            writer.number(0);
            break;
        }
    }
    // What the writer writes, the reader reads back.
    const std::wstring clean = replaced(replaced(replaced(field, L'"', L'\''), L'\r', L' '), L'\n', L' ');
    const std::wstring written = fromFileBytes(SequentialWriter().text(field).number(large).endRecord().bytes());
    SequentialReader again(written);
    std::wstring fieldAgain;
    std::int32_t largeAgain = 0;
    again.read(fieldAgain);
    again.read(largeAgain);
    if (utf8(fieldAgain) != utf8(clean) || largeAgain != large)
        std::abort();
    return 0;
}
