#include "intake/extern_waves.h"

#include "core/copying.h"
#include "core/folder_names.h"
#include "core/look.h"
#include "core/name_list.h"
#include "core/name_set.h"
#include "core/size_words.h"
#include "drives/attached_discs.h"
#include "formats/config_groups.h"
#include "formats/config_values.h"
#include "formats/trle_folder.h"
#include "intake/draft_files.h"
#include "intake/file_names.h"
#include "packages/unpack_guard.h"
#include "platform/real_path.h"
#include "session/cleared_progress.h"
#include "session/telling.h"
#include "words/level_needs.h"
#include "words/wizard.h"

#include <algorithm>
#include <limits>

namespace kestrova
{

namespace
{

constexpr std::size_t mostBoxes = 20;

/// What a person reads for a CD's code; empty for an unknown one.
std::string DiscName(std::string_view code)
{
    constexpr Message names[] = {Msg::UploadNone, Msg::UploadTr4, Msg::UploadTr5};
    const std::vector<std::string> codes = Split(OnDisk::ConfigCdCodes, '|');
    for (std::size_t i = 0; i < codes.size(); ++i)
        if (codes[i] == code)
            return GetMsg(names[i]);
    return {};
}

/// The disc's file, which no link leads away from the disc; empty when there is none.
Path FileOfDisc(const Path& disc, const std::string& name)
{
    const Path file = ResolvePath(InFolder(disc, OnDisk::DirAudio) / name);
    Path real;
    Path root;
    if (!FileExists(file) || platform::RealPath(file, real) || platform::RealPath(disc, root))
        return {};
    const auto [end, rest] = std::mismatch(root.begin(), root.end(), real.begin(), real.end());
    return end == root.end() ? file : Path{};
}

/// The waves of one level on their way. What was fetched waits in a folder of its own, and takes
/// its places in the level when all have come.
class WaveFetch
{
public:
    explicit WaveFetch(Intake& intake)
        : intake_(intake), host_(intake.session.host), names_(intake.draft.workFolder),
          staging_(FreshPlaceIn(names_.Folder()), WorkFolder::Make::Now)
    {
    }

    /// A failure when the level's folder could not be listed; nothing may be fetched then.
    [[nodiscard]] const Status& State() const { return names_.State(); }
    Status Fetch(const ExternWave& wave);
    Status PutAll();
    /// What is left to say at the end.
    void TellRest() const;

private:
    struct Waiting {
        Path staged;
        std::string name;
    };
    /// Where the wave is now; empty when it is nowhere. `complete`: it is where it has to be.
    Path Find(const ExternWave& wave, bool& complete);
    [[nodiscard]] std::vector<Path> Discs() const;
    [[nodiscard]] Path OnDiscs(const std::string& code, const std::string& name) const;
    Path AskForDisc(const ExternWave& wave, const std::string& discName);
    Path InLevel(const std::string& name) const;
    Status Stage(const Path& source, const std::string& name);
    void NoteSize(const std::string& name, const Path& source);
    /// Nobody reads hundreds of boxes: those behind the first ones are counted.
    void TellWrong(const std::string& words);

    Intake& intake_;
    Host& host_;
    FolderNames names_;
    WorkFolder staging_;
    std::vector<Waiting> waiting_;
    std::vector<std::string> refused_;
    std::size_t wrong_ = 0;              ///< what there was to tell
    NameSet notHad_;                     ///< codes of CDs that the person does not have
    std::map<std::string, Path> chosen_; ///< folders that stand for a CD, by its code
};

std::vector<Path> WaveFetch::Discs() const
{
    return FoldersOfDiscs(ToolsOf(intake_.session), intake_.session.machine, host_,
                          intake_.session.settings);
}

Path WaveFetch::OnDiscs(const std::string& code, const std::string& name) const
{
    std::vector<Path> discs = Discs();
    if (const auto chosen = chosen_.find(code); chosen != chosen_.end())
        discs.insert(discs.begin(), chosen->second);
    for (const Path& disc : discs)
        if (Path file = FileOfDisc(disc, name); !file.empty())
            return file;
    return {};
}

Path WaveFetch::AskForDisc(const ExternWave& wave, const std::string& discName)
{
    if (notHad_.Has(wave.cd) || !host_.AskYesNo(GetMsg(Msg::AskHaveCd, {discName, lineBreak}))) {
        notHad_.Add(wave.cd);
        return {};
    }
    for (;;) {
        const std::vector<Path> discs = Discs();
        const std::string unit =
            discs.empty() ? GetMsg(Msg::InsertCdAnywhere) : TextOf(discs.front());
        if (!host_.AskOkCancel(GetMsg(Msg::InsertCd, {discName}) + unit)) {
            notHad_.Add(wave.cd);
            return {};
        }
        Path file = OnDiscs(wave.cd, wave.source);
        if (file.empty() && host_.CanAsk() && Discs().empty())
            if (const auto folder =
                    host_.ChooseFolder(GetMsg(Msg::ChooseCdFolder, {discName}), {})) {
                chosen_[wave.cd] = *folder;
                file = OnDiscs(wave.cd, wave.source);
            }
        // Where nobody sits in front of it, no other disc will be put in.
        if (!file.empty() || !host_.CanAsk() || !intake_.progress.Step() ||
            !host_.AskYesNo(GetMsg(Msg::AskRetryCd, {wave.source, lineBreak}), Consent::Explicit))
            return file;
    }
}

Path WaveFetch::InLevel(const std::string& name) const
{
    for (const Waiting& waiting : waiting_)
        if (EqualNames(waiting.name, name))
            return waiting.staged;
    const Path file = names_.PathOf(name);
    return names_.Has(name) && FileExists(file) ? file : Path{};
}

Path WaveFetch::Find(const ExternWave& wave, bool& complete)
{
    const std::string discName = DiscName(wave.cd);
    Path file;
    if (discName.empty()) {
        TellWrong(GetMsg(Msg::WaveCdUnknown, {OnOneLine(wave.cd)}));
    } else if (IsLevelFileName(wave.source)) {
        file = OnDiscs(wave.cd, wave.source);
        if (file.empty())
            file = AskForDisc(wave, discName);
    }
    if (!file.empty() || !IsLevelFileName(wave.alternative))
        return file;
    file = InLevel(wave.alternative);
    if (file.empty()) {
        file = ResolvePath(InFolder(intake_.session.Folders().trle, OnDisk::DirAudio) /
                           wave.alternative);
        if (!FileExists(file))
            file.clear();
    }
    complete = !file.empty() && EqualNames(wave.alternative, wave.target);
    return file;
}

/// The file list tells the size of the level's own file, which the fetched one replaces.
void WaveFetch::NoteSize(const std::string& name, const Path& source)
{
    constexpr std::uint64_t most = std::numeric_limits<std::int32_t>::max();
    for (ConfigFile& listed : intake_.draft.config->files)
        if (EqualNames(Trim(listed.name), name)) {
            listed.size = static_cast<std::int32_t>(std::min(FileSize(source), most));
            return;
        }
}

Status WaveFetch::Stage(const Path& source, const std::string& name)
{
    const auto free = intake_.session.machine.FreeSpace(staging_.Folder());
    if (!free)
        return free.Error();
    const std::uint64_t size = FileSize(source);
    const std::uint64_t keepFree = UnpackLimits{}.keepFree;
    if (*free < keepFree || *free - keepFree < size)
        return InWords(ErrorCode::NoSpace,
                       GetMsg(Msg::WavesNoRoom, {name, SizeInWords(static_cast<double>(size))}));
    CopyOptions options;
    options.rights = plainRights;
    options.progress = [&](std::uint64_t done) {
        intake_.progress.SetBar(done, size);
        return intake_.progress.Step();
    };
    const Path staged = staging_.Folder() / std::to_string(waiting_.size());
    if (auto copied = CopyFileOver(source, staged, options); !copied)
        return copied;
    waiting_.push_back({staged, name});
    return {};
}

Status WaveFetch::Fetch(const ExternWave& wave)
{
    intake_.progress.SetLabel(GetMsg(Msg::WaveRequest) + OnOneLine(wave.source));
    if (!intake_.progress.Step())
        return MakeFailure(ErrorCode::Stopped, wave.target);
    if (!IsLevelFileName(wave.target)) {
        refused_.push_back(OnOneLine(wave.target));
        return {};
    }
    bool complete = false;
    const Path source = Find(wave, complete);
    if (complete)
        return {};
    if (source.empty()) {
        TellWrong(GetMsg(Msg::WaveMissing) + OnOneLine(wave.source + wave.target) + ")");
        return {};
    }
    intake_.progress.SetLabel(GetMsg(Msg::WaveImport) + OnOneLine(wave.source));
    if (!InLevel(wave.target).empty())
        NoteSize(wave.target, source);
    return Stage(source, wave.target);
}

Status WaveFetch::PutAll()
{
    for (const Waiting& waiting : waiting_) {
        const Path target = names_.PathOf(waiting.name);
        if (const auto failure = platform::Rename(waiting.staged, target))
            return MakeFailure(ErrorCode::CannotWrite, TextOf(target), failure);
        names_.Add(waiting.name);
    }
    return {};
}

void WaveFetch::TellWrong(const std::string& words)
{
    if (++wrong_ <= mostBoxes)
        host_.Tell(Tone::Error, words);
}

void WaveFetch::TellRest() const
{
    if (wrong_ > mostBoxes)
        host_.Tell(Tone::Error, GetMsg(Msg::WavesMoreWrong, {std::to_string(wrong_ - mostBoxes)}));
    if (!refused_.empty())
        host_.Tell(Tone::Warning, GetMsg(Msg::WaveNamesRefused, {ShownNames(refused_)}));
}

StepAnswer EndFetch(Intake& intake, const Status& fetched)
{
    ClearProgress(intake.progress);
    Host& host = intake.session.host;
    if (fetched)
        return AnswerTo(host, RefreshFiles(intake));
    return AnswerTo(host, Saying(GetMsg(Msg::WavesNotCopied, {fetched.Error().subject}), fetched));
}

} // namespace

bool WantsExternWaves(const Intake& intake)
{
    return intake.draft.config && !Trim(intake.draft.config->externWaves).empty();
}

StepAnswer FetchExternWaves(Intake& intake)
{
    intake.progress.AllowStop();
    Status fetched;
    {
        WaveFetch fetch{intake};
        fetched = fetch.State();
        for (const ExternWave& wave : ExternWavesOf(*intake.draft.config))
            if (fetched)
                fetched = fetch.Fetch(wave);
        if (fetched)
            fetched = fetch.PutAll();
        fetch.TellRest();
    }
    return EndFetch(intake, fetched);
}

} // namespace kestrova
