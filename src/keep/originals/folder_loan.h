#pragma once

#include "originals/loan_rest.h"

#include <map>

namespace kestrova
{

/// What is wanted of one place of the lent folder.
struct LoanWish {
    std::string name;   ///< `\graphics\wads\city.was`
    Path source;        ///< is copied there; empty: a program makes the file
    bool stays = false; ///< a cancel leaves the copy there
};

/// The Level Editor's folder, lent for the time of an outside program's work. What stands in the
/// way goes aside first, by rename, after all of it was noted and flushed; so the folder comes back
/// as it was from a failure, a kill and a power cut (`RecoverInterruptedWork`). One loan at a time.
/// A loan that is neither given back nor kept is given back at the end of this object's life.
class FolderLoan
{
public:
    FolderLoan(Machine& machine, Folders folders) : machine_(machine), folders_(std::move(folders))
    {
    }
    ~FolderLoan();
    FolderLoan(const FolderLoan&) = delete;
    FolderLoan& operator=(const FolderLoan&) = delete;

    /// Notes the places and takes away what stands there, under any spelling, and what matches
    /// the `swept` patterns (`\script\*.dat`); what matches them later goes when the folder comes
    /// back. A failure leaves the folder as it was, or the note of it. `Refused` while another loan
    /// waits.
    Status Begin(const std::vector<LoanWish>& wishes, const std::vector<std::string>& swept = {});
    [[nodiscard]] bool IsOpen() const { return open_; }
    /// Where a wish's file stands, or will.
    [[nodiscard]] Path PlaceOf(std::size_t wish) const;
    /// Copies the wish's source to its place.
    Status Put(std::size_t wish, const std::function<bool(std::uint64_t)>& progress = {}) const;

    /// Before a program works there unwatched: all else that stands in the folder is noted and
    /// kept, so that it comes back as well, after a kill too. `results`: what else it may write,
    /// and what lies below.
    Status KeepRest(ProgressScope& progress, const std::vector<std::string>& results = {});
    /// After it: the rest is as it was. One that fails is tried again when the folder comes back.
    Result<RestReturn> ReturnRest();

    /// The folder as it was; for a cancel, but for the copies that stay.
    Status GiveBack(LoanEnd end = LoanEnd::Whole);
    /// What was made in the folder stays; what stood there before goes. The rest was returned.
    Status Keep();

private:
    Status Plan(const std::vector<LoanWish>& wishes, const std::vector<std::string>& swept);
    Status PlanPlace(const LoanWish& wish);
    Status PlanSwept(const std::string& name);
    Status MakeMissingFolders(const Path& folder);
    Status SetAside();

    Machine& machine_;
    Folders folders_;
    LoanNote note_;
    std::vector<LoanWish> wishes_;
    std::vector<std::size_t> places_;            ///< of each wish, its number in the note
    std::map<std::string, std::size_t> numbers_; ///< in the note, by exact name
    bool open_ = false;
};

/// True while a lent folder waits to come back.
bool LoanWaits(const Folders& folders);

} // namespace kestrova
