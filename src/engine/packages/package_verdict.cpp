#include "packages/package_verdict.h"

#include "core/text.h"
#include "packages/tool_words.h"
#include "words/packages.h"

#include <algorithm>

namespace kestrova
{

namespace
{

/// True when the tool's words hold one of the row's, which are parted by `|`.
bool Says(const std::string& words, std::string_view row)
{
    const std::vector<std::string> parts = Split(row, '|');
    return std::any_of(parts.begin(), parts.end(), [&](const std::string& part) {
        return FindFolded(words, part) != std::string::npos;
    });
}

PackageFault FaultOf(const UnpackTool& unpacker, const ToolProgressState& state)
{
    constexpr int lockedForUnzip = 82;
    constexpr int methodForUnzip = 81;
    constexpr int fullForUnzip = 50;
    const int code = state.end.code;
    // `unzip` names each file on its way; only what it leaves out is a complaint.
    const bool tar = unpacker.id == Unpacker::Bsdtar;
    const std::string complaint = tar ? state.details : ComplaintIn(unpacker.tool, state.output);
    if (code == lockedForUnzip || Says(complaint, ToolSays::Locked))
        return PackageFault::Locked;
    if (code == methodForUnzip || Says(complaint, ToolSays::Unknown))
        return PackageFault::Method;
    if (Says(state.details, ToolSays::Clash))
        return PackageFault::Clash;
    if (tar && Says(complaint, ToolSays::LeadsOut))
        return PackageFault::LeadsOut;
    if (tar && Says(complaint, ToolSays::Names))
        return PackageFault::Names;
    if (code == fullForUnzip || Says(complaint, ToolSays::Full))
        return PackageFault::NoRoom;
    return PackageFault::Damaged;
}

Message WordsOf(PackageFault fault)
{
    switch (fault) {
    case PackageFault::Empty:
        return Msg::PackageEmpty;
    case PackageFault::Locked:
        return Msg::PackageLocked;
    case PackageFault::Method:
        return Msg::PackageMethod;
    case PackageFault::Clash:
        return Msg::PackageClash;
    case PackageFault::LeadsOut:
        return Msg::PackageLeadsOut;
    case PackageFault::Names:
        return Msg::PackageNames;
    case PackageFault::NoRoom:
        return Msg::PackageNoRoom;
    case PackageFault::None:
    case PackageFault::Damaged:
        break;
    }
    return Msg::PackageDamaged;
}

} // namespace

PackageFault JudgePackage(const UnpackTool& unpacker, const Path& package, ToolProgressState& state)
{
    PackageFault fault = PackageFault::Empty;
    if (state.trouble == ToolTrouble::LeftOut || state.trouble == ToolTrouble::ExitCode)
        fault = FaultOf(unpacker, state);
    else if (state.trouble != ToolTrouble::NoOutput)
        return PackageFault::None;
    state.details = state.error + std::string{lineBreak} + state.details;
    state.error = GetMsg(WordsOf(fault), {TextOf(package.filename())});
    return fault;
}

bool AsksForCodePage(const ToolProgressState& state)
{
    return Says(state.details, ToolSays::Names);
}

} // namespace kestrova
