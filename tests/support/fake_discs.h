#pragma once

#include "platform/discs.h"

#include <map>

namespace tonquay::test {

/// Answers what its fields hold.
class FakeDiscs final : public platform::Discs {
public:
    std::vector<platform::DriveDescription> drives() override { return list; }

    base::Result<platform::DiscTable> read(wchar_t letter) override
    {
        const auto found = tables.find(letter);
        if (found == tables.end())
            return base::Failure{base::Failure::Kind::notFound, std::string(1, static_cast<char>(letter)),
                                 "there is no disc"};
        return found->second;
    }

    std::vector<platform::DriveDescription> list;
    std::map<wchar_t, platform::DiscTable> tables;
};

}
