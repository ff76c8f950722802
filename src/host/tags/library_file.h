#pragma once

#include <tfile.h>

namespace tonquay::host {

/// A file that is read at places that we name, instead of one that the library searches by itself.
class LibraryFile final : public TagLib::File {
public:
    explicit LibraryFile(TagLib::IOStream* stream) : File(stream) {}

    TagLib::Tag* tag() const override { return nullptr; }
    TagLib::AudioProperties* audioProperties() const override { return nullptr; }
    bool save() override { return false; }
};

}
