#include "online/url_editor.h"

#include "core/dates.h"
#include "core/look.h"
#include "core/parallel.h"
#include "core/removal.h"
#include "core/text.h"
#include "formats/url_text.h"
#include "online/url_file.h"
#include "session/telling.h"
#include "words/lists.h"
#include "words/online.h"

#include <algorithm>

namespace kestrova
{

namespace
{

// Of one address; the others are asked about at once.
constexpr std::size_t mostDoublesAsked = 10;

} // namespace

UrlEditor::UrlEditor(Host& host, Machine& machine, const Folders& folders, UpdateServers servers)
    : host_(host), machine_(machine), folders_(folders), servers_(std::move(servers))
{
    auto loaded = LoadUrlList(UrlListPath(folders_));
    if (loaded) {
        list_ = std::move(*loaded);
    } else {
        list_.updateDate = DateSerialOf(machine_.NowNs());
        if (loaded.Error().code != ErrorCode::Missing)
            notRead_ = loaded.Error();
    }
    Show(kind);
}

void UrlEditor::Show(std::int32_t newKind)
{
    kind = newKind;
    texts_.clear();
    FindRows();
}

void UrlEditor::Search(const std::string& text)
{
    search_ = FoldCase(Trim(text));
    FindRows();
}

void UrlEditor::FillTexts()
{
    constexpr std::size_t atOnce = 2'000;
    texts_.resize(rows_.size());
    RunOnAllCores((rows_.size() + atOnce - 1) / atOnce, [&](std::size_t part) {
        const std::size_t end = std::min(rows_.size(), (part + 1) * atOnce);
        for (std::size_t i = part * atOnce; i < end; ++i)
            texts_[i] = SearchedText(list_.records[rows_[i]]);
    });
}

void UrlEditor::FindRows()
{
    rows_ = ListedRecords(list_, kind);
    if (!search_.empty()) {
        if (texts_.empty())
            FillTexts();
        std::size_t kept = 0;
        for (std::size_t i = 0; i < rows_.size(); ++i)
            if (texts_[i].find(search_) != std::string::npos)
                rows_[kept++] = rows_[i];
        rows_.resize(kept);
    }
    selected = rows_.empty() ? std::nullopt : std::optional{rows_.front()};
}

UrlRecord* UrlEditor::Selected()
{
    if (selected && *selected < list_.records.size())
        return &list_.records[*selected];
    host_.Tell(Tone::Error, GetMsg(Msg::NoItemSelected));
    return nullptr;
}

bool UrlEditor::AcceptsDouble(const UrlRecord& entry, const UrlDouble& twin)
{
    const std::string lineEnd{lineBreak};
    const UrlRecord& old = list_.records[twin.record];
    return host_.AskYesNo(
        twin.sameUrl
            ? GetMsg(Msg::UrlSameUrl, {lineEnd + old.description + lineEnd})
            : GetMsg(Msg::UrlSameHost, {UrlHostPart(entry.url),
                                        lineEnd + old.url + lineEnd + old.description + lineEnd}));
}

bool UrlEditor::AcceptsDoubles(const UrlRecord& entry, std::optional<std::size_t> except)
{
    const std::vector<UrlDouble> twins = DoublesOf(list_, entry, except);
    const auto asked = std::min(twins.size(), mostDoublesAsked);
    const bool accepted =
        std::all_of(twins.begin(), twins.begin() + static_cast<std::ptrdiff_t>(asked),
                    [&](const UrlDouble& twin) { return AcceptsDouble(entry, twin); });
    return accepted && (asked == twins.size() ||
                        host_.AskYesNo(GetMsg(Msg::UrlMoreDoubles,
                                              {std::to_string(twins.size() - asked), lineBreak})));
}

std::optional<std::string> UrlEditor::Storable(const std::string& description)
{
    if (FitsWindows1252(description))
        return description;
    std::string kept = FromWindows1252(ToWindows1252(description));
    const std::string lineEnd{lineBreak};
    if (!host_.AskYesNo(GetMsg(Msg::UrlLettersLost, {lineEnd + OnOneLine(kept) + lineEnd})))
        return std::nullopt;
    return kept;
}

bool UrlEditor::AddRecord(const std::string& description, const std::string& url)
{
    const auto kept = Storable(description);
    if (!kept)
        return false;
    const UrlRecord entry{StorableUrl(url), *kept, kind, true};
    if (!AcceptsDoubles(entry, {}))
        return false;
    list_.records.push_back(entry);
    changed_ = true;
    Show(kind);
    return true;
}

bool UrlEditor::ChangeRecord(const std::string& description, const std::string& url)
{
    UrlRecord* const record = Selected();
    if (record == nullptr)
        return false;
    const auto kept = Storable(description);
    if (!kept)
        return false;
    UrlRecord entry = *record;
    entry.description = *kept;
    entry.url = StorableUrl(url);
    if (!AcceptsDoubles(entry, selected))
        return false;
    changed_ = changed_ || entry != *record;
    *record = entry;
    texts_.clear(); // it stays in sight until the next search
    return true;
}

void UrlEditor::Add()
{
    const std::string title = GetMsg(Msg::UrlInsertTitle);
    const auto description = host_.AskText(GetMsg(Msg::UrlInsertDescription), {}, title);
    if (!description || description->empty())
        return;
    const auto url = host_.AskText(GetMsg(Msg::UrlInsertUrl), {}, title);
    if (url && !url->empty())
        AddRecord(*description, *url);
}

void UrlEditor::Change()
{
    const UrlRecord* const record = Selected();
    if (record == nullptr)
        return;
    const std::string title = GetMsg(Msg::UrlChangeTitle);
    const auto description =
        host_.AskText(GetMsg(Msg::UrlChangeDescription), record->description, title);
    if (!description || description->empty())
        return;
    const auto url = host_.AskText(GetMsg(Msg::UrlChangeUrl), record->url, title);
    if (url && !url->empty())
        ChangeRecord(*description, *url);
}

bool UrlEditor::Remove()
{
    const UrlRecord* const record = Selected();
    if (record == nullptr ||
        !host_.AskYesNo(GetMsg(Msg::UrlSureRemove) + OnOneLine(record->description)))
        return false;
    list_.records.erase(list_.records.begin() + static_cast<std::ptrdiff_t>(*selected));
    changed_ = true;
    Show(kind);
    return true;
}

void UrlEditor::Copy(const std::function<void(const std::string&)>& toClipboard)
{
    if (const UrlRecord* const record = Selected()) {
        toClipboard(record->url);
        host_.Tell(Tone::Plain, GetMsg(Msg::UrlCopied));
    }
}

bool UrlEditor::Go()
{
    const UrlRecord* const record = Selected();
    return record != nullptr && OpenUrl(host_, machine_, folders_, record->url);
}

bool UrlEditor::Update(const std::function<void(const std::string&)>& showLine)
{
    showLine(GetMsg(Msg::UrlListUpdating));
    // The notices are told while the old list is still shown.
    UrlList list = list_;
    if (!UpdateUrls(host_, machine_, folders_, servers_, list))
        return false;
    list_ = std::move(list);
    changed_ = true;
    Show(kind);
    return true;
}

Status UrlEditor::SetAside()
{
    const Path file = UrlListPath(folders_);
    const auto gone = IsFree(file);
    if (!gone)
        return gone.Error();
    if (!*gone) {
        const auto aside = RenameAside(file);
        if (!aside)
            return aside.Error();
        host_.Tell(Tone::Warning, GetMsg(Msg::UrlListSetAside, {TextOf(*aside)}));
    }
    notRead_.reset();
    return {};
}

bool UrlEditor::Save()
{
    if (!changed_)
        return true;
    const Path file = UrlListPath(folders_);
    Status saved = notRead_ ? SetAside() : Status{};
    if (saved)
        saved = SaveUrlList(file, list_);
    if (!saved) {
        TellFailure(host_, GetMsg(Msg::UrlListNotSaved) + TextOf(file), saved.Error());
        return false;
    }
    changed_ = false;
    return true;
}

bool UrlEditor::MayLeave()
{
    return !changed_ || host_.AskYesNo(GetMsg(Msg::UrlListChanged, {lineBreak}), Consent::Explicit);
}

} // namespace kestrova
