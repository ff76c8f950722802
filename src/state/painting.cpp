#include "state/painting.h"

namespace tonquay::state {

void setborder(RipdeckControls& ripdeck, const Theme& theme)
{
    ripdeck.listBorderColour = theme.normal();
}

void sbarbc(RipdeckControls& ripdeck, const Theme& theme)
{
    for (controls::ProgressPanel* panel : {&ripdeck.Trackprogress, &ripdeck.Totalprogress})
        panel->barColour = theme.highlight();
}

}
