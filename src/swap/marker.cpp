#include "swap/marker.h"

#include "catalogue/message.h"
#include "swap/swap_notes.h"

namespace kestrova
{

std::string MarkerValue(std::string_view tag, std::string_view text)
{
    std::size_t place = FindFolded(text, tag);
    while (place != std::string_view::npos && place > 0 && text[place - 1] != '\n' &&
           text[place - 1] != '\r')
        place = FindFolded(text, tag, place + 1);
    if (place == std::string_view::npos)
        return {};
    const std::string_view rest = text.substr(place + tag.size());
    return std::string{Trim(rest.substr(0, rest.find('#')))};
}

namespace
{

/// True when the noted folder is the one that the archive in memory has for that level: by its
/// path, by its identity after a move, or, copied to another disk, by the level's name.
bool IsOfThisArchive(const Session& session, const OwnerRecord& record)
{
    const Path home = LevelHomeOf(session, *record.owner);
    if (*record.owner == originalCode || record.home.path.empty() || record.home.path == home)
        return true;
    const platform::FileFacts here = platform::FactsOf(ResolvePath(home));
    if (here.kind != platform::FileKind::Folder)
        return false;
    if (here.device == record.home.device && here.inode == record.home.inode)
        return true;
    return !FolderExists(record.home.path) &&
           record.levelName == Readable(LevelNameOf(session, *record.owner));
}

LevelPlace PlaceOfOwner(const Session& session, const OwnerRecord& record)
{
    return {*record.owner, IsOfThisArchive(session, record) ? LevelHomeOf(session, *record.owner)
                                                            : Path{record.home.path}};
}

/// Empty without a marker.
Result<std::string> MarkerBytes(const Session& session)
{
    const Path marker = ResolvePath(session.MarkerPath());
    std::string bytes;
    const auto failure = platform::ReadAll(marker, bytes);
    if (failure && failure != std::errc::no_such_file_or_directory &&
        failure != std::errc::not_a_directory)
        return MakeFailure(ErrorCode::CannotRead, TextOf(marker), failure);
    return failure ? std::string{} : bytes;
}

LevelCode MarkedCode(const Session& session)
{
    const auto bytes = MarkerBytes(session);
    return bytes ? LeadingNumber(MarkerValue(RowText(Msg::TagLevelCode), *bytes)) : unknownLevel;
}

LevelCode CodeHere(const Session& session, const LevelPlace& level)
{
    const bool ours = level.home.empty() || level.home == LevelHomeOf(session, level.code);
    return ours ? level.code : foreignLevel;
}

} // namespace

Status KnowsStandingLevel(const Session& session)
{
    const auto bytes = MarkerBytes(session);
    return bytes ? Status{} : bytes.Error();
}

bool TellUnlessKnown(Session& session)
{
    const auto known = KnowsStandingLevel(session);
    if (!known)
        TellFailure(session, GetMsg(Msg::MarkerUnreadable, {TextOf(session.MarkerPath())}),
                    known.Error());
    return bool{known};
}

LevelPlace StandingLevel(const Session& session)
{
    const LevelCode code = MarkedCode(session);
    const auto owner = OwnerThatCounts(session);
    return owner && owner->owner == code ? PlaceOfOwner(session, *owner) : LevelPlace{code};
}

LevelPlace StateOwner(const Session& session)
{
    const auto owner = OwnerThatCounts(session);
    return owner && owner->owner ? PlaceOfOwner(session, *owner) : LevelPlace{MarkedCode(session)};
}

LevelCode CurrentLevelCode(const Session& session)
{
    return CodeHere(session, StandingLevel(session));
}

bool LevelStands(const Session& session, LevelCode code)
{
    return CurrentLevelCode(session) == code && CodeHere(session, StateOwner(session)) == code;
}

std::string MarkerHead(LevelCode code, const std::string& name)
{
    std::string text;
    for (const Msg line : {Msg::MarkerLine1, Msg::MarkerLine2, Msg::MarkerLine3, Msg::MarkerLine4})
        text += GetMsg(line) + std::string{lineBreak};
    text += GetMsg(Msg::TagLevelCode) + ZeroPadded(code, 4) + "#" + std::string{lineBreak};
    text += GetMsg(Msg::TagLevelName) + std::string{Trim(OnOneLine(name))} + "#" +
            std::string{lineBreak};
    return ToWindows1252(text);
}

std::string MarkerText(LevelCode code, const std::string& name,
                       const std::vector<std::string>& overwritten,
                       const std::vector<std::string>& copied)
{
    const auto list = [](Msg tag, const std::vector<std::string>& files) {
        return ToWindows1252(GetMsg(tag) + Join(files, "|") + "#" + std::string{lineBreak});
    };
    return MarkerHead(code, name) + list(Msg::TagOverwritten, overwritten) +
           list(Msg::TagCopied, copied);
}

MarkerContent ParseMarker(std::string_view bytes)
{
    const std::string text = FromWindows1252(bytes);
    MarkerContent content;
    content.hasText = !text.empty();
    if (const std::string code = MarkerValue(RowText(Msg::TagLevelCode), text); !code.empty())
        content.code = LeadingNumber(code);
    const auto list = [&](Msg tag) {
        const std::string value = MarkerValue(RowText(tag), text);
        return value.empty() ? std::vector<std::string>{} : Split(value, '|');
    };
    content.overwritten = list(Msg::TagOverwritten);
    content.copied = list(Msg::TagCopied);
    return content;
}

} // namespace kestrova
