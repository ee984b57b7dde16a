#include "online/url_update.h"

#include "core/dates.h"
#include "core/text.h"
#include "formats/url_changes.h"
#include "formats/url_text.h"
#include "online/download.h"
#include "online/file_names.h"
#include "online/url_file.h"
#include "session/telling.h"
#include "words/online.h"

namespace kestrova
{

namespace
{

constexpr std::int32_t ownVersion = 103; // a hundred times the version that lists know
constexpr std::size_t mostNotices = 20;

/// Tells what the list has to say. A list with very many notices is cut short, or nobody would get
/// out of it.
void ShowNotices(Host& host, Machine& machine, const Folders& folders, const UrlList& list)
{
    const std::vector<UrlNotice> notices = NoticesOf(list, ownVersion);
    for (std::size_t i = 0; i < notices.size() && i < mostNotices; ++i) {
        const UrlNotice& notice = notices[i];
        if (!notice.asks)
            host.Tell(Tone::Plain, notice.text);
        else if (host.AskYesNo(notice.text))
            OpenUrl(host, machine, folders, notice.url);
    }
    if (notices.size() > mostNotices)
        host.Tell(Tone::Plain,
                  GetMsg(Msg::UrlListMoreNotices, {std::to_string(notices.size() - mostNotices)}));
}

bool WantsMirror(Host& host, std::size_t number, const std::string& address)
{
    return host.AskYesNo(GetMsg(Msg::UrlListTryMirror, {lineBreak}) + std::to_string(number) +
                         GetMsg(Msg::UrlListTryEnd) + std::string{lineBreak} + address);
}

/// Merges the list that has come. False, in words, when it is none.
bool TakeNewList(Host& host, Machine& machine, const Folders& folders, const Path& file,
                 const Downloaded& downloaded, UrlList& list)
{
    const auto fromServer = LoadUrlList(file);
    if (!fromServer) {
        const std::string answer = AnswerWords(downloaded);
        TellFailure(host, GetMsg(Msg::UrlListNotRead),
                    answer.empty() ? fromServer.Error()
                                   : Failure{ErrorCode::CannotRead, {}, answer});
        return false;
    }
    list = MergedUrls(list, *fromServer, DateSerialOf(machine.NowNs()));
    ShowNotices(host, machine, folders, list);
    return true;
}

} // namespace

UpdateServers ServersFrom(std::string_view setting)
{
    UpdateServers servers;
    for (const std::string& word : Split(setting, ' '))
        if (!word.empty() && servers.size() < mostUpdateServers)
            servers.push_back(word);
    return servers;
}

bool WantsLevelUrls(Host& host, std::size_t levels)
{
    return levels == 1 && host.AskYesNo(GetMsg(Msg::AskLevelUrls));
}

bool WantsEditorUrls(Host& host)
{
    return host.AskYesNo(GetMsg(Msg::AskEditorUrls));
}

bool OpenUrl(Host& host, Machine& machine, const Folders& folders, const std::string& url)
{
    if (!IsOpenable(url)) {
        host.Tell(Tone::Error, GetMsg(Msg::UrlNotOpened, {OnOneLine(url)}));
        return false;
    }
    const auto opened = machine.Open(url, folders.program);
    if (!opened)
        TellFailure(host, GetMsg(Msg::UrlNotOpenedNow, {url}), opened.Error());
    return static_cast<bool>(opened);
}

bool UpdateUrls(Host& host, Machine& machine, const Folders& folders, const UpdateServers& servers,
                UrlList& list)
{
    if (servers.empty()) {
        host.Tell(Tone::Warning, GetMsg(Msg::UrlListNoServer));
        return false;
    }
    const Path file = InFolder(folders.program, OnDisk::FragNewUrlList);
    Failure last;
    for (std::size_t i = 0; i < servers.size(); ++i) {
        if (i > 0 && !WantsMirror(host, i + 1, servers[i]))
            return false;
        const auto downloaded = DownloadFile(
            host, machine,
            {.url = servers[i], .target = file, .most = longestList, .keepsParts = false});
        if (downloaded)
            return TakeNewList(host, machine, folders, file, *downloaded, list);
        last = downloaded.Error();
        if (!IsOfTheWeb(last))
            return false; // no other server's disk is better, and a Stop is meant for all of them
    }
    TellFailure(host, GetMsg(Msg::UrlListNotDownloaded), last);
    return false;
}

} // namespace kestrova
