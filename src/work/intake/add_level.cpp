#include "intake/add_level.h"

#include "archive/level_folders.h"
#include "formats/level_folder.h"
#include "intake/draft_files.h"
#include "intake/intake_steps.h"
#include "intake/left_intake.h"
#include "levels/new_level.h"
#include "levels/remove_level.h"

namespace kestrova
{

bool AddLevel(Session& session, ProgressScope& progress, const ShowLevel& show, LevelCode& code)
{
    LevelRecord record;
    if (!BeginNewLevel(session, record))
        return false;
    const IntakeNote note{session.Folders()};
    note.Write(LevelHomeOf(session.Folders(), record.levelCode));
    bool added = false;
    {
        Intake level{session, record, NewLevelSteps(), progress};
        added = OpenNewLevel(level) && show(level);
    }
    note.Drop(); // from here on the folder's mark says what becomes of it
    added = added && FinishNewLevel(session, record);
    if (!added)
        DropNewLevel(session, record);
    code = record.levelCode;
    return added;
}

bool OpenNewLevel(Intake& intake)
{
    LevelDraft& draft = intake.draft;
    draft.filesFolder = ResolvePath(
        InFolder(LevelHomeOf(intake.session.Folders(), draft.record.levelCode), OnDisk::DirFiles));
    draft.workFolder = draft.filesFolder;
    return ReadDraft(intake);
}

} // namespace kestrova
