#include "editor/document_text.h"

#include "core/text.h"
#include "editor/failure_words.h"
#include "editor/file_names.h"
#include "formats/page_text.h"
#include "platform/places.h"
#include "tools/enclosure.h"
#include "tools/run_to_end.h"
#include "words/assistant.h"

namespace kestrova
{

namespace
{

constexpr std::size_t mostText = std::size_t{16} << 20;
constexpr std::chrono::seconds longestReading{20};

struct DocumentTool {
    Tool tool;
    ToolArguments options; ///< stand before the document
    ToolArguments ends{};  ///< behind it
};

Tool DocumentRow(const char* name, const char* package)
{
    return {.name = name, .package = package, .environment = {{"LC_ALL", "C.UTF-8"}}};
}

/// catdoc 0.95 takes an eight-bit document for Russian unless it is told otherwise, and writes
/// UTF-8; so does antiword 0.37 by its mapping. unrtf 0.21 writes Latin-1.
const std::vector<DocumentTool>& WordTools()
{
    static const std::vector<DocumentTool> tools{
        {DocumentRow("catdoc", "catdoc"), {"-w", "-scp1252", "-dutf-8"}},
        {DocumentRow("antiword", "antiword"), {"-w", "0", "-m", "UTF-8.txt"}}};
    return tools;
}

const std::vector<DocumentTool>& RtfTools()
{
    static const std::vector<DocumentTool> tools{
        {DocumentRow("catdoc", "catdoc"), {"-w", "-dutf-8"}},
        {DocumentRow("unrtf", "unrtf"), {"--text", "--quiet", "--nopict"}}};
    return tools;
}

const std::vector<DocumentTool>& PdfTools()
{
    static const std::vector<DocumentTool> tools{
        {DocumentRow("pdftotext", "poppler-utils"), {"-q", "-enc", "UTF-8"}, {"-"}}};
    return tools;
}

/// The tools for a document that begins so; none where its bytes are its text.
const std::vector<DocumentTool>* ToolsFor(std::string_view bytes)
{
    if (bytes.starts_with(OnDisk::WordStart))
        return &WordTools();
    if (bytes.starts_with(OnDisk::RtfStart))
        return &RtfTools();
    return bytes.starts_with(OnDisk::PdfStart) ? &PdfTools() : nullptr;
}

Result<std::string> ReadBeginning(const Path& file)
{
    const auto place = FindPath(file);
    if (!place)
        return place.Error();
    platform::File source;
    std::string bytes;
    auto failure = platform::File::OpenForRead(*place, source);
    while (!failure && bytes.size() < mostText) {
        const std::size_t before = bytes.size();
        bytes.resize(before + std::min(mostText - before, std::size_t{1} << 20));
        std::size_t got = 0;
        failure = source.Read(std::as_writable_bytes(std::span{bytes}).subspan(before), got);
        bytes.resize(before + got);
        if (got == 0)
            break;
    }
    if (failure)
        return MakeFailure(ErrorCode::CannotRead, TextOf(*place), failure);
    return bytes;
}

/// A document is anybody's, and has its reader do what it can: the reader sees the document alone.
void Enclose(const Tools& tools, ToolOrder& order)
{
    const Path encloser = EncloserOf(tools);
    if (encloser.empty())
        return;
    order.launch.folder.clear(); // what it names it names whole
    order.launch = Enclosed(encloser, tools, order.launch, {}, std::chrono::milliseconds{0});
}

/// What the tool wrote; all that came, of one that wrote more than a readme ever holds.
Result<std::string> TextBy(const Tools& tools, const DocumentTool& row, const Path& file,
                           ProgressScope& progress)
{
    ToolArguments arguments = row.options;
    arguments.push_back(platform::AbsolutePath(ResolvePath(file)).native());
    arguments.insert(arguments.end(), row.ends.begin(), row.ends.end());
    auto order = OrderOf(tools, {row.tool, std::move(arguments)});
    if (!order)
        return order.Error();
    order->output = ToolOrder::Output::Whole;
    order->mostOutput = mostText;
    order->limit = longestReading;
    Enclose(tools, *order);
    ToolRun run{std::move(*order)};
    progress.AllowStop();
    if (const auto started = run.Start(); !started)
        return started.Error();
    const WatchedRun watched{run, &progress, true};
    RunToEnds({&watched, 1});
    const ToolReport& report = run.Report();
    if (report.trouble == ToolTrouble::Flood)
        return report.output.substr(0, mostText);
    if (!report.status && report.trouble != ToolTrouble::NoOutput)
        return report.status.Error();
    return report.output;
}

} // namespace

Result<std::string> ReadDocument(const Tools& tools, const Path& file, ProgressScope& progress)
{
    auto bytes = ReadBeginning(file);
    if (!bytes)
        return bytes;
    Failure failure;
    if (const std::vector<DocumentTool>* rows = ToolsFor(*bytes)) {
        for (const DocumentTool& row : *rows) {
            const auto text = TextBy(tools, row, file, progress);
            if (text)
                return Readable(*text);
            failure = text.Error();
            if (failure.code == ErrorCode::Stopped)
                return failure;
        }
        if (rows == &PdfTools())
            return InWords(ErrorCode::CannotRead,
                           GetMsg(Msg::DocumentNotRead, {TextOf(file.filename())}),
                           WordsOf(failure), failure.details);
    }
    if (IsUtf16(*bytes))
        *bytes = FromUtf16(*bytes);
    std::string text = Readable(*bytes);
    return IsPage(text) ? TextOfPage(text) : text;
}

bool CanReadPdf(const Tools& tools)
{
    return !FindTool(tools, PdfTools().front().tool).empty();
}

} // namespace kestrova
