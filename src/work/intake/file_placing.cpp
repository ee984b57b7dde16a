#include "intake/file_placing.h"

#include "core/copying.h"
#include "core/file_kinds.h"
#include "core/look.h"
#include "session/telling.h"
#include "words/levels.h"

namespace kestrova
{

namespace
{

Result<bool> IsFileAt(const Path& exact)
{
    const auto facts = LookAtSpelled(exact);
    return facts ? Result<bool>{facts->kind == platform::FileKind::File} : facts.Error();
}

/// A file that takes the place of a stored one: that one's compressed form must not stay beside it.
Status DropStoredForm(FolderNames& names, const std::string& name)
{
    const std::string stored = name + std::string{OnDisk::ZlExtension};
    if (!names.Has(stored))
        return {};
    auto dropped = DeleteFile(names.PathOf(stored));
    names.Remove(stored);
    return dropped;
}

Status KeepUnderFreeName(FolderNames& names, const Path& file, SourceReport& report)
{
    const std::string name = file.filename().native();
    const std::string free = names.FreeName(name);
    if (const auto failure = platform::Rename(file, names.Folder() / free))
        return MakeFailure(ErrorCode::CannotWrite, TextOf(names.Folder() / free), failure);
    names.Remove(name);
    names.Add(free);
    report.renamed.push_back(GetMsg(Msg::RenamedPair, {TextOf(Path{name}), TextOf(Path{free})}));
    return {};
}

/// True when the person's word leaves nothing to do.
Result<bool> MakeWay(Host& host, const Path& file, const Path& target, const Placing& placing,
                     FolderNames& names, ProgressScope& progress, SourceReport& report)
{
    if (target == placing.package)
        return false;
    const auto isThere = IsFileAt(target);
    if (!isThere || !*isThere)
        return isThere;
    bool goesOn = true;
    if (SameContent(file, target, [&] { return goesOn = progress.Step(); }))
        return false;
    if (!goesOn)
        return MakeFailure(ErrorCode::Stopped, TextOf(file));
    // Of two that come in together the second one must not go over the first without a word.
    const bool cameNow = report.placed.contains(FoldCase(target.filename().native()));
    if (placing.replace == Replace::KeepBoth) {
        if (auto kept = KeepUnderFreeName(names, target, report); !kept)
            return kept.Error();
    } else if (placing.replace == Replace::Ask || cameNow) {
        return !ConfirmReplace(host, file, target);
    }
    return false;
}

/// A file into a place that is spelled as its folder has it.
Status TakeFile(const Path& file, const Path& target, bool keepSource, ProgressScope& progress)
{
    CopyOptions options;
    options.rights = plainRights;
    options.spelled = true;
    options.progress = [&](std::uint64_t) { return progress.Step(); };
    if (keepSource)
        return CopyFileOver(file, target, options);
    const auto failure = platform::Rename(file, target);
    if (!failure)
        return {};
    if (failure != std::errc::cross_device_link)
        return MakeFailure(ErrorCode::CannotWrite, TextOf(target), failure);
    options.verify = Verify::Content; // unflushed: the package that it came from is still there
    if (auto status = CopyFileOver(file, target, options); !status)
        return status;
    (void)platform::Unlink(file); // its folder goes soon
    return {};
}

} // namespace

FolderNames& NamesOf(const Path& folder, SourceReport& report)
{
    if (report.names == nullptr || !report.names->State() ||
        report.names->Folder() != ResolvePath(folder))
        report.names = std::make_shared<FolderNames>(folder);
    return *report.names;
}

Status PutFile(Host& host, const Path& file, const Path& folder, const Placing& placing,
               ProgressScope& progress, SourceReport& report)
{
    FolderNames& names = NamesOf(folder, report);
    if (!names.State())
        return names.State();
    const Path target = names.PathOf(ListableName(file.filename().native()));
    const auto stays = MakeWay(host, file, target, placing, names, progress, report);
    if (!stays)
        return stays.Error();
    if (*stays)
        return {};
    if (auto put = TakeFile(file, target, placing.keepSource, progress); !put)
        return put;
    const std::string name = target.filename().native();
    names.Add(name);
    report.placed.insert(FoldCase(name));
    if (!placing.package.empty())
        report.unpacked.insert(FoldCase(name));
    return DropStoredForm(names, name);
}

} // namespace kestrova
