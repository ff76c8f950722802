#pragma once

#include "launcher/launch_desk.h"

#include <QWidget>

#include <memory>

namespace tonquay::launcher {

/// The names of one disc, to be looked at and changed: artist, album and the like, and a title for each track.
class NamesForm final : public QWidget {
public:
    NamesForm();
    ~NamesForm() override;

    void showDisc(const SeenDisc& disc);
    /// No disc: nothing can be entered.
    void clear();

    /// As they stand now, without blanks at their ends.
    platform::DiscNames entered() const;

private:
    struct Parts;

    std::unique_ptr<Parts> parts_;
};

}
