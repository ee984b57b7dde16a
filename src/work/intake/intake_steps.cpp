#include "intake/intake_steps.h"

#include "intake/compile_sources.h"
#include "intake/config_copies.h"
#include "intake/config_steps.h"
#include "intake/exe_install.h"
#include "intake/extern_waves.h"
#include "intake/file_checks.h"
#include "intake/known_wads.h"
#include "intake/language_choice.h"
#include "intake/player_files.h"
#include "intake/storing.h"
#include "intake/text_steps.h"

namespace kestrova
{

namespace
{

bool Always(const Intake& /*intake*/)
{
    return true;
}

bool HasFilesHere(const Intake& intake)
{
    return !intake.draft.OnCd();
}

constexpr IntakeStep newLevelSteps[]{
    {StepTime::Config, "DropLaterConfig", LaterConfigCame, DropLaterConfig},
    {StepTime::Config, "SearchOnlineConfig", LacksConfig, SearchOnlineConfig},
    {StepTime::Config, "ReadConfig", ConfigCame, ReadConfig},
    {StepTime::Config, "CheckImportWads", WantsWads, CheckImportWads},
    {StepTime::Config, "ApplyDuplicates", WantsDuplicates, ApplyDuplicates},
    {StepTime::Config, "FetchExternWaves", WantsExternWaves, FetchExternWaves},
    {StepTime::Config, "RunExeFormatFromConfig", NamesProgram, RunExeFormatFromConfig},
    {StepTime::Config, "ApplyTomWads", WantsTomWads, ApplyTomWads},
    {StepTime::Config, "EndConfig", IsConfigRead, EndConfig},
    {StepTime::Config, "CompileQuietly", CompilesQuietly, CompileQuietly},
    {StepTime::Config, "DropConfigAgain", LaterConfigCame, DropLaterConfig},
    {StepTime::Change, "InstallFromProgram", MayBeInsideProgram, InstallFromProgram},
    {StepTime::Source, "SuggestTexts", LacksTexts, SuggestTexts},
    {StepTime::Accept, "TakeName", Always, TakeName},
    {StepTime::Accept, "DecodeSounds", Always, DecodeSounds},
    {StepTime::Accept, "CompileSources", HasSourcesToCompile, CompileSources},
    {StepTime::Accept, "CheckFiles", NeedsLevelFiles, CheckFiles},
    {StepTime::Accept, "ChooseLanguage", Always, ChooseLanguage},
    {StepTime::Accept, "TakeNote", Always, TakeNote},
    {StepTime::Accept, "AskEqual", AsksForEqual, AskEqual},
    {StepTime::Accept, "TakeMoreInfo", Always, TakeMoreInfo},
    {StepTime::Accept, "TakeSavegames", Always, TakeSavegames},
    {StepTime::Accept, "TakeScreenshots", Always, TakeScreenshots},
    {StepTime::Accept, "DropTools", Always, DropTools},
    {StepTime::Accept, "DropConfig", Always, DropConfig},
    {StepTime::Accept, "StoreDraft", Always, StoreDraft},
};

constexpr IntakeStep editSteps[]{
    {StepTime::Accept, "TakeName", Always, TakeName},
    {StepTime::Accept, "KeepBefore", HasFilesHere, KeepBefore},
    {StepTime::Accept, "DecodeSounds", HasFilesHere, DecodeSounds},
    {StepTime::Accept, "CompileSources", HasSourcesToCompile, CompileSources},
    {StepTime::Accept, "CheckFiles", NeedsLevelFiles, CheckFiles},
    {StepTime::Accept, "TakeNote", Always, TakeNote},
    {StepTime::Accept, "TakeMoreInfo", Always, TakeMoreInfo},
    {StepTime::Accept, "TakeSavegames", HasFilesHere, TakeSavegames},
    {StepTime::Accept, "TakeScreenshots", HasFilesHere, TakeScreenshots},
    {StepTime::Accept, "DropTools", HasFilesHere, DropTools},
    {StepTime::Accept, "StoreDraft", HasFilesHere, StoreDraft},
};

} // namespace

std::span<const IntakeStep> NewLevelSteps()
{
    return newLevelSteps;
}

std::span<const IntakeStep> EditSteps()
{
    return editSteps;
}

} // namespace kestrova
