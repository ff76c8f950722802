#include "app/program.h"
#include "base/text.h"
#include "state/rip_settings_file.h"
#include "support/fake_host.h"

#include <cstdlib>

using namespace tonquay;

namespace {

using controls::MouseButton;
using namespace std::chrono_literals;

/// The parts of the input, one behind each zero byte.
class Parts {
public:
    explicit Parts(std::string text) : rest_(std::move(text)) {}

    std::string next()
    {
        const std::size_t end = std::min(rest_.find('\0'), rest_.size());
        std::string part = rest_.substr(0, end);
        rest_.erase(0, end + 1);
        return part;
    }

private:
    std::string rest_;
};

/// What is written of any settings is read as the same settings.
void checkSettings(const state::RipSettings& settings)
{
    const std::string once = state::ripSettingsText(settings);
    const std::string twice = state::ripSettingsText(state::parseRipSettings(base::fromFileBytes(once), L"C:\\data"));
    const std::string thrice = state::ripSettingsText(state::parseRipSettings(base::fromFileBytes(twice), L"C:\\data"));
    if (twice != thrice)
        std::abort();
}

/// What stands behind the last blank of an encoder's command, without quotes: the file that it makes.
std::wstring lastPath(const std::wstring& command)
{
    const std::size_t close = command.rfind(L'"');
    if (close == std::wstring::npos || close == 0)
        return {};
    const std::size_t open = command.rfind(L'"', close - 1);
    return open == std::wstring::npos ? std::wstring() : command.substr(open + 1, close - open - 1);
}

void useWindow(app::Program& program, test::FakeHost& host)
{
    program.start(L"C:\\CDTONQUAY");
    state::RipdeckControls& main = program.forms().ripdeck();
    for (const controls::Label& label : main.LabelP)
        label.mouseUp(MouseButton::left);
    checkSettings(program.state().settings);
    main.image10[state::selectAllKey].mouseUp(MouseButton::left);
    main.icntla[state::startButton].mouseDown(MouseButton::left);
    main.icntla[state::startButton].mouseUp(MouseButton::left);
    host.loop.runFor(2s);
    program.state().flags.autoTagMode = 0;
    main.image10[state::discTagsKey].mouseUp(MouseButton::left);
    state::CdriptabControls& setup = program.forms().cdriptab();
    main.image10[state::setupKey].mouseUp(MouseButton::left);
    setup.cmdOK.press();
    checkSettings(program.state().settings);
}

}

/// Whatever stands in the files that the ripper reads, it starts, rips, tags and takes its settings dialog's OK. The
/// parts of the input are its settings, the hand-over, the way of reading, the suite's files, and the file that an
/// encoder leaves.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Parts parts(std::string(data, data + size));
    test::FakeHost host;
    host.engine.insertDisc(0, {2 * 2352, 3 * 2352, 2352});
    host.files.discTracks[L'D'] = 3;
    host.files.putFolder(L"C:\\CDTONQUAY\\datacd");
    host.files.put(L"C:\\CDTONQUAY\\lame.exe", "program");
    for (const wchar_t* name : {L"acdset.ini", L"audiocd.dat", L"riptype.ini", L"tqwin.ini", L"TQWIN4.INI"})
        host.files.put(std::wstring(L"C:\\CDTONQUAY\\") + name, parts.next());
    const std::string encoded = parts.next();
    host.processes.scripts = {{.lasts = 20ms, .atStart = [&](const std::wstring& command) {
                                   if (const std::wstring path = lastPath(command); !path.empty())
                                       host.files.put(path, encoded);
                               }}};
    app::Program program(host.platform());
    try {
        useWindow(program, host);
    } catch (const test::ProgramEnded&) {
        // As when the chosen way of reading is another one: the program starts itself anew.
    }
    return 0;
}
