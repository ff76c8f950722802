#include "support/fake_settings_store.h"
#include "tags/id3v1.h"

#include <algorithm>
#include <cstdlib>

using namespace tonquay;

namespace {

/// Reads a block and writes what was found in it.
tags::Id3v1Block again(const tags::Id3v1Block& block)
{
    test::FakeSettingsStore store;
    tags::COptions options(store, L"C:");
    tags::TagState state;
    tags::ResetTagFields(state, options);
    if (!tags::takeId3v1Block(block, state) || !tags::fieldsFromTagInfo(state, options))
        std::abort();
    return tags::id3v1Block(state.id3v1);
}

}

/// Whatever stands in a block, what was once read and written stays as it is.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::span bytes = std::as_bytes(std::span(data, size));
    tags::TagState state;
    tags::takeId3v1Block(bytes, state);
    tags::Id3v1Block block{std::byte{'T'}, std::byte{'A'}, std::byte{'G'}};
    std::ranges::copy(bytes.first(std::min(size, block.size() - 3)), block.begin() + 3);
    const tags::Id3v1Block first = again(block);
    if (again(first) != first)
        std::abort();
    return 0;
}
