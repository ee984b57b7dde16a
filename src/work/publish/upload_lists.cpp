#include "publish/upload_lists.h"

#include "core/file_kinds.h"
#include "formats/nul_list.h"
#include "session/telling.h"
#include "words/lists.h"
#include "words/publish.h"
#include "words/wizard.h"

#include <algorithm>

namespace kestrova
{

namespace
{

struct AddressWords {
    Message ask;
    Message addTitle;
    Message askOther;
    Message changeTitle;
};

const AddressWords& WordsOf(AddressKind kind)
{
    static const AddressWords emails{Msg::AskNewEmail, Msg::AddEmailTitle, Msg::AskOtherEmail,
                                     Msg::ChangeEmailTitle};
    static const AddressWords sites{Msg::AskWebSite, Msg::AddSiteTitle, Msg::AskOtherSite,
                                    Msg::ChangeSiteTitle};
    return kind == AddressKind::Email ? emails : sites;
}

UploadAddresses& ListOf(UploadWizard& wizard, AddressKind kind)
{
    return kind == AddressKind::Email ? wizard.emails : wizard.sites;
}

template <class List> bool HasSelected(Host& host, const List& list, std::size_t count)
{
    return (list.selected && *list.selected < count) || Refuse(host, GetMsg(Msg::NoItemSelected));
}

template <class Items> void Drop(Items& items, std::optional<std::size_t>& selected)
{
    items.erase(items.begin() + static_cast<std::ptrdiff_t>(*selected));
    if (items.empty())
        selected.reset();
    else
        selected = std::min(*selected, items.size() - 1);
}

bool HasFolder(std::string_view name)
{
    return name.find_first_of("\\/") != std::string_view::npos;
}

/// True when it is the name of a file, without any folder.
bool CheckFileNameEntry(Host& host, const std::string& name)
{
    if (name.empty())
        return Refuse(host, GetMsg(Msg::ValueMissing));
    if (name.find('.') == std::string::npos)
        return Refuse(host, GetMsg(Msg::FileNeedsExtension) + name);
    return !HasFolder(name) || Refuse(host, GetMsg(Msg::FileWithoutPath) + name);
}

bool CheckWavName(Host& host, const std::string& name)
{
    if (HasFolder(name))
        return Refuse(host, GetMsg(Msg::WaveNoPath));
    return name.find('.') != std::string::npos || Refuse(host, GetMsg(Msg::WaveNoExtension));
}

bool CheckWavPair(Host& host, const std::string& source, const std::string& target)
{
    if (source.empty() && target.empty())
        return true;
    if (source.empty())
        return Refuse(host, GetMsg(Msg::WaveNoSource, {target}));
    if (!CheckWavName(host, source))
        return false;
    if (target.empty())
        return Refuse(host, GetMsg(Msg::WaveNoTarget, {source}));
    return CheckWavName(host, target);
}

/// The name of a wave, whatever was typed; nothing for nothing.
std::string WaveName(const std::string& typed)
{
    const std::string name{Trim(FileNameOf(typed))};
    if (name.empty() || EndsWithName(name, OnDisk::WavExtension))
        return name;
    return StripExtension(name) + std::string{OnDisk::WavExtension};
}

// What a list is made of: where it lies, what a row has to hold, and where it is written.

struct ImportedWads {
    static constexpr std::size_t width = 2048;
    static auto& Of(auto& wizard) { return wizard.importWads; }
    static std::string& FieldOf(LevelConfig& config) { return config.importWads; }
    static bool Check(Host& host, std::array<std::string, 2>& row)
    {
        return CheckFileNameEntry(host, row[0]) &&
               (!row[1].empty() || Refuse(host, GetMsg(Msg::UploadNoUrl)));
    }
    static std::string Text(const std::array<std::string, 2>& row)
    {
        return GetMsg(Msg::ImportWadsRow, {row[0]}) + row[1];
    }
};

struct ExternWaves {
    static constexpr std::size_t width = 4096;
    static auto& Of(auto& wizard) { return wizard.externWaves; }
    static std::string& FieldOf(LevelConfig& config) { return config.externWaves; }
    static bool Check(Host& host, std::array<std::string, 4>& row)
    {
        const std::vector<UploadChoice> cds = WaveCds();
        if (std::none_of(cds.begin(), cds.end(),
                         [&](const UploadChoice& cd) { return cd.code == row[0]; }))
            return Refuse(host, GetMsg(Msg::UploadNoCd));
        for (std::size_t i = 1; i < row.size(); ++i)
            row[i] = WaveName(row[i]);
        return CheckWavPair(host, row[1], row[2]);
    }
    static std::string Text(const std::array<std::string, 4>& row)
    {
        std::string cd = row[0];
        for (const UploadChoice& choice : WaveCds())
            if (choice.code == row[0])
                cd = choice.text;
        return row[1] + GetMsg(Msg::ExternWaveRow, {cd}) + row[3] + GetMsg(Msg::ExternWaveTarget) +
               row[2];
    }
};

struct TomWads {
    static constexpr std::size_t width = 32767;
    static auto& Of(auto& wizard) { return wizard.tomWads; }
    static std::string& FieldOf(LevelConfig& config) { return config.tomWads; }
    static bool Check(Host& host, std::array<std::string, 2>& row)
    {
        if (row[0].empty())
            return Refuse(host, GetMsg(Msg::UploadNoTom));
        return !row[1].empty() || Refuse(host, GetMsg(Msg::UploadNoWads));
    }
    static std::string Text(const std::array<std::string, 2>& row)
    {
        return row[0] + GetMsg(Msg::TomWadsRow) + row[1];
    }
};

template <class Work> auto WithKind(RowKind kind, Work work)
{
    switch (kind) {
    case RowKind::ImportWads:
        return work(ImportedWads{});
    case RowKind::ExternWaves:
        return work(ExternWaves{});
    case RowKind::TomWads:
        break;
    }
    return work(TomWads{});
}

/// True when every text of the row can stand in the file.
template <std::size_t N> bool HasPlace(Host& host, std::array<std::string, N>& row)
{
    for (std::string& text : row) {
        text = Trim(OnOneLine(text));
        if (!FitsWindows1252(text))
            return Refuse(host, GetMsg(Msg::UploadLetters, {text}));
    }
    return true;
}

template <class Kind, class Row> bool IsFit(Host& host, Row& row)
{
    return HasPlace(host, row) && Kind::Check(host, row);
}

template <class Row> bool IsBlank(const Row& row)
{
    return std::all_of(row.begin(), row.end(),
                       [](const std::string& text) { return text.empty(); });
}

template <class List> void Select(List& list, std::size_t row)
{
    list.selected = row;
    list.edit = list.rows[row];
}

template <class List> bool IsTyped(const List& list)
{
    return list.selected && *list.selected < list.rows.size() &&
           list.edit != list.rows[*list.selected];
}

template <class Kind> bool Update(UploadWizard& wizard)
{
    auto& list = Kind::Of(wizard);
    Host& host = wizard.session.host;
    if (!HasSelected(host, list, list.rows.size()) || !IsFit<Kind>(host, list.edit))
        return false;
    list.rows[*list.selected] = list.edit;
    return true;
}

template <class Kind> bool Store(UploadWizard& wizard)
{
    auto& list = Kind::Of(wizard);
    Host& host = wizard.session.host;
    if (IsTyped(list) && !Update<Kind>(wizard))
        return false;
    std::erase_if(list.rows, [](const auto& row) { return IsBlank(row); });
    if (!list.selected || *list.selected >= list.rows.size())
        list.selected.reset();
    else
        Select(list, *list.selected);
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < list.rows.size(); ++i) {
        if (!IsFit<Kind>(host, list.rows[i])) {
            Select(list, i);
            return false;
        }
        texts.insert(texts.end(), list.rows[i].begin(), list.rows[i].end());
    }
    const std::string field = JoinNulList(texts);
    if (ToWindows1252(field).size() > Kind::width)
        return Refuse(host, GetMsg(Msg::UploadListTooLong, {Kind::Text(list.rows.back())}));
    Kind::FieldOf(wizard.config) = field;
    return true;
}

template <std::size_t N> void LoadRows(UploadRows<N>& list, const std::string& field)
{
    list = {NulGroups<N>(field), std::nullopt, {}};
    if (!list.rows.empty())
        Select(list, 0);
}

UploadAddresses AddressesIn(const std::string& field)
{
    UploadAddresses list{SplitNulList(field), {}};
    if (!list.items.empty())
        list.selected = 0;
    return list;
}

} // namespace

void AddAddress(UploadWizard& wizard, AddressKind kind)
{
    const AddressWords& words = WordsOf(kind);
    const auto text = wizard.session.host.AskText(GetMsg(words.ask), {}, GetMsg(words.addTitle));
    if (!text || Trim(*text).empty())
        return;
    UploadAddresses& list = ListOf(wizard, kind);
    list.items.emplace_back(Trim(*text));
    list.selected = list.items.size() - 1;
}

void ChangeAddress(UploadWizard& wizard, AddressKind kind)
{
    UploadAddresses& list = ListOf(wizard, kind);
    const AddressWords& words = WordsOf(kind);
    Host& host = wizard.session.host;
    if (!HasSelected(host, list, list.items.size()))
        return;
    std::string& item = list.items[*list.selected];
    const auto text = host.AskText(GetMsg(words.askOther), item, GetMsg(words.changeTitle));
    if (text && !Trim(*text).empty())
        item = Trim(*text);
}

void RemoveAddress(UploadWizard& wizard, AddressKind kind)
{
    UploadAddresses& list = ListOf(wizard, kind);
    if (HasSelected(wizard.session.host, list, list.items.size()))
        Drop(list.items, list.selected);
}

bool SelectRow(UploadWizard& wizard, RowKind kind, std::size_t row)
{
    return WithKind(kind, [&]<class Kind>(Kind) {
        auto& list = Kind::Of(wizard);
        if (list.selected == row || row >= list.rows.size())
            return true;
        if (IsTyped(list) && !Update<Kind>(wizard))
            return false;
        Select(list, row);
        return true;
    });
}

bool AddRow(UploadWizard& wizard, RowKind kind)
{
    return WithKind(kind, [&]<class Kind>(Kind) {
        auto& list = Kind::Of(wizard);
        if (IsTyped(list) && !Update<Kind>(wizard))
            return false;
        list.rows.emplace_back();
        Select(list, list.rows.size() - 1);
        return true;
    });
}

bool UpdateRow(UploadWizard& wizard, RowKind kind)
{
    return WithKind(kind, [&]<class Kind>(Kind) { return Update<Kind>(wizard); });
}

void RemoveRow(UploadWizard& wizard, RowKind kind)
{
    WithKind(kind, [&]<class Kind>(Kind) {
        auto& list = Kind::Of(wizard);
        if (!HasSelected(wizard.session.host, list, list.rows.size()))
            return;
        Drop(list.rows, list.selected);
        list.edit = list.selected ? list.rows[*list.selected] : decltype(list.edit){};
    });
}

std::vector<std::string> RowTexts(const UploadWizard& wizard, RowKind kind)
{
    return WithKind(kind, [&]<class Kind>(Kind) {
        std::vector<std::string> texts;
        for (const auto& row : Kind::Of(wizard).rows)
            texts.push_back(Kind::Text(row));
        return texts;
    });
}

bool StoreRows(UploadWizard& wizard, RowKind kind)
{
    return WithKind(kind, [&]<class Kind>(Kind) { return Store<Kind>(wizard); });
}

void LoadConfigIntoPages(UploadWizard& wizard)
{
    const LevelConfig& config = wizard.config;
    wizard.moreInfo = FileNameOf(Trim(config.moreInfo));
    wizard.author = Trim(config.author);
    wizard.authorNote = Trim(config.authorNote);
    wizard.emails = AddressesIn(config.authorEmails);
    wizard.sites = AddressesIn(config.authorSites);
    wizard.name = Trim(config.name);
    wizard.note = Trim(config.note);
    wizard.exeFormat = 0;
    const std::vector<UploadChoice> formats = ExeFormats();
    for (std::size_t i = 0; i < formats.size(); ++i)
        if (EqualNames(formats[i].code, Trim(config.exeFormat)))
            wizard.exeFormat = i;
    wizard.importNotes = Trim(config.importNotes);
    LoadRows(wizard.importWads, config.importWads);
    LoadRows(wizard.externWaves, config.externWaves);
    LoadRows(wizard.tomWads, config.tomWads);
}

} // namespace kestrova
