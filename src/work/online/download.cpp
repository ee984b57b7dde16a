#include "online/download.h"

#include "core/text.h"
#include "formats/url_text.h"
#include "online/download_words.h"
#include "online/part_file.h"
#include "session/telling.h"
#include "words/online.h"

namespace kestrova
{

namespace
{

using platform::HttpError;

constexpr std::chrono::milliseconds downloadSlice{30};

/// What the next download of the address begins with.
std::string NextWords(bool kept)
{
    return GetMsg(kept ? Msg::DownloadGoesOn : Msg::DownloadBeginsAnew);
}

std::string WordsFor(HttpError error, bool kept)
{
    switch (error) {
    case HttpError::BadAddress:
        return GetMsg(Msg::HttpBadAddress);
    case HttpError::NoHost:
        return GetMsg(Msg::HttpNoHost);
    case HttpError::NoConnection:
        return GetMsg(Msg::HttpNoConnection);
    case HttpError::Certificate:
        return GetMsg(Msg::HttpCertificate);
    case HttpError::Cut:
        return GetMsg(Msg::HttpCut, {NextWords(kept)});
    case HttpError::OtherPart:
        return GetMsg(Msg::HttpOtherPart, {NextWords(kept)});
    case HttpError::TooLong:
        return GetMsg(Msg::HttpTooLong);
    case HttpError::Redirects:
        return GetMsg(Msg::HttpRedirects);
    case HttpError::Silent:
        return GetMsg(Msg::HttpSilent);
    default:
        return GetMsg(Msg::HttpOther);
    }
}

Failure FailureOf(const Download& download, const platform::HttpFetch& fetch, bool kept)
{
    if (fetch.Error() == HttpError::Sink) {
        auto failure =
            MakeFailure(ErrorCode::CannotWrite, TextOf(download.target), fetch.SinkFailure());
        failure.reason += "; " + NextWords(kept);
        return failure;
    }
    return {ErrorCode::CannotRead, OnOneLine(download.url), WordsFor(fetch.Error(), kept),
            OnOneLine(Readable(fetch.Reason()))};
}

/// Label and bar as the bytes come. False once Stop was pressed.
bool Show(ProgressScope& progress, const std::string& name, const platform::HttpFetch& fetch,
          std::int64_t elapsedNs)
{
    const platform::HttpAnswer& answer = fetch.Answer();
    if (answer.status != 0) {
        const DownloadState state{answer.from, fetch.Received(), answer.total.value_or(0),
                                  elapsedNs / 1'000'000};
        progress.SetLabel(DownloadLabel(name, state));
        if (state.total > 0)
            progress.SetBar(state.received, state.total);
    }
    return progress.Step();
}

/// Runs one request to its end into the part. `Refused` where the part is useless.
Result<Downloaded> Request(Machine& machine, const Download& download, PartFile& part,
                           ProgressScope& progress)
{
    platform::HttpClient client;
    platform::HttpFetch fetch =
        client.Start({download.url, part.From(), part.Validator(), download.most}, part);
    const std::string name = OnOneLine(UrlFileName(download.url));
    const std::int64_t start = machine.NowNs();
    while (client.Poll(downloadSlice))
        if (!Show(progress, name, fetch, machine.NowNs() - start)) {
            fetch.Stop();
            const bool kept = download.keepsParts && part.Keep();
            return Failure{ErrorCode::Stopped, OnOneLine(download.url), NextWords(kept)};
        }
    if (fetch.Error() == HttpError::None)
        return Downloaded{fetch.Answer().status, fetch.Received()};
    if (part.IsUseless())
        return Failure{ErrorCode::Refused, {}, {}};
    // A part that the server answers wrongly is not kept, or the next download would end so too.
    const bool wrongAnswer = fetch.Answer().status != 0 && !part.HasBegun();
    const bool kept =
        download.keepsParts && fetch.Error() != HttpError::TooLong && !wrongAnswer && part.Keep();
    return FailureOf(download, fetch, kept);
}

Result<Downloaded> Fetch(Host& host, Machine& machine, const Download& download, PartFile& part)
{
    if (const auto opened = part.Open(); !opened)
        return opened.Error();
    const auto progress =
        host.BeginProgress(ProgressWindow::Download,
                           GetMsg(Msg::DownloadWaiting) + OnOneLine(UrlFileName(download.url)));
    progress->AllowStop();
    auto done = Request(machine, download, part, *progress);
    if (!done && part.IsUseless()) {
        if (const auto anew = part.Restart(); !anew)
            return anew.Error();
        done = Request(machine, download, part, *progress);
    }
    const bool isPage = done && !platform::BringsFile(done->status);
    if (!done || (isPage && !download.takesPages))
        return done;
    if (const auto committed = part.Commit(); !committed)
        return committed.Error();
    return done;
}

} // namespace

Result<Downloaded> DownloadFile(Host& host, Machine& machine, const Download& download)
{
    PartFile part{machine, download.url, download.target};
    auto done = Fetch(host, machine, download, part);
    if (!done && !IsOfTheWeb(done.Error()) && done.Error().code != ErrorCode::Stopped)
        TellFailure(host, GetMsg(Msg::DownloadError) + done.Error().subject, done.Error());
    return done;
}

bool IsOfTheWeb(const Failure& failure)
{
    return failure.code == ErrorCode::CannotRead;
}

std::string AnswerWords(const Downloaded& downloaded)
{
    return platform::BringsFile(downloaded.status)
               ? std::string{}
               : GetMsg(Msg::ServerAnswered, {std::to_string(downloaded.status)});
}

} // namespace kestrova
