#pragma once

#include "editor/tom_sources.h"
#include "formats/preferences.h"
#include "originals/folder_loan.h"
#include "session/host.h"
#include "tools/bounded_run.h"

namespace kestrova
{

/// What a compilation needs of a session.
struct CompileParts {
    Host& host;
    Machine& machine;
    Folders folders;
    PreferencesRecord& preferences; ///< the compiler's name, which a person may choose anew
    Tools tools;
    ProgressScope& progress;
    RunBounds bounds{}; ///< of one run of the compiler
};

/// A level's `.tom` sources become `.tr4` files. The Level Editor's folder is lent for it: the
/// sources are put into it, the compiler works there, what it made is taken out, and the folder
/// comes back as it was. It does so at the end of this object's life at the latest, and after a
/// kill at the next start.
class TomCompile
{
public:
    explicit TomCompile(CompileParts parts)
        : parts_(std::move(parts)), loan_(parts_.machine, parts_.folders)
    {
    }

    /// Puts the sources into the folder; with `automatic` the compiler runs on each tom file, and
    /// the results are taken to `results`. Without tom files it is done at once, with words.
    void Prepare(const TomSources& sources, const Path& results, bool automatic);

    /// The folder is lent, and a person has to go on: by hand, or by giving up.
    [[nodiscard]] bool NeedsPerson() const { return loan_.IsOpen(); }
    /// The results are where they belong.
    [[nodiscard]] bool IsDone() const { return done_; }

    /// What the person does by hand, line by line.
    [[nodiscard]] std::string Instructions() const;
    /// Starts the compiler for the person, who chooses one where it is missing.
    void StartByHand();
    /// The results are taken out and the folder comes back. False, with words, while one is
    /// missing: nothing is touched then.
    bool TakeResults();
    /// The folder comes back, but for the samples, which stay as far as nobody's own stood there.
    void Cancel();
    /// All of the folder comes back.
    void GiveUp();

private:
    void AddWishes(const std::vector<Path>& files, std::string_view folder, bool stays);
    bool KeepRest();
    bool PutSources();
    bool CompileAll();
    bool CompileEach();
    void TellOthersChanged(const Result<RestReturn>& rest);
    bool CompileOne(std::size_t tom);
    void Return(LoanEnd end);
    void TellStopped();
    [[nodiscard]] Path Compiler() const;

    CompileParts parts_;
    FolderLoan loan_;
    TomSources sources_;
    Path results_;
    std::vector<LoanWish> wishes_; ///< those of the results first, one for each tom file
    bool byHand_ = false;          ///< a person has been at work in the folder
    bool done_ = false;
};

} // namespace kestrova
