#include "ui/main/level_menus.h"

#include "app/command_table.h"
#include "ui/main/window_commands.h"
#include "ui/widgets/captions.h"
#include "ui/widgets/qt_text.h"
#include "words/library_window.h"

#include <QMenu>

#include <algorithm>

namespace kestrova
{

namespace
{

using Mark = std::function<void(const LevelMarks&)>;
using Chosen = std::vector<LibraryLevel>;

/// Ticked when all chosen levels are so.
template <class IsSo>
void AddMark(QMenu& menu, const QString& words, const Chosen& chosen, const IsSo& isSo,
             const Mark& mark, const LevelMarks& marks)
{
    QAction* action = menu.addAction(words);
    action->setCheckable(true);
    action->setChecked(std::all_of(chosen.begin(), chosen.end(),
                                   [&](const LibraryLevel& level) { return isSo(level.own); }));
    QObject::connect(action, &QAction::triggered, &menu, [mark, marks] { mark(marks); });
}

QMenu* MakeStatusMenu(QWidget* parent, const Chosen& chosen, const Mark& mark)
{
    constexpr std::pair<LevelStatus, Message> all[] = {
        {LevelStatus::New, Msg::StatusNew},
        {LevelStatus::Playing, Msg::StatusPlaying},
        {LevelStatus::Finished, Msg::StatusFinished},
        {LevelStatus::GivenUp, Msg::StatusGivenUp},
    };
    auto* menu = new QMenu(Words(Msg::SortStatus), parent);
    menu->setObjectName(QStringLiteral("mnu_Status"));
    for (const auto& [status, words] : all) {
        LevelMarks marks;
        marks.status = status;
        AddMark(
            *menu, Words(words), chosen,
            [wanted = status](const LevelNote& note) { return note.status == wanted; }, mark,
            marks);
    }
    return menu;
}

QMenu* MakeStarsMenu(QWidget* parent, const Chosen& chosen, const Mark& mark)
{
    auto* menu = new QMenu(Words(Msg::SortStars), parent);
    menu->setObjectName(QStringLiteral("mnu_Stars"));
    for (int stars = mostStars; stars >= 0; --stars) {
        LevelMarks marks;
        marks.stars = stars;
        const QString words = stars == 0 ? Words(Msg::NoStars)
                                         : Words(Msg::StarsNumber, {std::to_string(stars)}) +
                                               QLatin1Char(' ') + QString(stars, QChar(0x2605));
        AddMark(
            *menu, words, chosen, [stars](const LevelNote& note) { return note.stars == stars; },
            mark, marks);
    }
    return menu;
}

QMenu* MakeTagsMenu(QWidget* parent, const Chosen& chosen, const std::vector<std::string>& tags,
                    const LevelMenuWork& work)
{
    auto* menu = new QMenu(Words(Msg::TagsMenu), parent);
    menu->setObjectName(QStringLiteral("mnu_Tags"));
    for (const std::string& tag : tags) {
        const auto has = [&](const LevelNote& note) {
            return std::any_of(note.tags.begin(), note.tags.end(),
                               [&](const std::string& one) { return IsSameTag(one, tag); });
        };
        const bool all = std::all_of(chosen.begin(), chosen.end(),
                                     [&](const LibraryLevel& level) { return has(level.own); });
        LevelMarks marks;
        (all ? marks.dropTags : marks.addTags) = {tag};
        AddMark(*menu, ToQt(tag), chosen, has, work.mark, marks);
    }
    if (!tags.empty())
        menu->addSeparator();
    QObject::connect(menu->addAction(Words(Msg::NewTag)), &QAction::triggered, menu, work.newTag);
    return menu;
}

void FillSeveral(QMenu& menu, const Invoke& several)
{
    menu.setObjectName(QStringLiteral("mnu_OnLevels"));
    std::vector<const CommandRow*> rows;
    for (const CommandRow& row : CommandTable())
        if (row.several.question != Message{})
            rows.push_back(&row);
    // That which takes levels away stands last, far from what a slip would hit.
    std::stable_partition(rows.begin(), rows.end(), [](const CommandRow* row) {
        return row->window.control != removeCommand;
    });
    for (const CommandRow* row : rows)
        QObject::connect(menu.addAction(Words(row->several.caption)), &QAction::triggered, &menu,
                         [several, row] { several(*row); });
}

} // namespace

void FillChosenMenu(QMenu& menu, const Chosen& chosen, const std::vector<std::string>& tags,
                    const LevelMenuWork& work)
{
    if (chosen.size() > 1)
        FillSeveral(menu, work.several);
    else
        FillLevelMenu(menu, work.invoke);
    const bool none = std::all_of(chosen.begin(), chosen.end(), [](const LibraryLevel& level) {
        return level.code == originalCode;
    });
    if (!none) {
        QAction* last = menu.actions().back();
        menu.insertMenu(last, MakeStatusMenu(&menu, chosen, work.mark));
        menu.insertMenu(last, MakeStarsMenu(&menu, chosen, work.mark));
        menu.insertMenu(last, MakeTagsMenu(&menu, chosen, tags, work));
    }
    GiveLetters(menu);
}

} // namespace kestrova
