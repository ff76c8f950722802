#include "engine/cd_text_list.h"
#include "engine/engine_form.h"
#include "support/fake_host.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tonquay::engine {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using namespace std::string_literals;

constexpr std::int32_t second = 176400;

struct CdText : testing::Test {
    test::FakeHost host;
    platform::Platform platform = host.platform();
    state::AppState state;
    state::Forms forms;
    EngineContext context{.state = state,
                          .form = forms.controlsOf<state::Cdrip1Controls>(),
                          .ripdeck = forms.ripdeck(),
                          .engine = platform.engine,
                          .wma = platform.wma,
                          .loop = platform.loop,
                          .dialogs = platform.dialogs,
                          .files = platform.files,
                          .log = platform.log};

    std::vector<std::wstring> load(const std::string& block, std::int32_t trackCount)
    {
        host.dialogs.boxes.clear();
        host.log.lines.clear();
        context.form.lstTracks.clear();
        LoadTrackListFromCDText(context, block, trackCount);
        std::vector<std::wstring> rows;
        for (std::int32_t i = 0; i < context.form.lstTracks.rowCount(); ++i)
            rows.push_back(context.form.lstTracks.row(i).text);
        return rows;
    }
};

TEST_F(CdText, namesOfDiscAndTracksBecomeRowsWithTheirTimes)
{
    host.engine.insertDisc(0, {20 * second, 200 * second, second});
    host.engine.drives[0].tracks[1].audio = false;
    const std::string block = "TITLE0=Ålbum\0PERFORMER0=Ann\0title1=One=1\0Performer3=Bob\0COMPOSER1=x\0TITLE3=\0\0"s;
    EXPECT_THAT(load(block, 3), ElementsAre(L"01\t / One=1\t[00:20]", L"03\tBob / \t[00:01]"));
    EXPECT_EQ(context.form.txtCDArtist.text.get(), L"Ann");
    EXPECT_EQ(context.form.txtCDAlbum.text.get(), L"Ålbum");
    EXPECT_THAT(host.log.lines, IsEmpty());
}

TEST_F(CdText, eachStringIsShown)
{
    host.engine.insertDisc(0, {second});
    load("TITLE0=A\0PERFORMER0=B\0\0"s, 1);
    std::vector<std::wstring> texts;
    for (const auto& box : host.dialogs.boxes)
        texts.push_back(box.text);
    EXPECT_THAT(texts, ElementsAre(L"TITLE0=A", L"tag 9:   PERFORMER0=B", L"tag 22:   "));
}

TEST_F(CdText, blocksThatEndEarlyOrHoldOtherThings)
{
    struct Case {
        const char* what;
        std::string block;
        std::int32_t tracks;
        const char* fault; ///< in the log; empty: read to its end
    };
    const Case cases[] = {
        {"nothing", "", 1, ""},
        {"the end only", "\0"s, 1, ""},
        {"no end", "TITLE1=a", 1, ""},
        {"other strings only", "GENRE0=Rock\0=\0TITL\0\0"s, 1, ""},
        {"no number is 0", "TITLE=a\0\0"s, 1, ""},
        {"no equals sign", "TITLE1\0\0"s, 1, " 5 "},
        {"a track too many", "PERFORMER2=a\0\0"s, 1, " 9 "},
        {"below the disc", "TITLE-1=a\0\0"s, 1, " 9 "},
        {"no number that fits", "TITLE99999999999=a\0\0"s, 1, " 6 "},
        {"no tracks", "TITLE0=a\0\0"s, -1, " 9 "},
    };
    host.engine.insertDisc(0, {second});
    for (const Case& c : cases) {
        const auto rows = load(c.block, c.tracks);
        if (*c.fault == '\0') {
            EXPECT_EQ(rows.size(), 1U) << c.what;
            EXPECT_THAT(host.log.lines, IsEmpty()) << c.what;
        } else {
            EXPECT_THAT(rows, IsEmpty()) << c.what;
            ASSERT_EQ(host.log.lines.size(), 1U) << c.what;
            EXPECT_THAT(host.log.lines[0], HasSubstr(std::string("LoadTrackListFromCDText:") + c.fault)) << c.what;
        }
    }
}

}
}
