#include "console/rip_view.h"

#include "console/bar_view.h"
#include "console/json_view.h"
#include "console/line_view.h"

namespace tonquay::console {

ViewKind viewKind(const RipOptions& options, const Screen& screen)
{
    if (options.json)
        return options.quiet ? ViewKind::jsonQuiet : ViewKind::json;
    if (options.quiet)
        return ViewKind::quiet;
    return screen.isTerminal() && !options.verbose ? ViewKind::bars : ViewKind::lines;
}

std::unique_ptr<RipView> makeRipView(ViewKind kind, Screen& screen)
{
    switch (kind) {
    case ViewKind::bars: return std::make_unique<BarView>(screen);
    case ViewKind::json: return std::make_unique<JsonView>(screen, JsonView::Progress::shown);
    case ViewKind::jsonQuiet: return std::make_unique<JsonView>(screen, JsonView::Progress::hidden);
    case ViewKind::quiet: return std::make_unique<LineView>(screen, LineView::Tracks::hidden);
    case ViewKind::lines: break;
    }
    return std::make_unique<LineView>(screen, LineView::Tracks::shown);
}

}
