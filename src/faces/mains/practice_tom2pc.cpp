#include "mains/stand_in.h"

#include <cstdint>

/// The practice folder's stand-in for the Level Editor's compiler of levels: `tom2pc.exe TOM…`.
///
/// A tom file is a text. Of the line `name=` comes the level's title; `needs=ENDING` asks for
/// another file of its wad set than the `.wad`; `act=` makes the compiler misbehave. The wad set
/// lies in `graphics\wads` beside this program, under the tom file's stem, and where it has a
/// `.sam`, each line of that names a file in `sound\samples`. The level is written to `data`:
///
///     0  4  "TR4\0"                      then a line "FILE SIZE HASH" for each file that was read,
///     4  n  the level's title, a line    an empty line, and the bytes of the `.wad`
///
/// Without a word it compiles all that lies in `graphics\wads`, as if a person had chosen it there.
namespace
{

using namespace stand_in;

/// What a person reads of it.
namespace texts
{
constexpr const char* building = "Building level ";
constexpr const char* done = "*** Build all complete ***";
constexpr const char* noTom = "ERROR: This is no tom file: ";
} // namespace texts

std::string HashOf(const std::string& bytes)
{
    std::uint64_t hash = UINT64_C(0xCBF29CE484222325);
    for (const char letter : bytes)
        hash = (hash ^ static_cast<unsigned char>(letter)) * UINT64_C(0x100000001B3);
    std::string text;
    for (int shift = 60; shift >= 0; shift -= 4)
        text += "0123456789abcdef"[hash >> shift & 15];
    return text;
}

/// One level on its way.
class Level
{
public:
    Level(Place base, const Place& tom) : base_(std::move(base)), tom_(tom) {}

    bool Build(const Place& program, const std::vector<Place>& words)
    {
        std::cout << texts::building << Shown(tom_.stem()) << std::endl;
        const auto text = BytesOf(tom_);
        if (!text)
            return Fail(notFound, Shown(tom_)) == 0;
        if (text->empty())
            return Fail(texts::noTom, Shown(tom_)) == 0;
        const Acts acts{*text};
        Note(tom_, *text);
        if (!acts.Begin(program, words))
            return true;
        if (!ReadSet(*text) || !ReadSamples())
            return false;
        std::string title = Shown(tom_.stem());
        for (const std::string& name : ValuesOf(*text, "name="))
            title = name;
        const Place target = Spelled(base_, "data/" + Shown(tom_.stem()) + ".tr4");
        std::filesystem::create_directories(target.parent_path());
        const std::string bytes = std::string{"TR4\0", 4} + title + '\n' + notes_ + '\n' + wad_;
        return acts.WriteResult(target, bytes) || Fail(notWritten, Shown(target)) == 0;
    }

private:
    void Note(const Place& file, const std::string& bytes)
    {
        notes_ += Folded(Shown(file.filename())) + ' ' + std::to_string(bytes.size()) + ' ' +
                  HashOf(bytes) + '\n';
    }
    [[nodiscard]] Place InSet(const std::string& ending) const
    {
        return Spelled(base_, "graphics/wads/" + Shown(tom_.stem()) + '.' + ending);
    }
    bool ReadSet(const std::string& text)
    {
        std::vector<std::string> endings{"wad", "swd"};
        const std::vector<std::string> needed = ValuesOf(text, "needs=");
        endings.insert(endings.end(), needed.begin(), needed.end());
        for (std::size_t i = 0; i < endings.size(); ++i) {
            const auto bytes = BytesOf(InSet(endings[i]));
            if (!bytes && i != 1)
                return Fail(notFound, Shown(InSet(endings[i]).filename())) == 0;
            if (bytes)
                Note(InSet(endings[i]), *bytes);
            if (i == 0)
                wad_ = *bytes;
        }
        return true;
    }
    bool ReadSamples()
    {
        const auto list = BytesOf(InSet("sam"));
        if (!list)
            return true;
        for (const std::string& name : LinesOf(*list)) {
            const Place sample = Spelled(base_, "sound/samples/" + name);
            const auto bytes = BytesOf(sample);
            if (!bytes)
                return Fail(notFound, name) == 0;
            Note(sample, *bytes);
        }
        return true;
    }

    Place base_;
    Place tom_;
    std::string notes_; ///< a line for each file that was read
    std::string wad_;
};

std::vector<Place> TomsIn(const Place& folder)
{
    std::vector<Place> toms;
    std::error_code failure;
    for (const auto& entry : std::filesystem::directory_iterator{folder, failure})
        if (Folded(Shown(entry.path().extension())) == ".tom")
            toms.push_back(entry.path());
    return toms;
}

int CompileToms(const Place& program, const std::vector<Place>& words)
{
    const Place base = program.parent_path();
    std::vector<Place> toms = words;
    std::erase(toms, Place{lateWord});
    if (toms.empty())
        toms = TomsIn(Spelled(base, "graphics/wads"));
    bool all = true;
    for (const Place& tom : toms)
        all = Level{base, tom}.Build(program, words) && all;
    if (all)
        std::cout << texts::done << std::endl;
    return all ? 0 : 1;
}

} // namespace

STAND_IN_MAIN(CompileToms)
