#include "formats/noted_files_json.h"

namespace kestrova
{

namespace
{

/// A name below a folder, in whatever letters, that can lead nowhere else.
bool StaysBelow(std::string_view name)
{
    if (name.find('\0') != std::string_view::npos)
        return false;
    for (;;) {
        const std::size_t slash = name.find('/');
        const std::string_view part = name.substr(0, slash);
        if (part.empty() || part == "." || part == "..")
            return false;
        if (slash == std::string_view::npos)
            return true;
        name.remove_prefix(slash + 1);
    }
}

} // namespace

NoteJson JsonOf(const std::vector<NotedFile>& files)
{
    NoteJson list = NoteJson::array();
    for (const NotedFile& file : files)
        list.push_back(
            {{"name", Encoded(file.name)}, {"size", file.size}, {"hash", Encoded(file.hash)}});
    return list;
}

bool ReadNotedFiles(NoteReader& reader, std::vector<NotedFile>& files)
{
    bool sound = true;
    reader.List("files", [&](NoteReader& entry, const NoteJson&) {
        const auto size = entry.Number<std::int64_t>("size");
        NotedFile file{entry.Text("name"), static_cast<std::uint64_t>(size), entry.Text("hash")};
        sound = sound && size >= 0 && StaysBelow(file.name) && IsContentHash(file.hash);
        files.push_back(std::move(file));
    });
    return sound;
}

} // namespace kestrova
