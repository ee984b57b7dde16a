#include "originals/loan_return.h"

#include "core/copying.h"
#include "core/look.h"
#include "formats/program_folder.h"
#include "history/work_note.h"
#include "originals/folder_in_the_way.h"
#include "originals/handover_return.h"
#include "originals/loan_rest.h"
#include "originals/vault.h"

#include <algorithm>
#include <set>

namespace kestrova
{

namespace
{

constexpr std::uint64_t longestLoanNote = UINT64_C(16) << 20;

class Return
{
public:
    Return(Machine& machine, const Folders& folders, const LoanNote& note, LoanEnd end,
           const std::vector<std::size_t>& stays)
        : machine_(machine), folders_(folders), note_(note), end_(end),
          stays_(stays.begin(), stays.end())
    {
    }

    Status Run()
    {
        LookAtPlaces();
        AddSwept();
        KeepStrangers();
        for (Place& place : places_)
            Note(GiveBack(place));
        for (const Path& file : swept_)
            Note(DeleteSpelled(file));
        if (note_.rest)
            Note(StatusOf(ReturnRest(machine_, folders_, note_)));
        return failure_ ? End() : failure_;
    }

private:
    struct Place {
        const LentPlace* noted = nullptr;
        Path relative;
        Path target;
        Path aside;
        bool isAside = false;
        bool holds = false;   ///< something stands at the target that has to go
        bool skipped = false; ///< it is as it has to be, or nothing can be done
    };

    void Note(const Status& status)
    {
        if (!status && failure_)
            failure_ = status;
    }

    void LookAtPlaces()
    {
        for (std::size_t i = 0; i < note_.places.size(); ++i) {
            Place place;
            place.noted = &note_.places[i];
            place.relative = SafeRelative(place.noted->name).Value();
            place.target = folders_.trle / place.relative;
            place.aside = AsideOf(folders_, i);
            const auto looked = LookAtPlace(place, stays_.contains(i));
            place.skipped = place.skipped || !looked;
            Note(looked);
            places_.push_back(std::move(place));
        }
    }

    Status LookAtPlace(Place& place, bool stays)
    {
        platform::FileFacts aside;
        platform::FileFacts target;
        if (const auto failure = platform::LookAtLink(place.aside, aside))
            return MakeFailure(ErrorCode::CannotRead, TextOf(place.aside), failure);
        if (const auto failure = platform::LookAtLink(place.target, target))
            return MakeFailure(ErrorCode::CannotRead, TextOf(place.target), failure);
        place.isAside = aside.kind != platform::FileKind::Missing;
        place.holds = target.kind != platform::FileKind::Missing;
        const bool wasPut = note_.phase == LoanPhase::Lent;
        // Not moved yet, or back already; and where nothing was put nothing has to go.
        if (!place.isAside && (place.noted->stood || !wasPut)) {
            place.skipped = true;
            return {};
        }
        if (target.kind == platform::FileKind::Folder)
            return RemoveFolderInTheWay(machine_, folders_, folders_.trle, place.relative);
        if (end_ == LoanEnd::Cancelled && stays && MayLeaveCopy(place)) {
            place.skipped = true;
            return place.isAside ? DeleteSpelled(place.aside) : Status{};
        }
        if (place.holds && IsForeign(place, target, wasPut))
            strangers_.push_back(place.relative);
        return {};
    }

    /// What stood there comes back from the backup whenever it is wanted.
    [[nodiscard]] bool MayLeaveCopy(const Place& place) const
    {
        return !place.isAside ||
               SameContent(place.aside, ResolvePath(folders_.Backup() / place.relative));
    }

    [[nodiscard]] bool IsForeign(const Place& place, const platform::FileFacts& target,
                                 bool wasPut) const
    {
        if (target.kind != platform::FileKind::File)
            return false; // a link holds nothing
        if (!wasPut)
            return !SameContent(place.aside, place.target);
        if (place.noted->put)
            return target.size != place.noted->size || target.modifiedNs != place.noted->modifiedNs;
        return end_ == LoanEnd::Recovered;
    }

    /// A program writes names in its own spelling, which is free while the file is aside.
    void AddOtherSpellings(const Place& place, std::set<Path>& ours)
    {
        const auto twins = CaseTwins(place.target);
        Note(StatusOf(twins));
        if (!twins)
            return;
        for (const Path& twin : *twins)
            if (ours.insert(twin).second) {
                const Path relative = place.relative.parent_path() / twin.filename();
                Note(RemoveFolderInTheWay(machine_, folders_, folders_.trle, relative));
                swept_.push_back(twin);
                if (place.noted->put || end_ == LoanEnd::Recovered)
                    strangers_.push_back(relative);
            }
    }

    void AddSwept()
    {
        if (note_.phase != LoanPhase::Lent)
            return;
        std::set<Path> ours;
        for (const Place& place : places_)
            ours.insert(place.target);
        for (const Place& place : places_)
            AddOtherSpellings(place, ours);
        for (const std::string& name : note_.swept) {
            const Path pattern = SafeRelative(name).Value();
            const auto files = ListFiles(ResolvePath(folders_.trle / pattern.parent_path()),
                                         pattern.filename().native());
            Note(StatusOf(files));
            if (!files)
                continue;
            for (const Path& file : *files)
                if (!ours.contains(file)) {
                    swept_.push_back(file);
                    strangers_.push_back(file.lexically_relative(folders_.trle));
                }
        }
    }

    /// What cannot be kept stays where it is.
    void KeepStrangers()
    {
        const Keeping keeping =
            KeepOriginals(machine_, folders_, strangers_,
                          end_ == LoanEnd::OfProgram ? MadeBy::Program : MadeBy::Person);
        if (keeping.failed.empty())
            return;
        Note(keeping.failure);
        const auto stays = [&](const Path& relative) {
            return std::find(keeping.failed.begin(), keeping.failed.end(), relative) !=
                   keeping.failed.end();
        };
        for (Place& place : places_)
            place.skipped = place.skipped || stays(place.relative);
        std::erase_if(swept_, [&](const Path& file) {
            return stays(file.lexically_relative(folders_.trle));
        });
    }

    [[nodiscard]] Status GiveBack(const Place& place) const
    {
        if (place.skipped)
            return {};
        if (place.isAside) {
            auto made = MakeFolders(place.target.parent_path());
            return made ? MoveSpelled(place.aside, place.target) : made;
        }
        if (place.holds)
            if (auto gone = DeleteSpelled(place.target); !gone)
                return gone;
        const Path original = ResolvePath(folders_.Backup() / place.relative);
        const auto has = IsFile(original);
        if (!has || !*has)
            return StatusOf(has);
        return CopyFileOver(original, place.target.parent_path() / original.filename(),
                            {Verify::Size, false, false, {}, plainRights, true});
    }

    /// All of it is in its place; only then the note goes.
    [[nodiscard]] Status End() const
    {
        for (auto name = note_.made.rbegin(); name != note_.made.rend(); ++name)
            (void)platform::RemoveFolder(folders_.trle / SafeRelative(*name).Value());
        if (const auto failure = platform::SyncFileSystem(folders_.trle))
            return MakeFailure(ErrorCode::CannotWrite, TextOf(folders_.trle), failure);
        DropRest(folders_);
        (void)platform::RemoveFolder(AsideOf(folders_, 0).parent_path()); // empty, or of no use
        return StatusOf(DropWorkNote(LoanNotePath(folders_)));
    }

    Machine& machine_;
    const Folders& folders_;
    const LoanNote& note_;
    LoanEnd end_;
    std::set<std::size_t> stays_;
    std::vector<Place> places_;
    std::vector<Path> swept_;
    std::vector<Path> strangers_;
    Status failure_; ///< the first
};

} // namespace

Path LoanNotePath(const Folders& folders)
{
    return InFolder(folders.program, OnDisk::FragLoan);
}

Result<std::optional<LoanNote>> ReadLoanNote(const Folders& folders)
{
    using Found = std::optional<LoanNote>;
    const auto text = ReadFileIfThere(LoanNotePath(folders), longestLoanNote);
    if (!text)
        return text.Error();
    if (!*text)
        return Found{};
    auto note = ParseLoanNote(**text);
    return note ? Result<Found>{std::move(*note)} : note.Error();
}

Status WriteLoanNote(const Folders& folders, const LoanNote& note)
{
    return WriteWorkNote(LoanNotePath(folders), FormatLoanNote(note));
}

Path AsideOf(const Folders& folders, std::size_t place)
{
    return InFolder(folders.trle, OnDisk::DirLent) / std::to_string(place);
}

Status MoveSpelled(const Path& from, const Path& to)
{
    const auto failure = platform::Rename(from, to);
    if (failure == std::errc::cross_device_link) {
        auto copied = CopyFileOver(from, to, {Verify::Content, true, true, {}, 0, true});
        return copied ? DeleteSpelled(from) : copied;
    }
    return failure ? Status{MakeFailure(ErrorCode::CannotWrite, TextOf(to), failure)} : Status{};
}

Status ReturnLoan(Machine& machine, const Folders& folders, const LoanNote& note, LoanEnd end,
                  const std::vector<std::size_t>& stays)
{
    if (note.phase == LoanPhase::Kept)
        return KeepLoan(folders, note);
    if (note.whole)
        return ReturnHandover(machine, folders, note, end);
    return Return{machine, folders, note, end, stays}.Run();
}

Status KeepLoan(const Folders& folders, LoanNote note)
{
    if (note.phase != LoanPhase::Kept) {
        if (const auto failure = platform::SyncFileSystem(folders.trle))
            return MakeFailure(ErrorCode::CannotWrite, TextOf(folders.trle), failure);
        note.phase = LoanPhase::Kept;
        if (auto written = WriteLoanNote(folders, note); !written)
            return written;
    }
    for (std::size_t i = 0; i < note.places.size(); ++i)
        if (auto gone = DeleteSpelled(AsideOf(folders, i)); !gone)
            return gone;
    (void)platform::RemoveFolder(AsideOf(folders, 0).parent_path()); // empty, or of no use
    return StatusOf(DropWorkNote(LoanNotePath(folders)));
}

} // namespace kestrova
