#pragma once

#include "core/removal.h"
#include "editor/wad_scripts.h"
#include "session/session.h"

#include <functional>
#include <memory>
#include <optional>

namespace kestrova
{

class ImportedFiles;

/// A wad package on its way into the Level Editor's folder and into the backup of its originals,
/// for good: its files in a folder of the program's own, and what is done with them. `progress`
/// follows every long step; its Stop takes the import back.
class WadImport
{
public:
    WadImport(Session& session, ProgressScope& progress);
    WadImport(const WadImport&) = delete;
    WadImport& operator=(const WadImport&) = delete;

    /// The package's folder, empty, and the Level Editor's in its original configuration; a failure
    /// of that is told, and may be gone on past. False, told, when there is nothing to work with.
    bool Prepare();

    [[nodiscard]] const Path& Folder() const { return folder_; }
    /// Lists the package's files anew. False, told, when they cannot be listed.
    bool Refresh();
    [[nodiscard]] const std::vector<Path>& Files() const { return files_; }
    /// Names what came in, for who reads what can be undone.
    void AddSubject(const std::string& subject);

    /// Installs the files, compiles, merges the new levels into the scripts. What fails on the way
    /// is told or a line of the report. A stopped one, or one whose way back could not be kept, is
    /// taken back as a whole. `ended` is called once the report is whole, before the end is told.
    void Run(const AskLevelName& askName, const std::function<void()>& ended = {});
    /// It has run to its end, and its folder is gone.
    [[nodiscard]] bool IsDone() const { return done_; }
    /// What became of each file, in lines with CR LF.
    [[nodiscard]] const std::string& Report() const { return report_; }

    [[nodiscard]] Session& Owner() const { return session_; }
    [[nodiscard]] ProgressScope& Progress() const { return progress_; }

private:
    /// Both trees as they were, and why.
    void TakeBack(ImportedFiles& files, const Failure& why, const Heartbeat& alive);
    void Finish(const Status& imported);
    void Ended() const;

    Session& session_;
    ProgressScope& progress_;
    Path folder_;
    std::unique_ptr<WorkFolder> work_;
    std::vector<Path> files_;
    std::string subject_;
    std::string report_;
    std::function<void()> ended_;
    bool done_ = false;
};

} // namespace kestrova
