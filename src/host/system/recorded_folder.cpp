#include "host/system/recorded_folder.h"

#include "base/text.h"
#include "host/system/host_diagnostics.h"
#include "host/system/host_settings_store.h"
#include "host/system/places.h"

namespace tonquay::host {

namespace {

constexpr std::wstring_view section = L"Installation";
constexpr std::wstring_view key = L"InstallPath";

}

std::string recordedProgramFolder()
{
    const Places here = places();
    HostDiagnostics log(here.logFile);
    return base::utf8(HostSettingsStore(here.settingsFile, log).get(section, key, L""));
}

void recordProgramFolder(const std::string& folder)
{
    const Places here = places();
    HostDiagnostics log(here.logFile);
    HostSettingsStore(here.settingsFile, log).set(section, key, base::fromHostBytes(folder));
}

}
