#include "base/sequential.h"

#include <gtest/gtest.h>

namespace {

using namespace tonquay::base;

/// Reads a text, a number and a text, each with an old value of its own.
std::wstring readThree(std::wstring_view file)
{
    SequentialReader reader(file);
    std::wstring first = L"A";
    std::int16_t number = -1;
    std::wstring last = L"Z";
    reader.read(first);
    reader.read(number);
    reader.read(last);
    return first + L'|' + std::to_wstring(number) + L'|' + last;
}

TEST(SequentialReader, takesFieldsInOrderAndLeavesWhatItCannotTake)
{
    const struct {
        const char* what;
        const wchar_t* file;
        const wchar_t* read;
    } cases[] = {
        {"one record", L"\"x\",5,\"y\"\r\n", L"x|5|y"},
        {"one field a line", L"\"x\"\r\n5\r\n\"y\"\r\n", L"x|5|y"},
        {"line feeds and no end", L"\"x\"\n5\n\"y\"", L"x|5|y"},
        {"bare texts", L"  x y  , 5 ,y\r\n", L"x y|5|y"},
        {"quoted numbers", L"x,\"7\",y", L"x|7|y"},
        {"commas and line ends in quotes", L"\"a,b\r\nc\",5,y", L"a,b\r\nc|5|y"},
        {"blanks in quotes stay", L"\" a \",5,\" \"", L" a |5| "},
        {"behind a quote all is skipped", L"\"x\" rubbish \"more\" ,5,y", L"x|5|y"},
        {"an open quote takes the rest", L"x,5,\"y,z", L"x|5|y,z"},
        {"a text for a number is consumed", L"x,five,y", L"x|-1|y"},
        {"a number too large is consumed", L"x,40000,y", L"x|-1|y"},
        {"a number rounds to even", L"x,2.5,y", L"x|2|y"},
        {"an empty bare field is 0 or empty", L",,", L"|0|Z"},
        {"an empty quoted number is a bad value", L"x,\"\",y", L"x|-1|y"},
        {"a file that ends early", L"x,5", L"x|5|Z"},
        {"an empty file", L"", L"A|-1|Z"},
        {"a carriage return alone ends a field", L"x\r5\ry", L"x|5|y"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(readThree(c.file), c.read) << c.what;
}

TEST(SequentialReader, skipsFieldsWithoutLookingAtThem)
{
    SequentialReader reader(L"1,\"a,b\"\r\nx,9");
    std::int32_t number = 0;
    reader.skip(3);
    EXPECT_FALSE(reader.atEnd());
    reader.read(number);
    EXPECT_EQ(number, 9);
    EXPECT_TRUE(reader.atEnd());
    reader.skip(1000);
    reader.read(number);
    EXPECT_EQ(number, 9);
}

TEST(SequentialWriter, writesWhatTheReaderReads)
{
    SequentialWriter writer;
    writer.text(L"a,b é").number(-5).endRecord().text(L"").endRecord();
    EXPECT_EQ(writer.bytes(), "\"a,b \xC3\xA9\",-5\r\n\"\"\r\n");
    EXPECT_FALSE(writer.cleaned());
    writer.text(L"say \"hi\"\r\nnow").endRecord();
    EXPECT_TRUE(writer.cleaned());
    EXPECT_TRUE(writer.bytes().ends_with("\"say 'hi'  now\"\r\n"));
}

}
