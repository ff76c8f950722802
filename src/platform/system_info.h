#pragma once

#include <cstdint>
#include <string>

namespace tonquay::platform {

/// What the program asks of the system that it runs on. All paths in the program's form.
class SystemInfo {
public:
    /// The screen in twips: 15 of them are one logical pixel at every scale.
    struct Screen {
        std::int32_t width;
        std::int32_t height;
        std::int32_t twipsPerPixel = 15;
    };

    virtual ~SystemInfo() = default;

    /// The program folder that the installation names; empty when there is none.
    virtual std::wstring installPath() = 0;

    /// A writable folder of this process, its path free of blanks.
    virtual std::wstring windowsFolder() = 0;
    virtual std::wstring systemFolder() = 0;

    /// The processor's name as it tells it; empty when it does not.
    virtual std::wstring processorName() = 0;

    virtual Screen screen() = 0;
};

}
