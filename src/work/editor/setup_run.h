#pragma once

#include "core/removal.h"
#include "editor/setup_parts.h"
#include "session/session.h"

#include <optional>

/// The setup of the Level Editor, from its first phase to its last.
namespace kestrova
{

/// All phases in their order, each with its label. The tree is made beside the target, out of
/// everybody's sight, and takes the target's place in one step when it is whole; until then nothing
/// of what was there has changed, whatever ends the setup. One that was killed after that step goes
/// on behind it.
class LevelEditorSetup
{
public:
    LevelEditorSetup(SetupParts parts, SetupWish wish)
        : parts_(std::move(parts)), wish_(std::move(wish))
    {
    }

    /// True when the Level Editor stands at the target. Whatever went wrong was told, and the
    /// person did not want to go on.
    bool Run();

    /// The folder that was made, links followed.
    [[nodiscard]] const Path& Target() const { return target_; }

private:
    struct Phase;
    static const Phase phases[];

    bool Prepare();
    bool FindRoom();
    bool GiveNotice();
    bool Unzip();
    bool CheckSource();
    bool Copy();
    bool LiftReadOnly();
    bool MakeLinks();
    bool TakeLanguage();
    bool ConvertSounds();
    bool CompileLevels();
    bool PutThere();
    bool RegisterIt();
    bool CheckTarget();
    bool Finish();

    bool MoveTo(const Path& target);
    bool Try(const Status& status);
    bool End(const Failure& failure);
    bool HasRoom(const Path& place) const;
    bool AskAboutList(const Path& folder, bool isTarget);

    SetupParts parts_;
    SetupWish wish_;
    Path target_;
    Path parent_; ///< was made for the target and goes with it; empty: was there
    Path source_; ///< the tree that is installed
    Path links_;  ///< the staged shortcuts
    std::uint64_t needed_ = 0;
    bool goesOn_ = false;
    std::optional<WorkFolder> work_;
    std::optional<WorkFolder> linksWork_;
};

/// True unless a whole Level Editor is there already and the person wants no other.
bool WantsSetup(Host& host, const Folders& folders, const PreferencesRecord& preferences);

/// The setup as a command does it: False, with words, when it was not done. `target` gets the
/// folder.
bool SetupLevelEditor(Session& session, const SetupWish& wish, ProgressScope& progress,
                      Path& target);

} // namespace kestrova
