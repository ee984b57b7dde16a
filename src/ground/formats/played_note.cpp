#include "formats/played_note.h"

#include "formats/record_json.h"

namespace kestrova
{

std::string FormatPlayedNote(const PlayedNote& note)
{
    NoteJson games = NoteJson::array();
    for (const PlayedGame& game : note.games)
        games.push_back({{"code", game.code},
                         {"home", Encoded(game.home)},
                         {"token", Encoded(game.token)},
                         {"pid", game.pid},
                         {"boot", Encoded(game.boot)},
                         {"steady", game.steadyNs},
                         {"seconds", game.seconds},
                         {"before", game.before}});
    return Written({{"games", std::move(games)}});
}

Result<PlayedNote> ParsePlayedNote(std::string_view text)
{
    const NoteJson json = ParseNote(text);
    NoteReader reader{json};
    PlayedNote note;
    bool sound = true;
    reader.List("games", [&](NoteReader& entry, const NoteJson&) {
        PlayedGame game;
        const auto code = entry.Number<std::int64_t>("code");
        game.code = static_cast<LevelCode>(code);
        game.home = entry.Text("home");
        game.token = entry.Text("token");
        game.pid = entry.Number<std::int64_t>("pid");
        game.boot = entry.Text("boot");
        game.steadyNs = entry.Number<std::int64_t>("steady");
        game.seconds = entry.Number<std::int64_t>("seconds");
        game.before = entry.Number<std::int64_t>("before");
        sound = sound && code >= 0 && code <= std::numeric_limits<LevelCode>::max() &&
                (game.token.empty() || IsContentHash(game.token)) && game.pid >= 0 &&
                game.steadyNs >= 0 && game.before >= 0 && game.seconds >= 0 &&
                game.seconds <= mostSecondsOfGame;
        note.games.push_back(std::move(game));
    });
    if (!sound || !reader.Good() || note.games.size() > mostPlayedGames)
        return Failure{ErrorCode::Damaged, {}, {}};
    return note;
}

} // namespace kestrova
