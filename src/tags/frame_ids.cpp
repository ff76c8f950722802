#include "tags/frame_ids.h"

#include <algorithm>
#include <array>

namespace tonquay::tags {

namespace {

struct FrameName {
    std::wstring_view identifier;
    FrameKind kind = FrameKind::notServed;
};

constexpr std::size_t servedFrames = 12;

// The first twelve in the order of FrameValueID.
constexpr std::array frameNames = std::to_array<FrameName>({
    {L"TRCK", FrameKind::text},
    {L"TIT2", FrameKind::text},
    {L"TPE1", FrameKind::text},
    {L"TALB", FrameKind::text},
    {L"TYER", FrameKind::text},
    {L"TCON", FrameKind::text},
    {L"COMM", FrameKind::comment},
    {L"TCOM", FrameKind::text},
    {L"TOPE", FrameKind::text},
    {L"TCOP", FrameKind::text},
    {L"WXXX", FrameKind::web},
    {L"TENC", FrameKind::text},
    {L"AENC"},
    {L"APIC"},
    {L"COMR"},
    {L"ENCR"},
    {L"EQUA"},
    {L"ETCO"},
    {L"GEOB"},
    {L"GRID"},
    {L"IPLS"},
    {L"LINK"},
    {L"MCDI"},
    {L"MLLT"},
    {L"OWNE"},
    {L"PRIV"},
    {L"PCNT"},
    {L"POPM"},
    {L"POSS"},
    {L"RBUF"},
    {L"RVAD"},
    {L"RVRB"},
    {L"SYLT"},
    {L"SYTC"},
    {L"TBPM"},
    {L"TDAT"},
    {L"TDLY"},
    {L"TEXT"},
    {L"TFLT"},
    {L"TIME"},
    {L"TIT1"},
    {L"TIT3"},
    {L"TKEY"},
    {L"TLAN"},
    {L"TMED"},
    {L"TOAL"},
    {L"TOFN"},
    {L"TOLY"},
    {L"TORY"},
    {L"TOWN"},
    {L"TPE2"},
    {L"TPE3"},
    {L"TPE4"},
    {L"TPOS"},
    {L"TPUB"},
    {L"TRDA"},
    {L"TRSN"},
    {L"TRSO"},
    {L"TSIZ"},
    {L"TSRC"},
    {L"TSSE"},
    {L"TXXX"},
    {L"UFID"},
    {L"USLT"},
    {L"WCOM"},
    {L"WCOP"},
    {L"WOAF"},
    {L"WOAR"},
    {L"WOAS"},
    {L"WPAY"},
    {L"WPUB"},
});

}

std::wstring_view GetFrameIDString(FrameValueID id)
{
    const auto number = static_cast<std::int32_t>(id);
    if (number < 1 || number > static_cast<std::int32_t>(servedFrames))
        return {};
    return frameNames[static_cast<std::size_t>(number - 1)].identifier;
}

FrameKind GetFrameKind(std::wstring_view identifier)
{
    const auto* const found = std::ranges::find(frameNames, identifier, &FrameName::identifier);
    return found == frameNames.end() ? FrameKind::notServed : found->kind;
}

}
