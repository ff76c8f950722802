#pragma once

#include "state/id3auto_controls.h"
#include "ui/forms/bindings.h"

#include <memory>

namespace tonquay::ui {

/// The window of the automatic tagger. It is made when it is first shown; one that does its work while it loads is
/// never seen.
class TaggerWindow {
public:
    explicit TaggerWindow(state::Id3autoControls& form);
    ~TaggerWindow();
    TaggerWindow(const TaggerWindow&) = delete;
    TaggerWindow& operator=(const TaggerWindow&) = delete;

private:
    class Dialog;

    void showState(controls::Form::State state);

    state::Id3autoControls& form_;
    std::unique_ptr<Dialog> dialog_;
    Bindings bindings_;
};

}
