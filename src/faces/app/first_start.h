#pragma once

#include "formats/start_note.h"
#include "session/session.h"
#include "swap/backup_sizes.h"

#include <memory>

namespace kestrova
{

/// State and steps of the page at the first start: what the program needs to know before the first
/// level is played. What is chosen is noted in `first-start.json` until the start has come to its
/// end, so that the next one shows it again, however this one ends.
class FirstStart
{
public:
    /// Whether a start has to begin with the page: nothing is known yet, or an earlier page did not
    /// come to its end.
    static bool IsDue(const Session& session);

    /// `archive`: the one that the program was started with; empty: none.
    FirstStart(Session& session, const Path& archive);

    /// The Level Editors' folders that were found without a question.
    [[nodiscard]] const std::vector<Path>& FoundFolders() const { return found_; }
    [[nodiscard]] const StartNote& Choices() const { return choices_; }
    [[nodiscard]] bool IsOriginal() const { return original_; }
    /// Whether the desktop is to be told of this program's files.
    [[nodiscard]] bool OffersTypes() const { return offersTypes_; }

    /// What a person says of a choice: whether it will do, and in words what it is, or why not.
    struct Verdict {
        bool fine = false;
        std::string words;
    };
    [[nodiscard]] const Verdict& OfTrle() const { return trle_; }
    [[nodiscard]] const Verdict& OfLevels() const { return levels_; }
    /// The room for the chosen form of the safety copy. It never keeps anybody from a start, which
    /// looks for itself.
    [[nodiscard]] Verdict OfRoom() const;
    [[nodiscard]] bool CanStart() const { return trle_.fine && levels_.fine; }

    /// The sizes of the safety copy of the folder that is chosen; they come later.
    [[nodiscard]] bool Measures() const { return measuring_ != nullptr && !measuring_->Done(); }
    [[nodiscard]] std::optional<BackupSizes> Sizes() const;

    /// Says of the choices what it said before, in the language that is spoken now.
    void JudgeAnew();
    void SetTrle(const std::string& typed);
    void SetLevels(const std::string& typed);
    void SetOriginal(bool original) { original_ = original; }
    void SetCompact(bool compact);
    void SetFileTypes(bool wanted);
    void BrowseTrle();
    void BrowseLevels();
    void BrowseArchive();

    /// Does what was chosen: takes the folder, makes the safety copy, makes or opens the archive.
    /// False when something failed or was stopped, which leaves the session without all of them.
    bool Begin();
    /// The same for content of our own to practise with.
    bool BeginPractice();
    /// Says that the program cannot work without all this.
    void GiveUp();

private:
    void JudgeTrle();
    void JudgeLevels();
    void Note() const;
    bool TakeEditor();
    bool MakeCopy();
    bool OpenLevels();
    bool Finish();

    Session& session_;
    StartNote choices_;
    bool original_ = false; ///< said anew at each start: a level may have come in since
    bool offersTypes_;
    std::vector<Path> found_;
    Verdict trle_;
    Verdict levels_;
    Path there_; ///< an archive whose levels lie in the chosen folder already
    std::unique_ptr<BackupMeasuring> measuring_;
};

} // namespace kestrova
