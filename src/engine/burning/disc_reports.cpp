#include "burning/disc_reports.h"

#include "burning/content_check.h"
#include "burning/disc_files.h"
#include "burning/disc_run.h"
#include "burning/disc_tools.h"
#include "burning/file_names.h"
#include "core/dates.h"
#include "core/text.h"
#include "formats/iso_listing.h"
#include "platform/clock.h"
#include "session/cleared_progress.h"
#include "words/burning.h"

#include <array>

namespace kestrova
{

namespace
{

enum class ListKind { Flat, Tree, Reference };

std::optional<ListKind> ListKindOf(const std::string& name)
{
    if (EqualNames(name, OnDisk::FlatList))
        return ListKind::Flat;
    if (EqualNames(name, OnDisk::TreeList))
        return ListKind::Tree;
    if (EqualNames(name, OnDisk::ReferenceList))
        return ListKind::Reference;
    return {};
}

const Tool& XorrisoLister()
{
    static const Tool row{.name = "xorriso",
                          .package = "xorriso",
                          .environment = {{"LC_ALL", "C.UTF-8"}}}; // not shown
    return row;
}

const Tool& IsoinfoLister()
{
    static const Tool row{.name = "isoinfo",
                          .package = "genisoimage",
                          .environment = {{"LC_ALL", "C.UTF-8"}}}; // not shown
    return row;
}

void SetLabel(const BurnSettings& settings, Message label)
{
    if (settings.progress != nullptr)
        settings.progress->SetLabel(GetMsg(label));
}

/// All that a lister prints to its standard output.
Result<std::string> OutputOf(const Tools& tools, const Tool& tool, ToolArguments words,
                             std::uint64_t expected, const BurnSettings& settings)
{
    auto order = OrderOf(tools, {.tool = tool,
                                 .arguments = std::move(words),
                                 .parser = [expected] { return CountedLines(expected); },
                                 .folder = tools.programFolder});
    if (!order)
        return order.Error();
    order->output = ToolOrder::Output::Whole;
    ToolRun run{std::move(*order)};
    if (Status started = run.Start(); !started)
        return started.Error();
    RunDiscTools(run, nullptr, settings);
    const ToolReport& report = run.Report();
    if (report.trouble == ToolTrouble::Stopped)
        return Failure{ErrorCode::Stopped};
    if (!report.status)
        return report.status.Error();
    return report.output;
}

int YearPart(const std::string& date, std::size_t at, std::size_t length)
{
    return WholeNumber<int>(std::string_view{date}.substr(at, length)).value_or(0);
}

Result<std::vector<DiscEntry>> ListImage(const Tools& tools, const BurnSettings& settings,
                                         const Path& image, ListKind kind, std::uint64_t expected)
{
    if (!FindTool(tools, XorrisoLister()).empty()) {
        auto text =
            OutputOf(tools, XorrisoLister(),
                     {"-indev", "stdio:" + image.native(), "-find", "/", "-exec", "lsdl", "--"},
                     expected, settings);
        if (!text)
            return text.Error();
        const std::string today = DateText(platform::NowNs());
        return ParseXorrisoListing(*text, YearPart(today, 0, 4), YearPart(today, 5, 2));
    }
    const bool isFlat = kind == ListKind::Flat;
    auto text = OutputOf(tools, IsoinfoLister(), {"-J", isFlat ? "-f" : "-l", "-i", image.native()},
                         expected, settings);
    if (!text)
        return text.Error();
    if (!isFlat)
        return ParseIsoinfoListing(*text);
    std::vector<DiscEntry> files;
    for (std::string& path : ParseIsoinfoPaths(*text))
        files.push_back({std::move(path)});
    return files;
}

} // namespace

bool ReportImage(const Tools& tools, const BurnSettings& settings, const Path& image,
                 const std::string& kindName, std::vector<DiscEntry>& files, std::string& report,
                 BurnError& error)
{
    const auto fail = [&](std::string title, std::string detail) {
        error = {std::move(title), std::move(detail), {}, BurnCode::ReportFailed};
        return false;
    };
    if (image.empty() || !FileExists(image))
        return fail(GetMsg(Msg::ReportNotPossible), GetMsg(Msg::ReportNoImage));
    if (FindTool(tools, XorrisoLister()).empty() && FindTool(tools, IsoinfoLister()).empty())
        return fail(GetMsg(Msg::ReportNotPossible), GetMsg(Msg::ReportNoLister) +
                                                        std::string{lineBreak} +
                                                        InstallHint(tools, XorrisoLister()));
    const auto kind = ListKindOf(kindName);
    if (!kind)
        return fail(GetMsg(Msg::ReportOptionNotValid), GetMsg(Msg::ReportKinds));
    SetLabel(settings, Msg::ReportLabelScan);
    platform::File disc;
    IsoDirectory directory;
    // A lister answers nothing, and no failure, where it finds no disc.
    if (const Status opened = OpenDisc(image, disc, directory); !opened) {
        error = ErrorFrom(opened.Error(), Msg::ReportFailedTitle, BurnCode::ReportFailed);
        return false;
    }
    SetLabel(settings, Msg::ReportLabel);
    auto listed = ListImage(tools, settings, image, *kind, directory.files.size());
    if (!listed) {
        error = ErrorFrom(listed.Error(), Msg::ReportFailedTitle, BurnCode::ReportFailed,
                          BurnCode::ReportFailed);
        return false;
    }
    files = std::move(*listed);
    SetLabel(settings, Msg::ReportLabelFormat);
    report = *kind == ListKind::Flat   ? FlatListOf(files)
             : *kind == ListKind::Tree ? TreeListOf(files)
                                       : ReferenceListOf(files);
    if (settings.progress != nullptr)
        ClearProgress(*settings.progress);
    return true;
}

bool ReportItems(const BurnSettings& settings, const std::string& kind, std::string& report,
                 BurnError& error)
{
    const bool isTarget = EqualNames(kind, OnDisk::ListTarget);
    if (!isTarget && !EqualNames(kind, OnDisk::ListSource)) {
        error = {GetMsg(Msg::ItemsArgumentNotValid),
                 GetMsg(Msg::ItemsArguments, {"\"", "\"", "\""})};
        return false;
    }
    SetLabel(settings, Msg::ItemsLabel);
    const auto files = DiscFilesOf(settings.items, settings.noItems, [&settings] {
        return settings.progress == nullptr || settings.progress->Step();
    });
    if (!files) {
        error = ErrorFrom(files.Error(), Msg::ItemsFailedTitle, BurnCode::ReportFailed);
        return false;
    }
    SetLabel(settings, Msg::ItemsLabelFormat);
    report.clear();
    for (const DiscFile& file : *files) {
        report += isTarget ? ReplaceAll(file.target, "/", "\\") : TextOf(file.source);
        if (!file.isFolder) {
            const std::string date = DateText(file.modifiedNs);
            report.append("\t").append(std::to_string(file.size)).append("\t");
            report += DayText(YearPart(date, 8, 2), YearPart(date, 5, 2), YearPart(date, 0, 4));
        }
        report += lineBreak;
    }
    if (settings.progress != nullptr)
        ClearProgress(*settings.progress);
    return true;
}

std::string PlaceOfFile(const BurnSettings& settings, const Path& file)
{
    for (const BurnItem& item : settings.items) {
        const bool isFile = !FolderExists(item.source);
        const Path below = file.lexically_relative(item.source);
        if (below.empty() || below.native().starts_with("..") || (isFile && below != "."))
            continue;
        std::string place = item.target;
        if (isFile && (place.empty() || place.ends_with('/')))
            place += item.source.filename().native();
        else if (below != ".")
            place += below.native();
        return ReplaceAll(std::move(place), "/", "\\");
    }
    return {};
}

} // namespace kestrova
