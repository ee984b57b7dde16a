#include "packages/package_verdict.h"

#include "core/text.h"
#include "packages/tool_words.h"
#include "platform/file_content.h"
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

/// What the tool wrote at its end, or the line with which it owns up to what it left out.
std::string LastWords(const ToolReport& report)
{
    const Failure& failure = report.status.Error();
    return failure.reason.empty() ? failure.details : failure.reason;
}

PackageFault FaultOf(const UnpackTool& unpacker, const ToolReport& report)
{
    constexpr int lockedForUnzip = 82;
    constexpr int methodForUnzip = 81;
    constexpr int fullForUnzip = 50;
    const int code = report.end.code;
    const std::string last = LastWords(report);
    // `unzip` names each file on its way; only what it leaves out is a complaint.
    const bool tar = unpacker.id == Unpacker::Bsdtar;
    const std::string complaint = tar ? last : ComplaintIn(unpacker.tool, report.output);
    if (code == lockedForUnzip || Says(complaint, ToolSays::Locked))
        return PackageFault::Locked;
    if (code == methodForUnzip || Says(complaint, ToolSays::Unknown))
        return PackageFault::Method;
    if (Says(last, ToolSays::Clash))
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

PackageFault JudgePackage(const UnpackTool& unpacker, const Path& package, ToolReport& report)
{
    PackageFault fault = PackageFault::Empty;
    if (report.trouble == ToolTrouble::LeftOut || report.trouble == ToolTrouble::ExitCode)
        fault = FaultOf(unpacker, report);
    else if (report.trouble != ToolTrouble::NoOutput)
        return PackageFault::None;
    // What the disk does not give looks damaged to the tool.
    if (std::string hash; fault == PackageFault::Damaged)
        if (const auto unread = platform::HashOfFile(package, hash);
            unread && unread != std::errc::no_such_file_or_directory) {
            report.status = Saying(GetMsg(Msg::PackageDiskFails, {TextOf(package.filename())}),
                                   MakeFailure(ErrorCode::CannotRead, TextOf(package), unread));
            return fault;
        }
    Failure failure = report.status.Error();
    failure.code = fault == PackageFault::NoRoom ? ErrorCode::NoSpace : ErrorCode::Damaged;
    failure.details = LastWords(report);
    failure.reason = std::move(failure.sentence);
    failure.sentence = GetMsg(WordsOf(fault), {TextOf(package.filename())});
    report.status = failure;
    return fault;
}

bool AsksForCodePage(const ToolReport& report)
{
    return !report.status && Says(LastWords(report), ToolSays::Names);
}

} // namespace kestrova
