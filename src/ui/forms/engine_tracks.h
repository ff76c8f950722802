#pragma once

#include "controls/lists.h"
#include "ui/forms/bindings.h"

#include <QTreeWidget>

namespace tonquay::ui {

/// The tracks as the audio engine lists them: number, title and time, which a row's text parts by tabs. A row that the
/// user goes to is chosen, also when it is the one that was chosen already.
class EngineTracks final : public QTreeWidget {
public:
    explicit EngineTracks(controls::ChoiceList& list);

private:
    void takeOver();

    controls::ChoiceList& list_;
    Bindings bindings_;
    bool showing_ = false;
};

}
