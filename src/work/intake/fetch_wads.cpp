#include "intake/fetch_wads.h"

#include "core/file_kinds.h"
#include "formats/config_groups.h"
#include "formats/url_text.h"
#include "online/download.h"
#include "session/cleared_progress.h"
#include "session/telling.h"
#include "words/level_needs.h"
#include "words/sources.h"

namespace kestrova
{

namespace
{

constexpr std::uint64_t longestPackage = UINT64_C(1) << 30;

Path SelectWadZip(Host& host, const std::string& name)
{
    const auto chosen =
        host.ChooseOpenFile(GetMsg(Msg::SelectWadsFile) + name, GetMsg(Msg::ZipFilesFilter), {});
    return chosen.value_or(Path{});
}

bool MayFetch(Intake& intake, const std::string& name)
{
    Host& host = intake.session.host;
    if (intake.draft.fetches)
        return true;
    if (host.CanAsk())
        return host.AskYesNo(GetMsg(Msg::AskFetchWads, {name}), Consent::Explicit);
    host.Tell(Tone::Error, GetMsg(Msg::WadsNobody, {name}));
    return false;
}

/// `target` is the package afterwards.
Status Fetch(Intake& intake, const WadPackage& package, const Path& target)
{
    Session& session = intake.session;
    intake.progress.SetLabel(GetMsg(Msg::WadsFetching, {package.name}));
    const auto downloaded = DownloadFile(
        session.host, session.machine,
        {.url = package.url, .target = target, .most = longestPackage, .takesPages = false});
    ClearProgress(intake.progress);
    if (!downloaded)
        return downloaded.Error();
    const std::string answer = AnswerWords(*downloaded);
    return answer.empty() ? Status{}
                          : Failure{ErrorCode::CannotRead, OnOneLine(package.url), answer};
}

void OpenAddress(Host& host, Machine& machine, const Path& programFolder, const std::string& url)
{
    if (!IsOpenable(url)) {
        host.Tell(Tone::Warning, GetMsg(Msg::WadsNoAddress, {OnOneLine(url)}));
        return;
    }
    if (const auto opened = machine.Open(url, programFolder); !opened)
        TellFailure(host, GetMsg(Msg::WadsNotOpened, {OnOneLine(url)}), opened.Error());
}

/// The person fetches it; the program waits.
Path FetchedByHand(Intake& intake, const WadPackage& package)
{
    Host& host = intake.session.host;
    if (!host.CanAsk())
        return {};
    if (package.url.empty()) {
        host.Tell(Tone::Warning, GetMsg(Msg::WadsNoServer, {package.name}));
    } else {
        host.Tell(Tone::Plain, GetMsg(Msg::FetchByHand, {package.name}));
        OpenAddress(intake.session.host, intake.session.machine, intake.session.programFolder,
                    package.url);
    }
    return host.AskOkCancel(GetMsg(Msg::WhenFetched)) ? SelectWadZip(host, package.name) : Path{};
}

/// What the server calls the file may be any text.
bool IsFetchable(const WadPackage& package)
{
    constexpr std::size_t longest = 200; // the part and its note beside it have names as well
    return IsWebAddress(package.url) && EndsWithName(package.url, OnDisk::EndingZip) &&
           package.name.size() <= longest && IsLevelFileName(package.name);
}

bool HasAlready(Intake& intake, const WadPackage& package)
{
    const std::string gap{lineBreak};
    return !intake.draft.fetches &&
           intake.session.host.AskYesNo(GetMsg(Msg::AskHaveWads, {gap + package.text + gap}) +
                                        package.name + GetMsg(Msg::AskHaveWadsEnd));
}

bool WantsByHand(Host& host, const WadPackage& package, const Failure& failure)
{
    const std::string url = OnOneLine(package.url);
    if (host.CanAsk())
        return host.AskYesNo(
            GetMsg(Msg::AskFetchByHand, {std::string{lineBreak} + url + std::string{lineBreak}}));
    if (IsOfTheWeb(failure))
        TellFailure(host, GetMsg(Msg::WadsNotFetched, {package.name, url}), failure);
    return false;
}

} // namespace

Path AskWadPackage(Intake& intake, const WadPackage& package)
{
    Host& host = intake.session.host;
    if (HasAlready(intake, package))
        return SelectWadZip(host, package.name);
    const bool isFetchable = IsFetchable(package);
    if (!isFetchable && !host.CanAsk()) {
        host.Tell(Tone::Error,
                  package.url.empty()
                      ? GetMsg(Msg::WadsNoServer, {package.name})
                      : GetMsg(Msg::WadsNotFetchable, {package.name, OnOneLine(package.url)}));
        return {};
    }
    if (!MayFetch(intake, package.name))
        return {};
    if (isFetchable) {
        const Path target = intake.session.programFolder / package.name;
        const Status fetched = Fetch(intake, package, target);
        if (fetched)
            return target;
        if (!WantsByHand(host, package, fetched.Error()))
            return {};
    }
    return FetchedByHand(intake, package);
}

} // namespace kestrova
