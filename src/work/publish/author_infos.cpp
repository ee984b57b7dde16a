#include "publish/author_infos.h"

#include "archive/archive_saving.h"
#include "formats/nul_list.h"
#include "history/changed_record.h"
#include "history/changes.h"
#include "publish/file_names.h"
#include "saves/send_mail.h"
#include "words/lists.h"
#include "words/publish.h"

#include <algorithm>
#include <fmt/format.h>

namespace kestrova
{

namespace
{

constexpr std::size_t authorNameWidth = 80;
constexpr std::size_t fieldWidth = 256;

AuthorInfos::Addresses AddressesOf(const std::string& field)
{
    AuthorInfos::Addresses list{SplitNulList(field), {}};
    if (!list.items.empty())
        list.selected = 0;
    return list;
}

bool Fits(const std::string& text, std::size_t width)
{
    return ToWindows1252(text).size() < width;
}

/// An address as the path of a mail link: marks that would begin the link's options are escaped.
std::string MailPath(const std::string& address)
{
    std::string path;
    for (const char c : address) {
        const bool escaped = static_cast<unsigned char>(c) <= ' ' ||
                             std::string_view{"?&#%\"<>\\"}.find(c) != std::string_view::npos;
        path += escaped ? fmt::format("%{:02X}", static_cast<unsigned char>(c)) : std::string{c};
    }
    return path;
}

/// Empty for what would open something of this machine, or a program.
std::string WebAddress(const std::string& site)
{
    for (const std::string& scheme : Split(OnDisk::WebSchemes, '|'))
        if (EqualNames(std::string_view{site}.substr(0, scheme.size()), scheme))
            return site;
    const std::size_t colon = site.find(':');
    const bool port = colon != std::string::npos && colon + 1 < site.size() &&
                      site[colon + 1] >= '0' && site[colon + 1] <= '9';
    const bool control = std::any_of(site.begin(), site.end(),
                                     [](char c) { return static_cast<unsigned char>(c) < ' '; });
    const std::string_view beginnings = "/.~-\\"; // of names of files and of options
    const bool local = !site.empty() && beginnings.find(site.front()) != std::string_view::npos;
    if (site.empty() || control || local || (colon != std::string::npos && !port))
        return {};
    return std::string{OnDisk::WebScheme} + site;
}

} // namespace

AuthorInfos::AuthorInfos(const ArchiveParts& parts, std::size_t index)
    : parts_(parts), index_(index)
{
    const LevelRecord& level = parts.archive.levels[index];
    name = Trim(level.authorName);
    note = Trim(level.authorNote);
    emails = AddressesOf(level.authorEmails);
    sites = AddressesOf(level.authorSites);
}

void AuthorInfos::Add(Addresses& list, Message question)
{
    const auto text = parts_.host.AskText(GetMsg(question), {}, GetMsg(Msg::ChangeAuthorTitle));
    if (!text || text->empty())
        return;
    list.items.push_back(*text);
    list.selected = list.items.size() - 1;
}

std::optional<std::string> AuthorInfos::Selected(const Addresses& list, Message refusal)
{
    if (list.selected && *list.selected < list.items.size())
        return list.items[*list.selected];
    parts_.host.Tell(Tone::Plain, GetMsg(refusal));
    return {};
}

void AuthorInfos::Change(Addresses& list, Message question)
{
    const auto old = Selected(list, Msg::NoSelectedItem);
    if (!old)
        return;
    const auto text = parts_.host.AskText(GetMsg(question), *old, GetMsg(Msg::ChangeAuthorTitle));
    if (text && !text->empty())
        list.items[*list.selected] = *text;
}

void AuthorInfos::Delete(Addresses& list)
{
    if (!Selected(list, Msg::NoSelectedItem))
        return;
    list.items.erase(list.items.begin() + static_cast<std::ptrdiff_t>(*list.selected));
    if (list.items.empty())
        list.selected.reset();
    else
        list.selected = std::min(*list.selected, list.items.size() - 1);
}

void AuthorInfos::NewEmail()
{
    Add(emails, Msg::AskNewEmail);
}

void AuthorInfos::NewSite()
{
    Add(sites, Msg::AskNewSite);
}

void AuthorInfos::ChangeEmail()
{
    Change(emails, Msg::AskChangeEmail);
}

void AuthorInfos::ChangeSite()
{
    Change(sites, Msg::AskChangeSite);
}

void AuthorInfos::DeleteEmail()
{
    Delete(emails);
}

void AuthorInfos::DeleteSite()
{
    Delete(sites);
}

void AuthorInfos::SendMail()
{
    if (const auto address = Selected(emails, Msg::NoSelectedItem))
        (void)parts_.machine.Open(std::string{OnDisk::MailScheme} + MailPath(*address),
                                  parts_.folders.program); // the desktop says what it cannot do
}

void AuthorInfos::VisitSite()
{
    const auto site = Selected(sites, Msg::NoSelectedSite);
    if (!site)
        return;
    const std::string address = WebAddress(std::string{Trim(*site)});
    if (address.empty()) {
        parts_.host.Tell(Tone::Warning, GetMsg(Msg::NoWebAddress, {Readable(*site)}));
        return;
    }
    (void)parts_.machine.Open(address, parts_.folders.program);
}

bool AuthorInfos::Store()
{
    if (!HasArchive(parts_.host, parts_.archive))
        return false;
    LevelRecord& level = parts_.archive.levels[index_];
    const LevelRecord before = level;
    const struct {
        std::string value;
        std::string& field;
        std::size_t width;
        Message refusal;
    } steps[] = {
        {JoinNulList(emails.items), level.authorEmails, fieldWidth, Msg::EmailsTooLong},
        {JoinNulList(sites.items), level.authorSites, fieldWidth, Msg::SitesTooLong},
        {name, level.authorName, authorNameWidth, Msg::AuthorNameTooLong},
        {note, level.authorNote, fieldWidth, Msg::AuthorNoteTooLong},
    };
    for (const auto& step : steps) {
        if (!Fits(step.value, step.width)) {
            parts_.host.Tell(Tone::Error, GetMsg(step.refusal));
            return false;
        }
        step.field = step.value;
    }
    const bool saved = SaveArchive(parts_);
    if (saved)
        NoteStored(before);
    return saved;
}

void AuthorInfos::NoteStored(const LevelRecord& before)
{
    const LevelRecord& level = parts_.archive.levels[index_];
    if (IsSameRecord(before, level))
        return;
    kestrova::Change change = NewChange(parts_, ChangeKind::LevelEdited, level.levelCode);
    change.record = ChangedRecord{index_, before, level};
    NoteDone(parts_.folders, parts_.settings, change);
}

} // namespace kestrova
