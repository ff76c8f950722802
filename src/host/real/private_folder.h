#pragma once

#include "base/result.h"

#include <string>

namespace tonquay::host {

/// A new folder in `parent` for this process and user only, removed with all that is in it when this goes away. Its
/// name is made of digits, so that no test of a path for a word can take it for something.
class PrivateFolder {
public:
    static base::Result<PrivateFolder> make(const std::string& parent);
    PrivateFolder(PrivateFolder&& other) noexcept;
    PrivateFolder& operator=(PrivateFolder&&) = delete;
    ~PrivateFolder() { remove(); }

    const std::string& path() const { return path_; }
    void remove();

private:
    explicit PrivateFolder(std::string path) : path_(std::move(path)) {}

    std::string path_;
};

}
