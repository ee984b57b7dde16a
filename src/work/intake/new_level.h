#pragma once

#include "formats/level_config.h"
#include "intake/files_before.h"
#include "intake/folder_sources.h"

/// A level on its way into the archive, or one of the archive while it is edited: its texts, its
/// folder, and everything that may be done to it until it is accepted or cancelled.
namespace kestrova
{

enum class LevelMode {
    New,       ///< the record is not in the archive yet, its folders are made and empty
    Properties ///< a level of the archive
};

class NewLevel
{
public:
    /// `record` is changed while this goes on, and is as it was after `Cancel`. `progress` follows
    /// every long step; its Stop ends the step that runs.
    NewLevel(Session& session, LevelRecord& record, LevelMode mode, ProgressScope& progress);
    /// A temporary folder that is still there goes.
    ~NewLevel();
    NewLevel(const NewLevel&) = delete;
    NewLevel& operator=(const NewLevel&) = delete;

    /// Finds the folder to work on, expands a stored level where the preferences want that, and
    /// fills the texts. False, with a message, when that failed.
    bool Open();

    /// The texts as the person sees and changes them.
    std::string name;
    std::string note;
    /// Name of the documentation; empty: none.
    std::string moreInfo;
    /// The code page for names in packages that say none (`session/name_pages.h`); empty: guessed.
    std::string namesPage;
    /// Of a package that is damaged, what is whole comes in.
    bool keepGoing = false;

    [[nodiscard]] LevelMode Mode() const { return mode_; }
    [[nodiscard]] bool OnCd() const { return saved_.cdNumber != 0; }
    [[nodiscard]] const Path& WorkFolder() const { return workFolder_; }
    /// The folder's files in listing order, as the last refresh found them.
    [[nodiscard]] const std::vector<Path>& Files() const { return files_; }
    /// "12 files (3.4 Mb)".
    [[nodiscard]] std::string FilesText() const;
    /// "Level size: 3.4 Mb + 20 Kb = 3.5 Mb", of the record as it was.
    [[nodiscard]] std::string SizeText() const;
    /// Whether the player's own language could go into the folder.
    [[nodiscard]] bool CanSetLanguage() const { return canSetLanguage_; }

    /// Sources, each with what follows a change of the folder. False when nothing came in: the
    /// person cancelled, or it failed.
    bool AddChosenFile();
    bool AddChosenFolder();
    /// Files, packages and folders together make one level.
    bool AddSources(const std::vector<Path>& sources, Subfolders subfolders = Subfolders::Ask);
    /// The code page that names of the packages had to be read in; empty when they say their own.
    [[nodiscard]] const std::string& NamesReadAs() const { return namesReadAs_; }
    /// The packages anew, their names read in that code page: what came out of them goes, and comes
    /// in once more. False, with a message, when a package is gone or fails.
    bool ReadNamesAs(const std::string& page);
    /// What failed or was stopped in the last source operation.
    [[nodiscard]] const SourceReport& LastReport() const { return report_; }

    /// Deletes a file of the folder after a question; an empty path: none is selected.
    bool RemoveFile(const Path& file);
    /// The folder anew, packages in it unpacked one level deep, and what follows that.
    void Refresh();
    /// Refreshes until no package is left, or they lie deeper in each other than anybody makes
    /// them. Which ones stay is told. False when one failed, or when the person stopped it.
    bool UnpackAll();
    /// Whether the folder's files are others than at the opening; true where that cannot be told.
    [[nodiscard]] bool HasOtherFiles() const;
    /// Opens a file with the desktop's program, a compressed one after expanding it.
    void OpenFile(const Path& file);
    bool SetMyLanguage();

    /// Checks, distributes and stores everything, in its binding order. False leaves all open, with
    /// the reason told; `Cancelled` tells when the person gave the level up in a question. The
    /// caller takes the record into the archive.
    bool Accept();
    void Cancel();
    /// What the changes of a level of the archive did to its files is undone; shows its failure. To
    /// be called when the level was not taken over, after `Cancel` or a failed `Accept`.
    void PutBack();
    [[nodiscard]] bool Cancelled() const { return cancelled_; }

private:
    /// A file of the folder at opening.
    struct Seen {
        std::uint64_t size = 0;
        std::int64_t modifiedNs = 0;
    };

    void FindFolder();
    /// To be called before the level's stored files change. False, with a message, when they could
    /// not be kept; nothing may change then.
    bool BeginChange();
    /// The same for what accepting changes, if it changes anything.
    bool BeginAccepting();
    bool TakeSnapshot();
    /// False, with a message, when the folder cannot be listed; the list is as before then.
    bool RefreshFileList();
    void UnpackInside();
    [[nodiscard]] UnpackLimits LimitsInside() const;
    void ApplyLevelConfig();
    void TakeConfigTexts(const LevelConfig& config);
    void FillNameAndInfo();
    /// Tells once of a level that is still inside a program.
    void TellOfSetupExe();
    void AfterSource();
    [[nodiscard]] SourceOptions Options() const;
    void NoteUnpacked();
    void DropUnpacked();
    [[nodiscard]] bool LevelFilesChanged(const std::vector<Path>& now) const;
    [[nodiscard]] bool IsAsOpened(const Path& file) const;
    bool DecodeSounds();
    [[nodiscard]] bool HasLevelFiles() const;
    bool AskEqualLevels();
    bool TakeSavegames();
    bool TakeScreenshots();
    void DropTools();
    bool StoreFiles();
    bool StorePlainCopy();
    void CountSizes();
    void RemoveTemp();
    void ClearProgress();

    Session& session_;
    LevelRecord& record_;
    const LevelRecord saved_;
    const LevelMode mode_;
    ProgressScope& progress_;

    std::unique_ptr<FilesBefore> before_; ///< of a level of the archive
    Path filesFolder_;
    Path workFolder_;
    bool isTemp_ = false;
    bool configApplied_ = false;
    bool exeTold_ = false;
    bool canSetLanguage_ = false;
    bool cancelled_ = false;
    std::map<std::string, Seen> snapshot_; ///< by folded name
    std::vector<Path> files_;
    double filesBytes_ = 0;
    double bytesBeforeInside_ = 0; ///< in the folder, before packages in it were unpacked
    Amount inside_;                ///< what came out of those since then
    Path lastSource_;
    std::vector<Path> packages_;           ///< that came in since the opening
    std::map<std::string, Seen> unpacked_; ///< what came out of them, by folded name
    std::string namesReadAs_;
    SourceReport report_;
};

} // namespace kestrova
