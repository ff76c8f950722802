#include "state/help.h"

#include "state/settings_text.h"

namespace tonquay::state {

void helpOpen(platform::HelpViewer& viewer, const Folders& folders, std::int32_t topic)
{
    viewer.setFile(inFolder(folders.appFolder, L"tqhelp\\cdtonquay.chm"));
    viewer.setTopic(topic);
    viewer.display();
}

}
