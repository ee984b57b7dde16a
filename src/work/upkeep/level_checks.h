#pragma once

#include "upkeep/repair_level.h"

namespace kestrova
{

/// A file of a level that a check found fault with.
struct CheckedRow {
    LevelCode code = 0;
    std::string level; ///< its name
    LevelFault fault;
    std::string source; ///< where its content is; empty: nowhere, or nobody looked
    std::string remedy; ///< after a repair that did not bring it back: why, and what to do
};

/// A level of which nothing is known, as one whose disc is away.
struct UncheckedLevel {
    LevelCode code = 0;
    std::string level;
    std::string reason;
    bool isAway = false; ///< its disc is not there, which is no fault
};

/// Checks of levels and their repair: what `Dialog_Doctor` and the terminal show and do.
class LevelChecks
{
public:
    explicit LevelChecks(Session& session) : session_(session) {}

    /// Every level that has a stored form, and the backup of the originals, if there is one.
    static std::vector<LevelCode> Everything(const Folders& folders, const Archive& archive);
    /// Checks these levels, of which the original configuration's code stands for the backup of its
    /// files; what was known of them before goes. False when it was stopped: what was
    /// found until then is there.
    bool Check(const std::vector<LevelCode>& codes);
    /// Brings back what can be, from `offered` too where it is not empty, and checks those levels
    /// again. False, in words, when a level could not be repaired, or the offered package not read.
    bool Repair(const Path& offered);

    [[nodiscard]] const std::vector<CheckedRow>& Rows() const { return rows_; }
    [[nodiscard]] const std::vector<UncheckedLevel>& Unchecked() const { return unchecked_; }
    /// Files that the last repair brought back.
    struct Repaired {
        LevelCode code = 0;
        RepairedFile file;
    };
    [[nodiscard]] const std::vector<Repaired>& RepairedOnes() const { return repaired_; }
    [[nodiscard]] const std::vector<LevelCode>& NotedNow() const { return notedNow_; }
    /// How many of the rows are harm.
    [[nodiscard]] std::size_t Harmed() const;
    [[nodiscard]] bool IsChecked() const { return isChecked_ || !unchecked_.empty(); }
    /// What came of it, in one sentence or some.
    [[nodiscard]] std::string Summary() const;
    /// The rows as text, one a line, for the clipboard.
    [[nodiscard]] std::string ListText() const;

    /// What a list says of a fault.
    static std::string NameOf(FileFault kind);

private:
    bool CheckOne(LevelCode code, ProgressScope& progress);
    void FindSources(ProgressScope& progress);
    bool RepairOne(LevelCode code, RepairSources& sources, ProgressScope& progress);
    void Forget(LevelCode code);
    /// The doctor learns what was found.
    void Note(std::vector<LevelCode> checked) const;

    Session& session_;
    Noting noting_ = Noting::No;
    std::vector<CheckedRow> rows_;
    std::vector<UncheckedLevel> unchecked_;
    std::vector<Repaired> repaired_;
    std::vector<LevelCode> notedNow_;
    std::size_t levels_ = 0;
    std::size_t files_ = 0;
    bool isChecked_ = false;
    bool isRepaired_ = false;
};

} // namespace kestrova
