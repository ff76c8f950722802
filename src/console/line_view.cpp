#include "console/line_view.h"

#include "console/rip_lines.h"

namespace tonquay::console {

namespace {

// A lost line shows in the exit status at the end; a view has nothing better to do about it.
void flushed(Screen& screen)
{
    static_cast<void>(screen.flush());
}

}

void LineView::trackEnds(const TrackVerdict& verdict)
{
    if (tracks_ == Tracks::shown) {
        screen_.write(verdictLine(verdict) + '\n');
        flushed(screen_);
    }
    if (!verdict.whole)
        screen_.complain(problemLine(verdict));
}

void LineView::trackIsLeftOut(const TrackVerdict& track)
{
    screen_.complain(problemLine(track));
}

void LineView::runEnds(const RunEnd& end)
{
    screen_.write(summaryLine(end) + '\n');
    flushed(screen_);
}

}
