#include "mains/stand_in.h"
#include "practice/practice_script.h"

/// A game without a window, for Wine: it saves into slot 0 and notes in `played.txt` which level's
/// script it found and where it works.
namespace
{

int Play(const stand_in::Place& program, const std::vector<stand_in::Place>&)
{
    using namespace stand_in;
    const Place folder = std::filesystem::current_path();
    const auto script = BytesOf(Spelled(folder, "script.dat"));
    const std::string title = script ? kestrova::PracticeTitle(*script) : std::string{};
    std::string savegame = title;
    savegame.resize(40 * 1024, '\0');
    savegame[75] = 1;
    const bool saved = Write(Spelled(folder, "savegame.0"), savegame);
    const std::string noted = title + '\n' + Shown(folder) + '\n' + Shown(program) + '\n';
    return saved && Write(folder / "played.txt", noted) ? 0 : 1;
}

} // namespace

STAND_IN_MAIN(Play)
