#include "burning/disc_tools.h"

#include "burning/file_names.h"
#include "core/text.h"
#include "formats/burn_lines.h"
#include "formats/sectors.h"
#include "words/burning.h"

#include <algorithm>
#include <array>

namespace kestrova
{

namespace
{

constexpr std::uint64_t any = ~std::uint64_t{0};
constexpr std::uint64_t below4GiB = UINT64_C(0xFFFFFFFF);

const std::vector<std::pair<std::string, std::string>> utf8{{"LC_ALL", "C.UTF-8"}}; // not shown

const std::array<ImageTool, 2>& Imagers()
{
    static const std::array<ImageTool, 2> rows{{
        {{.name = "xorriso", .package = "xorriso", .environment = utf8},
         {"xorriso :",
          {"FAILURE", "FATAL", "ABORT", "SORRY"},
          {"WARNING"},
          {"-volid text"}}, // not shown
         {"-as", "mkisofs"},
         any},
        {{.name = "genisoimage", .package = "genisoimage", .environment = utf8},
         {"genisoimage:",
          {"Error:", "Aborting", "ignored", "not readable"}, // not shown
          {"Warning:"},
          {}},
         {"-D", "-input-charset", "utf-8"},
         below4GiB},
    }};
    return rows;
}

const std::array<BurnTool, 3>& Burners()
{
    static const std::array<BurnTool, 3> rows{{
        {{.name = "xorriso", .package = "xorriso", .environment = utf8},
         {"xorriso :", {"FAILURE", "FATAL", "SORRY"}, {}, {}},
         {"-as", "cdrecord"},
         true,
         false,
         {"padsize=0"}},
        {{.name = "wodim", .package = "wodim", .environment = utf8},
         {"wodim:", {"Warning", "Error"}, {}, {}},
         {},
         false,
         true,
         {}},
        {{.name = "cdrskin", .package = "cdrskin", .environment = utf8},
         {"cdrskin:", {"FATAL", "FAILURE", "SORRY"}, {}, {}},
         {},
         true,
         false,
         {"--allow_emulated_drives"}},
    }};
    return rows;
}

/// A text of the disc's descriptor: its word for the tool, its value, the letters of its field.
struct DiscText {
    std::string_view word;
    const std::string& value;
    std::size_t most;
};

std::vector<DiscText> TextsOf(const BurnSettings& settings)
{
    return {{"-A", settings.applicationId, 128},        {"-p", settings.preparer, 128},
            {"-publisher", settings.publisher, 128},    {"-V", settings.volumeId, 32},
            {"-volset", settings.volumeSetId, 128},     {"-abstract", settings.abstractFile, 37},
            {"-biblio", settings.bibliographyFile, 37}, {"-copyright", settings.copyrightFile, 37}};
}

/// A path in a list of grafts, where a backslash takes its meaning from "=".
std::string GraftPath(std::string_view path)
{
    return ReplaceAll(ReplaceAll(std::string{path}, "\\", "\\\\"), "=", "\\=");
}

void Append(ToolArguments& to, const ToolArguments& more)
{
    to.insert(to.end(), more.begin(), more.end());
}

std::string DeviceWord(const BurnDevice& device, const Path& medium)
{
    return (device.emulated ? "dev=stdio:" : "dev=") + medium.native();
}

std::string LineWith(const ToolVoice& voice, std::string_view output,
                     const std::vector<std::string_view>& words)
{
    return words.empty() ? std::string{} : WordsBehind(output, voice.name, words);
}

} // namespace

std::span<const ImageTool> ImageTools()
{
    return Imagers();
}

std::span<const BurnTool> BurnTools()
{
    return Burners();
}

const ImageTool* FindImageTool(const Tools& tools)
{
    const auto& rows = Imagers();
    const auto found = std::find_if(rows.begin(), rows.end(), [&](const ImageTool& row) {
        return !FindTool(tools, row.tool).empty();
    });
    return found == rows.end() ? nullptr : &*found;
}

const BurnTool* FindBurnTool(const Tools& tools, bool emulated)
{
    const auto& rows = Burners();
    const auto found = std::find_if(rows.begin(), rows.end(), [&](const BurnTool& row) {
        return (row.emulates || !emulated) && !FindTool(tools, row.tool).empty();
    });
    return found == rows.end() ? nullptr : &*found;
}

ToolArguments ImageWords(const ImageTool& row, const BurnSettings& settings, const Path& target)
{
    ToolArguments words = row.words;
    Append(words, {"-gui", "-J", "-joliet-long", "-iso-level", "3", "-r", "-graft-points"});
    for (const DiscText& text : TextsOf(settings))
        if (const std::string_view value = Trim(text.value); !value.empty())
            Append(words, {std::string{text.word}, std::string{value}});
    Append(words, settings.imageOptions);
    if (!target.empty())
        Append(words, {"-o", target.native()});
    Append(words, {"-path-list", "-"});
    return words;
}

std::string FileList(const std::vector<DiscFile>& files)
{
    std::string list;
    for (const DiscFile& file : files)
        list.append(GraftPath(file.target)).append("=").append(GraftPath(file.real.native())) +=
            '\n';
    return list;
}

Status CanHold(const ImageTool& row, const BurnSettings& settings,
               const std::vector<DiscFile>& files)
{
    for (const DiscText& text : TextsOf(settings))
        if (Trim(text.value).size() > text.most)
            return InWords(ErrorCode::Refused,
                           GetMsg(Msg::BurnTextTooLong, {text.value, std::to_string(text.most)}));
    for (const DiscFile& file : files)
        if (file.size > row.largestFile)
            return InWords(ErrorCode::Refused,
                           GetMsg(Msg::BurnFileTooLarge, {TextOf(file.source), row.tool.name}));
    return {};
}

ToolArguments BurnWords(const BurnTool& row, const BurnSettings& settings, const Path& medium,
                        const std::string& source, std::uint64_t bytes)
{
    const bool emulated = settings.device.emulated;
    ToolArguments words = row.words;
    if (emulated)
        Append(words, row.emulated);
    if (settings.burnproof)
        words.emplace_back("driveropts=burnproof");
    if (settings.overburn)
        words.emplace_back("-overburn");
    Append(words, settings.burnOptions);
    if (settings.eject && !emulated)
        words.emplace_back("-eject");
    if (settings.dummy)
        words.emplace_back("-dummy");
    words.emplace_back("-v");
    // A file would be written as slowly as a disc.
    if (settings.speed > 0 && !emulated)
        words.push_back("speed=" + std::to_string(settings.speed));
    words.push_back(DeviceWord(settings.device, medium));
    if (source == OnDisk::StandardInput)
        words.push_back("tsize=" + std::to_string(bytes / discSector) + "s");
    words.push_back(source);
    return words;
}

ToolArguments BlankWords(const BurnTool& row, const BurnSettings& settings,
                         const std::string& extent)
{
    ToolArguments words = row.words;
    words.emplace_back("-v");
    if (settings.speed > 0)
        words.push_back("speed=" + std::to_string(settings.speed));
    words.push_back(DeviceWord(settings.device, settings.device.place));
    words.push_back("blank=" + extent);
    return words;
}

std::string ErrorIn(const ToolVoice& voice, std::string_view output)
{
    return LineWith(voice, output, voice.errors);
}

std::string WarningIn(const ToolVoice& voice, std::string_view output)
{
    for (const std::string& line : Split(output, '\n')) {
        const std::string found = LineWith(voice, line, voice.warnings);
        const bool isHarmless =
            std::any_of(voice.harmless.begin(), voice.harmless.end(), [&](std::string_view words) {
                return found.find(words) != std::string::npos;
            });
        if (!found.empty() && !isHarmless)
            return found;
    }
    return {};
}

std::string ScanToolErrors(const ToolVoice& voice, std::string_view output)
{
    if (std::string words = ErrorIn(voice, output); !words.empty())
        return words;
    return WordsBehind(output, "Sense Code:", {}); // not shown
}

} // namespace kestrova
