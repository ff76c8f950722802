#include "support/fake_file_system.h"
#include "support/file_system_contract.h"

namespace {

struct FakeWorld {
    tonquay::platform::FileSystem& files() { return fake; }
    void makeReadOnly(std::wstring_view path) { fake.setReadOnly(path); }
    void insertDisc(wchar_t letter, int tracks) { fake.discTracks[letter] = tracks; }

    tonquay::test::FakeFileSystem fake;
};

}

namespace tonquay::test {
INSTANTIATE_TYPED_TEST_SUITE_P(Fake, FileSystemContract, FakeWorld);
}
