#pragma once

#include "core/removal.h"
#include "editor/wad_links.h"
#include "formats/level_config.h"
#include "intake/files_before.h"
#include "intake/folder_state.h"
#include "intake/inner_limits.h"
#include "intake/installed_place.h"
#include "intake/package_sources.h"

namespace kestrova
{

/// Which of the tom files that a level brings are compiled when it is accepted.
enum class Compile {
    Never,
    WhereMissing, ///< when the level lacks what one of them becomes
    Always,
    Asked ///< the person is asked when the level has some
};

/// What a level on its way into the archive has so far, or one of the archive while it is edited.
/// What is done to it stands in `intake/intake_steps.h`.
struct LevelDraft {
    explicit LevelDraft(LevelRecord& levelRecord);
    LevelDraft(const LevelDraft&) = delete;
    LevelDraft& operator=(const LevelDraft&) = delete;

    [[nodiscard]] bool OnCd() const { return saved.cdNumber != 0; }
    /// "12 files (3.4 Mb)".
    [[nodiscard]] std::string FilesText() const;
    /// "Level size: 3.4 Mb + 20 Kb = 3.5 Mb", of the record as it was.
    [[nodiscard]] std::string SizeText() const;
    /// Whether the folder's files are others than at the opening; true where that cannot be told.
    [[nodiscard]] bool HasOtherFiles() const;
    /// How its sources come in.
    [[nodiscard]] SourceOptions Options() const;

    LevelRecord& record; ///< changed meanwhile; as it was, once the level is given up
    const LevelRecord saved;
    bool inArchive = false; ///< the archive has the record already

    // The texts, as the person sees and changes them.
    std::string name;
    std::string note;
    std::string moreInfo; ///< name of the documentation; empty: none

    // What the person says of the sources.
    /// The code page for names in packages that say none (`packages/name_pages.h`); empty: guessed.
    std::string namesPage;
    bool keepGoing = false; ///< of a package that is damaged, what is whole comes in
    Replace replaceByFile = Replace::Silent;
    /// A level without a configuration file is looked for in the list of addresses.
    bool looksOnline = true;
    Compile compile = Compile::Never;
    /// Packages that the level needs, and its configuration file, are fetched without a question.
    bool fetches = false;
    /// Where a program that installs the level puts its files, and that it may run; none: asked
    /// for.
    std::optional<InstalledInto> installer;
    UnpackedAhead* ahead = nullptr; ///< packages that are unpacked already, if any
    std::vector<WadLink> links;     ///< made before a compilation
    /// Name of the document that tells which wads its tom files need, or a path; empty: none.
    std::string analysed;

    // The folder.
    Path filesFolder; ///< where the level's files belong
    Path workFolder;  ///< where they are worked on
    /// `workFolder` is it, when the level's files had to be expanded.
    std::optional<WorkFolder> expandedCopy;
    FolderState opened;          ///< the folder at the opening
    std::vector<Path> files;     ///< in listing order, as the last refresh found them
    double filesBytes = 0;       ///< of those
    bool canSetLanguage = false; ///< the player's own language could go into the folder
    /// Of a level whose stored files change: how they were. None: there is nothing to come back to.
    std::unique_ptr<FilesBefore> before;

    // What came in.
    SourceReport report; ///< of the last operation: what failed or was left out
    Path lastSource;
    std::vector<Path> packages; ///< since the opening
    FolderState unpacked;       ///< what came out of them
    /// The code page that their names had to be read in; empty when they say their own.
    std::string namesReadAs;
    InnerLimits inner;

    // What the steps found.
    /// The author's configuration file, while the steps go on that it drives.
    std::optional<LevelConfig> config;
    bool configRead = false;    ///< there was one
    bool configApplied = false; ///< all of those steps were done
    bool exeAsked = false;      ///< the person was asked about a program that installs the level
    bool onlineConfig = false;  ///< it came from the list of addresses, not from the author
    std::vector<ConfigFile> listedFiles; ///< what the one that was applied says of the files
    bool revisedRefused = false;         ///< the person does without the revised package of wads
    bool givenUp = false;
};

} // namespace kestrova
