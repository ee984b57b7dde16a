#include "originals/folder_loan.h"

#include "core/copying.h"
#include "core/look.h"
#include "core/removal.h"
#include "history/swap_journal_file.h"
#include "platform/folder_memory.h"
#include "words/originals.h"

#include <algorithm>

namespace kestrova
{

FolderLoan::~FolderLoan()
{
    if (open_)
        (void)GiveBack(); // what fails waits for the next start
}

Status FolderLoan::Begin(const std::vector<LoanWish>& wishes, const std::vector<std::string>& swept)
{
    const platform::FolderMemory memory;
    if (LoanWaits(folders_))
        return Failure{ErrorCode::Refused, TextOf(folders_.trle), GetMsg(Msg::LoanStillWaits)};
    if (auto planned = Plan(wishes, swept); !planned)
        return planned;
    if (auto written = WriteLoanNote(folders_, note_); !written)
        return written;
    open_ = true;
    auto lent = SetAside();
    if (lent) {
        note_.phase = LoanPhase::Lent;
        lent = WriteLoanNote(folders_, note_);
    }
    if (!lent) {
        note_.phase = LoanPhase::Planned;
        (void)GiveBack(); // the failure that counts is the first one
    }
    return lent;
}

Status FolderLoan::Plan(const std::vector<LoanWish>& wishes, const std::vector<std::string>& swept)
{
    auto mark = MarkOf(folders_.trle);
    if (!mark)
        return mark.Error();
    note_ = {std::move(*mark), LoanPhase::Planned, {}, {}, swept};
    wishes_ = wishes;
    places_.clear();
    numbers_.clear();
    for (const LoanWish& wish : wishes_)
        if (auto planned = PlanPlace(wish); !planned)
            return planned;
    for (const std::string& name : swept)
        if (auto planned = PlanSwept(name); !planned)
            return planned;
    return {};
}

Status FolderLoan::PlanSwept(const std::string& name)
{
    const auto pattern = SafeRelative(name);
    if (!pattern)
        return pattern.Error();
    const auto files = ListFiles(ResolvePath(folders_.trle / pattern->parent_path()),
                                 pattern->filename().native());
    if (!files)
        return files.Error();
    for (const Path& file : *files) {
        const std::string found = ToBackslashes(file.lexically_relative(folders_.trle));
        if (numbers_.emplace(found, note_.places.size()).second)
            note_.places.push_back({found, true, false, 0, 0});
    }
    return {};
}

Status FolderLoan::PlanPlace(const LoanWish& wish)
{
    const auto relative = SafeRelative(wish.name);
    if (!relative)
        return relative.Error();
    const auto place = FindPath(folders_.trle / *relative);
    if (!place)
        return place.Error();
    const auto twins = CaseTwins(*place);
    if (!twins)
        return twins.Error();
    LentPlace noted;
    noted.name = ToBackslashes(place->lexically_relative(folders_.trle));
    const auto [known, isNew] = numbers_.emplace(noted.name, note_.places.size());
    places_.push_back(known->second);
    if (!isNew)
        return {};
    noted.put = !wish.source.empty();
    if (noted.put) {
        const auto source = LookAt(wish.source);
        if (!source)
            return source.Error();
        noted.size = source->size;
        noted.modifiedNs = source->modifiedNs;
    }
    note_.places.push_back(noted);
    for (const Path& twin : *twins) {
        platform::FileFacts facts;
        if (const auto failure = platform::LookAtLink(twin, facts))
            return MakeFailure(ErrorCode::CannotRead, TextOf(twin), failure);
        if (facts.kind == platform::FileKind::Folder)
            return Failure{ErrorCode::Refused, TextOf(twin), GetMsg(Msg::LoanFolderInTheWay)};
        const std::string name = ToBackslashes(twin.lexically_relative(folders_.trle));
        const auto [number, isOther] = numbers_.emplace(name, note_.places.size());
        if (isOther)
            note_.places.push_back({name, true, false, 0, 0});
        else
            note_.places[number->second].stood = true;
    }
    return MakeMissingFolders(place->parent_path());
}

/// Only notes them; they are made once the note is written.
Status FolderLoan::MakeMissingFolders(const Path& folder)
{
    std::vector<std::string> missing;
    for (Path above = folder; above != folders_.trle && above.has_relative_path();
         above = above.parent_path()) {
        const auto isFree = IsFree(above);
        if (!isFree)
            return isFree.Error();
        if (!*isFree)
            break;
        missing.insert(missing.begin(), ToBackslashes(above.lexically_relative(folders_.trle)));
    }
    for (std::string& name : missing)
        if (std::find(note_.made.begin(), note_.made.end(), name) == note_.made.end())
            note_.made.push_back(std::move(name));
    return {};
}

Status FolderLoan::SetAside()
{
    const Path aside = AsideOf(folders_, 0).parent_path();
    DropRest(folders_); // left without its note it is of no use
    const auto isFree = IsFree(aside);
    if (!isFree)
        return isFree.Error();
    // Left without its note it holds what nobody else may have.
    if (!*isFree && platform::RemoveFolder(aside))
        if (const auto renamed = RenameAside(aside); !renamed)
            return renamed.Error();
    if (auto made = MakeFolders(aside); !made)
        return made;
    for (const std::string& name : note_.made)
        if (auto made = MakeFolders(folders_.trle / SafeRelative(name).Value()); !made)
            return made;
    for (std::size_t i = 0; i < note_.places.size(); ++i)
        if (note_.places[i].stood)
            if (auto moved = MoveSpelled(folders_.trle / SafeRelative(note_.places[i].name).Value(),
                                         AsideOf(folders_, i));
                !moved)
                return moved;
    const bool changed =
        !note_.made.empty() || std::any_of(note_.places.begin(), note_.places.end(),
                                           [](const LentPlace& place) { return place.stood; });
    if (!changed)
        return {}; // nothing that the note counts on; the level's own files may still be unwritten
    const auto failure = platform::SyncFileSystem(folders_.trle);
    return failure ? Status{MakeFailure(ErrorCode::CannotWrite, TextOf(aside), failure)} : Status{};
}

Path FolderLoan::PlaceOf(std::size_t wish) const
{
    return folders_.trle / SafeRelative(note_.places[places_[wish]].name).Value();
}

Status FolderLoan::Put(std::size_t wish, const std::function<bool(std::uint64_t)>& progress) const
{
    return CopyFileOver(wishes_[wish].source, PlaceOf(wish),
                        {Verify::Size, false, false, progress, 0, true});
}

Status FolderLoan::KeepRest(ProgressScope& progress, const std::vector<std::string>& results)
{
    auto kept = kestrova::KeepRest(machine_, folders_, note_, results, progress);
    if (kept)
        kept = WriteLoanNote(folders_, note_);
    if (!kept) {
        note_.rest.reset();
        DropRest(folders_);
    }
    return kept;
}

Result<RestReturn> FolderLoan::ReturnRest()
{
    const platform::FolderMemory memory;
    auto back = kestrova::ReturnRest(machine_, folders_, note_);
    if (!back)
        return back;
    LoanNote without = note_;
    without.rest.reset();
    if (auto written = WriteLoanNote(folders_, without); !written)
        return written.Error();
    note_.rest.reset();
    DropRest(folders_);
    return back;
}

Status FolderLoan::GiveBack(LoanEnd end)
{
    std::vector<std::size_t> stays;
    for (std::size_t i = 0; i < wishes_.size(); ++i)
        if (wishes_[i].stays)
            stays.push_back(places_[i]);
    open_ = false;
    const platform::FolderMemory memory;
    return ReturnLoan(machine_, folders_, note_, end, stays);
}

Status FolderLoan::Keep()
{
    open_ = false;
    return KeepLoan(folders_, note_);
}

bool LoanWaits(const Folders& folders)
{
    return !IsFree(LoanNotePath(folders)).ValueOr(false);
}

} // namespace kestrova
