#include "editor/setup_list_check.h"

#include "core/file_kinds.h"
#include "core/look.h"
#include "core/text.h"
#include "editor/setup_languages.h"
#include "editor/setup_names.h"
#include "formats/setup_list.h"
#include "words/level_setup.h"

#include <unordered_set>

namespace kestrova
{

namespace
{

constexpr std::size_t mostMissing = 10;
constexpr std::uint64_t longestSetupList = UINT64_C(16) << 20;
/// A hostile name is shown cut.
constexpr std::size_t longestShown = 200;
/// Names that are looked up between two beats.
constexpr std::size_t namesOfABeat = 256;

using Keys = std::unordered_set<std::string>;

Result<Keys> KeysBelow(const Path& folder, const Heartbeat& heartbeat)
{
    const Path root = ResolvePath(folder);
    const auto tree = ScanTree(root, heartbeat);
    if (!tree)
        return tree.Error();
    Keys keys;
    for (const auto* part : {&tree->folders, &tree->files})
        for (const Path& place : *part)
            keys.insert(FoldCase(Readable(place.lexically_relative(root).native())));
    return keys;
}

bool IsManual(const std::string& key)
{
    for (const SetupLanguage& language : SetupLanguages())
        if (key == std::string{OnDisk::SetupManualFolder} + std::string{language.manual})
            return true;
    return false;
}

/// What the setup itself has taken away, or made something else of.
bool GoesBySetup(const std::string& key, const Keys& there)
{
    if (key.ends_with(OnDisk::Mp3Extension))
        return there.contains(StripExtension(key) + std::string{OnDisk::WavExtension});
    const bool isAtTop = key.find('/') == std::string::npos;
    return IsManual(key) || (isAtTop && key.ends_with(OnDisk::EndingJpg));
}

bool IsInstalled(std::string key, const Keys& there, SetupState state)
{
    for (int round = 0; round < 2; ++round) {
        if (there.contains(key) || (state == SetupState::Installed && GoesBySetup(key, there)))
            return true;
        if (!key.starts_with(OnDisk::SetupListPrefix))
            return false;
        key.erase(0, OnDisk::SetupListPrefix.size());
    }
    return false;
}

std::string ShownListName(std::string_view name)
{
    return '"' + OnOneLine(Readable(name.substr(0, longestShown))) + '"';
}

} // namespace

Result<SetupListCheck> CheckSetupFiles(const Path& folder, SetupState state,
                                       const Heartbeat& heartbeat)
{
    const auto text = ReadFileIfThere(InFolder(folder, OnDisk::SetupList), longestSetupList);
    if (!text)
        return text.Error();
    SetupListCheck check;
    check.hasList = text->has_value();
    if (!check.hasList)
        return check;
    const auto there = KeysBelow(folder, heartbeat);
    if (!there)
        return there.Error();
    std::string_view rest = **text;
    std::size_t looked = 0;
    for (auto name = NextSetupName(rest); !name.empty(); name = NextSetupName(rest)) {
        if (++looked % namesOfABeat == 0 && heartbeat && !heartbeat())
            return MakeFailure(ErrorCode::Stopped, TextOf(folder));
        std::string key = SetupKey(name);
        if (!key.empty() && IsInstalled(std::move(key), *there, state))
            continue;
        check.hasMore = check.missing.size() == mostMissing;
        if (check.hasMore)
            return check;
        check.missing.push_back(ShownListName(name));
    }
    return check;
}

std::string SetupListQuestion(const SetupListCheck& check, const Path& folder)
{
    if (!check.hasList)
        return GetMsg(Msg::SetupListMissing,
                      {TextOf(folder) + '\'' + std::string{lineBreak}, lineBreak});
    if (check.missing.empty())
        return {};
    std::vector<std::string> lines{{}};
    lines.insert(lines.end(), check.missing.begin(), check.missing.end());
    if (check.hasMore)
        lines.push_back(GetMsg(Msg::SetupMoreMissing));
    lines.emplace_back();
    return GetMsg(Msg::SetupFilesMissing, {Join(lines, lineBreak)});
}

} // namespace kestrova
