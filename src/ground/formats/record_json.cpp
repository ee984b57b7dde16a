#include "formats/record_json.h"

#include "core/names.h"

#include <fmt/format.h>

namespace kestrova
{

std::string Encoded(const std::string& name)
{
    const bool wholeUtf8 = IsUtf8(name);
    std::string text;
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '%' || (!wholeUtf8 && byte >= 0x80))
            text += fmt::format("%{:02X}", byte);
        else
            text += c;
    }
    return text;
}

namespace
{

int HexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

} // namespace

std::string Decoded(const std::string& text)
{
    std::string name;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool escape = text[i] == '%' && i + 2 < text.size() && HexDigit(text[i + 1]) >= 0 &&
                            HexDigit(text[i + 2]) >= 0;
        name += escape ? static_cast<char>(HexDigit(text[i + 1]) * 16 + HexDigit(text[i + 2]))
                       : text[i];
        if (escape)
            i += 2;
    }
    return name;
}

NoteJson JsonOf(const std::vector<StateFile>& files)
{
    NoteJson list = NoteJson::array();
    for (const StateFile& file : files)
        list.push_back({{"name", Encoded(file.name)}, {"hash", Encoded(file.hash)}});
    return list;
}

bool Read(NoteReader& reader, const char* name, std::vector<StateFile>& files)
{
    bool sound = true;
    reader.List(name, [&](NoteReader& entry, const NoteJson&) {
        StateFile file;
        file.name = entry.Text("name");
        file.hash = entry.Text("hash");
        // Both become names of files: what could name another place spoils the whole note.
        sound = sound && SafeName(file.name) && IsContentHash(file.hash);
        files.push_back(std::move(file));
    });
    return sound;
}

bool IsContentHash(std::string_view text)
{
    return text.size() == 32 &&
           text.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

NoteJson ParseNote(std::string_view text)
{
    return NoteJson::parse(text, nullptr, false);
}

std::string Written(const NoteJson& json)
{
    return json.dump(1) + "\n";
}

std::string WrittenLine(const NoteJson& json)
{
    return json.dump() + "\n";
}

} // namespace kestrova
