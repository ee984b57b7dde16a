#pragma once

#include "core/removal.h"
#include "formats/level_config.h"
#include "session/session.h"

#include <array>

/// What an author says of a level while it is made ready for others: the state of the wizard, which
/// a window shows and the terminal fills. What is done to it stands in `upload_steps.h` (its way
/// through the steps), `upload_files.h`, `upload_sounds.h`, `upload_lists.h` and `finish_upload.h`.
namespace kestrova
{

enum class UploadStep { Overview, Files, Author, Level, ImportWads, TomWads, End };

struct UploadAddresses {
    std::vector<std::string> items;
    std::optional<std::size_t> selected;
};

/// Groups of texts, one of which is worked on: `edit` is what its boxes hold, which counts once it
/// is stored in the row.
template <std::size_t N> struct UploadRows {
    using Row = std::array<std::string, N>;
    std::vector<Row> rows;
    std::optional<std::size_t> selected;
    Row edit;
};

/// A file of the package.
struct UploadFile {
    Path path;
    std::uint64_t size = 0;
};

struct UploadWizard {
    /// `scope` follows every long step; its Stop ends the step that runs. `folder`: where the
    /// wizard works; empty: in the program's folder, whose lock is held then.
    UploadWizard(Session& owner, ProgressScope& scope, const Path& folder = {});
    UploadWizard(const UploadWizard&) = delete;
    UploadWizard& operator=(const UploadWizard&) = delete;

    /// "12 files (3.4 Mb)".
    [[nodiscard]] std::string FilesText() const;
    /// The package's file of that name as it is spelled there; empty when there is none.
    [[nodiscard]] std::string FileNamed(std::string_view fileName) const;

    Session& session;
    ProgressScope& progress;
    const Path place; ///< where its folders of work are made
    WorkFolder work;  ///< the package's files, copied here, so that the author's are never touched
    UploadStep step = UploadStep::Overview;
    /// What will be written, filled page by page as the steps are passed.
    LevelConfig config;

    // The pages.
    std::vector<UploadFile> files;
    double filesBytes = 0;
    std::string moreInfo; ///< name of the documentation; empty: none
    bool asksForDocument = true;
    std::string author;
    std::string authorNote;
    UploadAddresses emails;
    UploadAddresses sites;
    std::string name;
    std::string note;
    std::size_t exeFormat = 0; ///< its row in `ExeFormats()`
    std::string importNotes;
    UploadRows<2> importWads;  ///< file to check for, address of the package
    UploadRows<4> externWaves; ///< code of the CD, source, target, alternative
    UploadRows<2> tomWads;     ///< tom file, pattern of its wads
    bool configOnly = false;   ///< the package holds the configuration file alone

    /// A package that cannot be made ends the wizard; the author's texts are kept for the next one.
    bool keepsTexts = false;
    /// The package has been packed, or could not be: nothing more is to be done here.
    bool isOver = false;
};

/// A word of the configuration file and what a person reads for it.
struct UploadChoice {
    std::string code;
    std::string text;
};
std::vector<UploadChoice> ExeFormats();
std::vector<UploadChoice> WaveCds();

} // namespace kestrova
