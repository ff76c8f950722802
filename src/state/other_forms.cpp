#include "state/other_forms.h"

namespace tonquay::state {

CdriptabControls::CdriptabControls()
{
    form.caption = L"CD-Tonquay - CD Ripper Setup & Utilities";
    form.design = [this] {
        List2.clear();
        List3.clear();
        List4.clear();
        Text3.text = L"";
        tab = 1;
    };
}

}
