#include "formats/change_head.h"

#include "core/names.h"
#include "formats/level_folder.h"
#include "formats/level_folder_name.h"
#include "formats/program_folder.h"
#include "formats/record_json.h"
#include "words/message.h"

#include <algorithm>
#include <iterator>

namespace kestrova
{

namespace
{

constexpr std::int32_t headForm = 1;

/// Behind each kind its word, in the order of the kinds.
constexpr std::string_view kindWords[] = {"",
                                          "slots-freed",
                                          "slots-filled",
                                          "import",
                                          "export",
                                          "bring-back",
                                          "shot-added",
                                          "shot-taken",
                                          "shot-replaced",
                                          "shot-deleted",
                                          "shot-renamed",
                                          "shots-imported",
                                          "edit",
                                          "removal",
                                          "language",
                                          "language-back",
                                          "files-left",
                                          "deletion",
                                          "marks",
                                          "marks-of-several",
                                          "repair"};

bool IsAbsolute(const std::string& path)
{
    const Path place{path};
    return place.is_absolute() && std::find(place.begin(), place.end(), Path{".."}) == place.end();
}

/// One of both names is the level's own, the other one beside it tells that it was set aside: under
/// that name, or under the number that a removed level had.
bool IsOfHome(const MovedFolder& moved, const ChangeHead& head)
{
    const std::string own = OwnPlaceOf(head);
    const bool leaves = EqualNames(moved.from, own);
    const Path place{own};
    const Path aside{leaves ? moved.to : moved.from};
    const std::string name = aside.filename().native();
    const std::string_view before = NameBeforeAside(name);
    return (leaves || EqualNames(moved.to, own)) && !before.empty() &&
           EqualNames(aside.parent_path().native(), place.parent_path().native()) &&
           (EqualNames(before, place.filename().native()) ||
            (head.kind == ChangeKind::LevelRemoved && IsLevelFolderName(before) &&
             IsLevelFolderName(place.filename().native())));
}

bool ReadMoved(const NoteJson& json, ChangeHead& head)
{
    const auto found = json.find("moved");
    if (found == json.end())
        return true;
    NoteReader reader{*found};
    head.moved = MovedFolder{reader.Text("from"), reader.Text("to"),
                             reader.Number<std::uint64_t>("bytes"), reader.Text("digest")};
    const bool moves = head.kind == ChangeKind::LevelRemoved || head.kind == ChangeKind::FilesLeft;
    return reader.Good() && moves && IsAbsolute(head.moved->from) && IsAbsolute(head.moved->to) &&
           IsOfHome(*head.moved, head);
}

bool IsToken(const std::string& text)
{
    return IsContentHash(text);
}

/// What a change that can be undone must tell.
bool IsNamedWhole(const ChangeHead& head)
{
    return head.id > 0 && head.id < undoIdLimit && head.undoes >= 0 && IsAbsolute(head.home) &&
           IsToken(head.level) && IsToken(head.maker);
}

} // namespace

std::string FormatChangeHead(const ChangeHead& head)
{
    NoteJson json = {{"form", headForm},
                     {"code", head.code},
                     {"kind", kindWords[static_cast<std::size_t>(head.kind)]},
                     {"id", head.id},
                     {"time", head.madeNs},
                     {"subject", Encoded(head.subject)},
                     {"name", Encoded(head.levelName)},
                     {"home", Encoded(head.home)},
                     {"level", Encoded(head.level)},
                     {"maker", Encoded(head.maker)},
                     {"archive", Encoded(head.archive)},
                     {"ofLevelsFiles", head.ofLevelsFiles},
                     {"undoes", head.undoes},
                     {"isUndone", head.isUndone}};
    if (head.moved)
        json["moved"] = {{"from", Encoded(head.moved->from)},
                         {"to", Encoded(head.moved->to)},
                         {"bytes", head.moved->bytes},
                         {"digest", Encoded(head.moved->digest)}};
    return WrittenLine(json);
}

Result<ChangeHead> ParseChangeHead(std::string_view line)
{
    const NoteJson json = ParseNote(line);
    NoteReader reader{json};
    ChangeHead head;
    const auto form = reader.Number<std::int32_t>("form");
    head.code = reader.Number<LevelCode>("code");
    const std::string word = reader.Text("kind");
    const auto* const kind = std::find(std::begin(kindWords), std::end(kindWords), word);
    head.kind = static_cast<ChangeKind>(kind - std::begin(kindWords));
    head.id = reader.Number<std::int32_t>("id");
    head.madeNs = reader.Number<std::int64_t>("time");
    head.subject = reader.Text("subject");
    head.levelName = reader.Text("name");
    head.home = reader.Text("home");
    head.level = reader.Text("level");
    head.maker = reader.Text("maker");
    head.archive = reader.Text("archive");
    head.ofLevelsFiles = reader.Flag("ofLevelsFiles");
    head.undoes = reader.Number<std::int32_t>("undoes");
    head.isUndone = reader.Flag("isUndone");
    const bool sound = reader.Good() && form == headForm && kind != std::end(kindWords) &&
                       (head.archive.empty() || IsAbsolute(head.archive)) &&
                       (head.kind == ChangeKind::Unnamed || IsNamedWhole(head)) &&
                       ReadMoved(json, head) && FormatChangeHead(head).size() <= longestChangeHead;
    return sound ? Result<ChangeHead>{std::move(head)} : Failure{ErrorCode::Damaged, {}, {}};
}

std::string OwnPlaceOf(const ChangeHead& head)
{
    return head.kind == ChangeKind::FilesLeft ? InFolder(head.home, OnDisk::DirFiles).native()
                                              : head.home;
}

bool IsInHome(const ChangeHead& head, std::string_view folder)
{
    if (!IsAbsolute(std::string{folder}) || head.home.empty())
        return false;
    const std::string place = Path{folder}.lexically_normal().native();
    const std::string_view above = std::string_view{place}.substr(0, head.home.size());
    return EqualNames(above, head.home) &&
           (place.size() == head.home.size() || place[head.home.size()] == '/');
}

} // namespace kestrova
