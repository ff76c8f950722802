#include "support/fake_host.h"
#include "support/processes_contract.h"

namespace {

struct FakeWorld {
    FakeWorld()
    {
        host.processes.scripts.push_back({.named = L"enc.exe",
                                          .lasts = std::chrono::milliseconds{200},
                                          .exitCode = 3,
                                          .output = [](const std::wstring&) { return std::wstring(L"C:\\out.mp3"); }});
    }
    tonquay::platform::Processes& processes() { return host.processes; }
    tonquay::platform::EventLoop& loop() { return host.loop; }
    tonquay::platform::FileSystem& files() { return host.files; }
    std::wstring command() { return L"enc.exe C:\\out.mp3"; }

    tonquay::test::FakeHost host;
};

}

namespace tonquay::test {
INSTANTIATE_TYPED_TEST_SUITE_P(Fake, ProcessesContract, FakeWorld);
}
