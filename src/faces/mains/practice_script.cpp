#include "practice/practice_script.h"
#include "mains/stand_in.h"

/// The practice folder's stand-in for the Level Editor's compiler of scripts: `script.exe
/// script.txt`, started in the folder `script`. It writes `script.dat` of the script, and of each
/// text there that has a line `[Strings]` the `.dat` of its name. A comment `;act=` in the script
/// makes it misbehave.
namespace
{

using namespace stand_in;

/// What a person reads of it.
namespace texts
{
constexpr const char* compiling = "Compiling ";
constexpr const char* noSection = "ERROR: No [Title] and no [Level] in ";
constexpr const char* noScript = "ERROR: Say which script";
} // namespace texts

bool HasLine(const std::string& text, const char* wanted)
{
    for (const std::string& line : LinesOf(text))
        if (Folded(line) == wanted)
            return true;
    return false;
}

Place ResultOf(const Place& source)
{
    return Spelled(source.parent_path(), Shown(source.stem()) + ".dat");
}

int CompileScripts(const Place& program, const std::vector<Place>& words)
{
    // The word may come with a blank behind it.
    const Place script =
        words.empty() || words.back().empty()
            ? Place{}
            : Spelled(std::filesystem::current_path(), LinesOf(Shown(words.back())).front());
    if (script.empty())
        return Fail(texts::noScript);
    const auto text = BytesOf(script);
    if (!text)
        return Fail(notFound, Shown(script.filename()));
    if (!HasLine(*text, "[title]") && !HasLine(*text, "[level]"))
        return Fail(texts::noSection, Shown(script.filename()));
    const Acts acts{*text};
    if (!acts.Begin(program, words))
        return 0;
    std::cout << texts::compiling << Shown(script.filename()) << std::endl;
    if (!acts.WriteResult(ResultOf(script), kestrova::CompiledPracticeScript(*text)))
        return Fail(notWritten, Shown(ResultOf(script).filename()));
    for (const auto& entry : std::filesystem::directory_iterator{script.parent_path()}) {
        const auto strings = BytesOf(entry.path());
        if (Folded(Shown(entry.path().extension())) != ".txt" || !strings ||
            !HasLine(*strings, "[strings]"))
            continue;
        std::cout << texts::compiling << Shown(entry.path().filename()) << std::endl;
        if (!Write(ResultOf(entry.path()), kestrova::CompiledPracticeLanguage(*strings)))
            return Fail(notWritten, Shown(ResultOf(entry.path()).filename()));
    }
    return 0;
}

} // namespace

STAND_IN_MAIN(CompileScripts)
