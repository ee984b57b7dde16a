#include "discs/disc_choice.h"

#include "archive/level_folders.h"
#include "core/name_list.h"
#include "core/text.h"
#include "session/telling.h"
#include "words/core.h"
#include "words/disc_creation.h"

namespace kestrova
{

namespace
{

constexpr std::size_t mostNamesShown = 10;
constexpr std::string_view moreNames = "…";

/// What the set is made of was said.
bool IsSaid(const DiscParts& parts, const DiscChoice& choice)
{
    Host& host = parts.host;
    if (choice.megabytes == 0)
        return Refuse(host, GetMsg(Msg::SpecifyCapacity));
    if (choice.megabytes < fewestDiscMegabytes || choice.megabytes > mostDiscMegabytes)
        return Refuse(host, GetMsg(Msg::CapacityBounds, {std::to_string(fewestDiscMegabytes),
                                                         std::to_string(mostDiscMegabytes)}));
    if (choice.imagesOnly)
        return !choice.images.empty() || Refuse(host, GetMsg(Msg::SpecifyImages));
    if (!choice.speed)
        return Refuse(host, GetMsg(Msg::SpecifySpeed));
    return !choice.drive.empty() || Refuse(host, GetMsg(Msg::SpecifyUnit));
}

void TellLeftOut(const DiscParts& parts, const DiscPlan& plan)
{
    if (plan.LeftOut().empty())
        return;
    std::vector<std::string> lines;
    for (const LevelLeftOut& level : plan.LeftOut())
        lines.push_back(GetMsg(Msg::LevelLine, {LevelNameOf(parts.archive.archive, level.code),
                                                std::to_string(level.code), level.reason}));
    parts.host.Tell(Tone::Warning, GetMsg(Msg::LevelsStayBehind), {}, ShownLines(lines));
}

} // namespace

std::string TextOfCapacity(int megabytes)
{
    const DiscCapacity capacity = CapacityOf(megabytes);
    return capacity.text.text.empty() ? GetMsg(Msg::SizeMegabytes, {std::to_string(megabytes)})
                                      : GetMsg(capacity.text);
}

std::string NamesOf(const Archive& archive, const std::vector<LevelCode>& codes)
{
    std::vector<std::string> names;
    for (const LevelCode code : codes) {
        if (names.size() == mostNamesShown) {
            names.emplace_back(moreNames);
            break;
        }
        names.push_back(LevelNameOf(archive, code));
    }
    return Join(names, ", ");
}

bool CheckChoice(const DiscParts& parts, DiscPlan& plan)
{
    DiscChoice& choice = plan.choice;
    if (!IsSaid(parts, choice))
        return false;
    if (choice.trle && parts.folders.trle.empty())
        return Refuse(parts.host, GetMsg(Msg::NoTrleToEnclose));
    if (choice.trle && !choice.setup && !choice.unattended)
        choice.setup = parts.host.AskYesNo(GetMsg(Msg::AskEncloseSetup, {lineBreak}));
    if (!choice.levels && !choice.trle && !choice.setup)
        return Refuse(parts.host, GetMsg(Msg::NothingToEnclose));
    if (choice.levels)
        TellLeftOut(parts, plan);
    if (choice.levels && plan.Candidates().empty() && !choice.trle && !choice.setup) {
        parts.host.Tell(Tone::Plain,
                        GetMsg(plan.LeftOut().empty() ? Msg::AllOnDiscs : Msg::NothingToEnclose));
        return false;
    }
    return true;
}

bool MayDivideSo(const DiscParts& parts, const DiscPlan& plan)
{
    const std::string capacity = TextOfCapacity(plan.choice.megabytes);
    const std::vector<LevelCode> large = plan.TooLarge();
    if (plan.Discs().front().tooLarge && plan.Discs().front().levels.empty())
        return Refuse(parts.host, GetMsg(Msg::ExtrasTooLarge, {capacity}));
    return large.empty() ||
           parts.host.AskYesNo(
               GetMsg(Msg::AskLevelsTooLarge,
                      {capacity, NamesOf(parts.archive.archive, large), std::string{lineBreak}}));
}

} // namespace kestrova
