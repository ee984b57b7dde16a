#include "app/disc_making.h"

#include "app/disc_drives.h"
#include "app/result_text.h"
#include "archive/archive_saving.h"
#include "archive/level_folders.h"
#include "core/size_words.h"
#include "core/text.h"
#include "discs/create_discs.h"
#include "discs/disc_choice.h"
#include "discs/verify_discs.h"
#include "session/telling.h"
#include "words/disc_commands.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace kestrova
{

namespace
{

constexpr int usualMegabytes = 4700;

std::string SizeOf(double bytes)
{
    return SizeInWords(bytes);
}

/// What the options say.
bool TakeChoice(Run& run, DiscChoice& choice)
{
    const Arguments& arguments = run.arguments;
    choice.megabytes = arguments.Has("--capacity")
                           ? WholeNumber<int>(arguments.ValueOf("--capacity")).value_or(0)
                           : usualMegabytes;
    choice.speed = WholeNumber<int>(arguments.ValueOf("--speed")).value_or(0);
    choice.trle = arguments.Has("--with");
    choice.setup = arguments.Has("--setup");
    if (choice.setup)
        choice.setupFile = PlaceFromWord(arguments.ValueOf("--setup"));
    choice.unattended = arguments.Has("--yes");
    if (arguments.Has("--remove") || arguments.Has("--keep"))
        choice.remove = arguments.Has("--remove");
    choice.imagesOnly = arguments.Has("--images");
    if (choice.imagesOnly)
        choice.images = PlaceFromWord(arguments.ValueOf("--images"));
    if (!arguments.Has("--drive"))
        return true;
    const auto drive = DriveFromWord(run, arguments.ValueOf("--drive"));
    if (!drive)
        return false;
    choice.drive = drive->name;
    if (!arguments.Has("--capacity") && drive->megabytes > 0)
        choice.megabytes = drive->megabytes;
    return true;
}

/// The plan as the options want it; told when it cannot be made.
bool MakePlan(Run& run, const DiscParts& parts, DiscPlan& plan)
{
    if (!HasArchive(run.session.host, run.session.archive) || !TakeChoice(run, plan.choice))
        return false;
    if (const auto measured = plan.Measure(parts.folders, run.session.archive, parts.progress);
        !measured) {
        TellFailure(run.session.host, measured.Error());
        return false;
    }
    return DoneOrTold(run.session.host, MeasureExtras(parts, plan));
}

Json PlanAsJson(const Session& session, const DiscPlan& plan)
{
    Json discs = Json::array();
    for (const PlannedDisc& disc : plan.Discs()) {
        Json levels = Json::array();
        for (const LevelCode code : disc.levels)
            levels.push_back(
                {{"code", code}, {"name", Readable(LevelNameOf(session.archive, code))}});
        discs.push_back({{"number", disc.number},
                         {"label", disc.label},
                         {"bytes", disc.size.bytes},
                         {"image", disc.size.room + emptyDiscBytes},
                         {"tooLarge", disc.tooLarge},
                         {"levels", std::move(levels)}});
    }
    Json left = Json::array();
    for (const LevelLeftOut& level : plan.LeftOut())
        left.push_back({{"code", level.code}, {"reason", Readable(level.reason)}});
    return {{"capacity", plan.choice.megabytes},
            {"image", plan.RoomOfImages()},
            {"discs", std::move(discs)},
            {"leftOut", std::move(left)}};
}

void ShowPlan(Run& run, const DiscPlan& plan)
{
    const Archive& archive = run.session.archive;
    for (const PlannedDisc& disc : plan.Discs()) {
        AddLine(run,
                GetMsg(disc.tooLarge ? Msg::PlannedDiscTooLarge : Msg::PlannedDisc,
                       {disc.label, std::to_string(disc.levels.size()), SizeOf(disc.size.bytes)}));
        for (const LevelCode code : disc.levels)
            AddLine(run, GetMsg(Msg::PlannedLevel,
                                {ZeroPadded(code, 4), OneField(LevelNameOf(archive, code))}));
    }
    for (const LevelLeftOut& level : plan.LeftOut())
        AddLine(run, GetMsg(Msg::LevelLeftOutLine,
                            {ZeroPadded(level.code, 4), OneField(LevelNameOf(archive, level.code)),
                             OneField(level.reason)}));
    AddLine(run, GetMsg(Msg::PlanInAll,
                        {std::to_string(plan.Discs().size()), TextOfCapacity(plan.choice.megabytes),
                         std::to_string(plan.LevelCount()),
                         SizeOf(static_cast<double>(plan.RoomOfImages()))}));
}

/// What is done with the plan that the options want.
template <class Work> bool WithPlan(Run& run, Work work)
{
    const auto progress =
        run.session.host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::PlanningDiscs));
    const DiscParts parts{run.session, *progress};
    DiscPlan plan;
    return MakePlan(run, parts, plan) && work(*progress, plan);
}

} // namespace

std::string WrongDiscMaking(Run& run)
{
    const Arguments& arguments = run.arguments;
    for (const auto& [a, b] : {std::pair{"--images", "--drive"}, std::pair{"--remove", "--keep"}})
        if (arguments.Has(a) && arguments.Has(b))
            return GetMsg(Msg::DiscOptionsExclude, {a, b});
    for (const std::string_view option : {"--capacity", "--speed"})
        if (arguments.Has(option) && !WholeNumber<int>(arguments.ValueOf(option)))
            return GetMsg(Msg::DiscOptionNumber, {option});
    if (arguments.Has("--with") && arguments.ValueOf("--with") != "trle")
        return GetMsg(Msg::DiscOptionWith, {arguments.ValueOf("--with")});
    return {};
}

bool PlanDiscs(Run& run)
{
    return WithPlan(run, [&](ProgressScope&, const DiscPlan& plan) {
        if (run.json != nullptr)
            *run.json = PlanAsJson(run.session, plan);
        else
            ShowPlan(run, plan);
        return true;
    });
}

bool MakeDiscSet(Run& run)
{
    return WithPlan(run, [&](ProgressScope& progress, DiscPlan& plan) {
        if (run.json == nullptr)
            ShowPlan(run, plan);
        const bool made = MakeArchiveDiscs(run.session, progress, plan);
        if (made && run.json != nullptr)
            *run.json = PlanAsJson(run.session, plan);
        return made;
    });
}

bool VerifyDiscSet(Run& run)
{
    const auto progress =
        run.session.host.BeginProgress(ProgressWindow::Progress, GetMsg(Msg::PlanningDiscs));
    const auto found = VerifyDiscs({run.session, *progress},
                                   run.arguments.Has("--all") ? Verifying::All : Verifying::Fast);
    if (!found) {
        TellFailure(run.session.host, found.Error());
        return false;
    }
    Json levels = Json::array();
    std::size_t bad = 0;
    for (const VerifiedLevel& level : *found) {
        bad += level.good ? 0 : 1;
        if (run.json != nullptr)
            levels.push_back({{"disc", level.disc},
                              {"code", level.code},
                              {"good", level.good},
                              {"fault", Readable(level.fault)}});
        else if (!level.good)
            AddLine(run, OneField(level.fault));
    }
    if (run.json != nullptr)
        *run.json = std::move(levels);
    const std::string count = std::to_string(found->size());
    if (found->empty())
        AddLine(run, GetMsg(Msg::NoLevelOnDiscs));
    else if (bad == 0)
        AddLine(run, GetMsg(Msg::DiscsAreGood, {count}));
    else
        run.session.host.Tell(Tone::Error, GetMsg(Msg::DiscsAreBad, {std::to_string(bad), count}));
    return bad == 0;
}

} // namespace kestrova
