#include "storage/store_steps.h"

#include "core/copying.h"
#include "core/file_kinds.h"
#include "core/parallel.h"
#include "core/text.h"
#include "formats/level_folder.h"
#include "formats/program_folder.h"
#include "pictures/convert.h"
#include "pictures/jpeg.h"
#include "pictures/picture.h"
#include "storage/compressed_kinds.h"
#include "storage/form_clashes.h"
#include "storage/ready_streams.h"
#include "storage/zl_file.h"
#include "words/storage.h"

#include <algorithm>
#include <map>
#include <set>

namespace kestrova
{

namespace
{

using Form = StoreStep::Form;

/// A name that is too long with its further ending stays the plain file's.
bool FitsCompressed(const std::string& name)
{
    constexpr std::size_t longestName = 255; // bytes that a file system takes
    return name.size() + OnDisk::ZlExtension.size() <= longestName;
}

/// The step of a file when no other file stands in the way of its stored form.
StoreStep StepFor(const LevelFile& file, bool compress)
{
    StoreStep step{file.path, file.name, Form::Copy};
    if (compress && IsCompressed(file.name) && FitsCompressed(file.name)) {
        step.name += OnDisk::ZlExtension;
        step.form = Form::Deflate;
    } else if (compress && EqualNames(file.name, OnDisk::LoadBmp)) {
        step.name = std::string{OnDisk::LoadJpg};
        step.form = Form::Jpeg;
    }
    return step;
}

/// A load picture beside the jpeg that a killed run made of it.
bool IsMadeOf(const LevelFile& jpeg, const LevelFile& bitmap)
{
    const auto picture = ReadPictureFile(bitmap.path);
    const auto made = picture ? EncodeJpeg(*picture) : Result<std::string>{picture.Error()};
    const auto bytes = ReadWholeFile(jpeg.path);
    return made && bytes && *made == *bytes;
}

/// True when `other`, which has the name of the stored form, is that form already.
bool IsStoredFormOf(const StoreStep& step, const LevelFile& file, const LevelFile& other)
{
    return step.form == Form::Jpeg ? IsMadeOf(other, file) : StreamHolds(other.path, file.path);
}

/// True when the jpeg stands and can be read again.
bool LoadPictureConverted(const Path& bitmap, const Path& jpeg)
{
    if (!ConvertBitmapToJpeg(bitmap, jpeg))
        return false;
    (void)platform::SetModified(jpeg,
                                platform::FactsOf(bitmap).modifiedNs); // bytes count, not times
    const auto bytes = ReadWholeFile(jpeg);
    return bytes && DecodePicture(*bytes);
}

Status Deflate(const StoreStep& step, const Path& target, const ReadyStreams* ready)
{
    return CompressToZl(step.source, target,
                        ready == nullptr ? std::string_view{} : ready->Of(step.source));
}

} // namespace

std::vector<StoreStep> StepsFor(const std::vector<LevelFile>& files, bool compress,
                                std::vector<std::string>& kept)
{
    std::multimap<std::string, const LevelFile*> byName;
    for (const LevelFile& file : files)
        byName.emplace(FoldCase(file.name), &file);
    std::vector<StoreStep> steps;
    std::set<std::string> made; // stored forms that stand for their source too
    for (const LevelFile& file : files) {
        StoreStep step = StepFor(file, compress);
        const auto [other, last] = byName.equal_range(FoldCase(step.name));
        const bool isTwin = byName.count(FoldCase(file.name)) > 1;
        if (step.form != Form::Copy && (isTwin || other != last)) {
            if (!isTwin && std::next(other) == last && IsStoredFormOf(step, file, *other->second)) {
                made.insert(other->first);
            } else {
                kept.push_back(file.name);
                step = {file.path, file.name, Form::Copy};
            }
        }
        steps.push_back(std::move(step));
    }
    std::erase_if(steps, [&](const StoreStep& step) {
        return step.form == Form::Copy && made.contains(FoldCase(step.name));
    });
    return steps;
}

Status RunStep(const StoreStep& step, const Path& folder, const ReadyStreams* ready)
{
    const Path target = folder / step.name;
    CopyOptions compared;
    compared.verify = Verify::Content;
    if (step.form == Form::Deflate)
        return Deflate(step, target, ready);
    if (step.form == Form::Jpeg) {
        if (LoadPictureConverted(step.source, target))
            return {};
        // A picture that cannot be converted stays the bitmap that it is.
        if (auto status = DeleteFile(target); !status)
            return status;
        return CopyFileOver(step.source, folder / step.source.filename(), compared);
    }
    compared.spelled = true; // a case twin is another file of the level
    return CopyFileOver(step.source, target, compared);
}

Status RunInPlace(const StoreStep& step, const Path& folder, const ReadyStreams* ready)
{
    const bool jpeg = step.form == Form::Jpeg;
    const Path target = folder / step.name;
    if (jpeg && !LoadPictureConverted(step.source, target))
        return {}; // it stays the bitmap that it is
    if (!jpeg)
        if (auto status = Deflate(step, target, ready); !status)
            return status;
    if (const auto failure = platform::Unlink(step.source))
        return MakeFailure(ErrorCode::CannotDelete, TextOf(step.source), failure);
    return {};
}

FileJob JobFor(const StoreStep& step, std::function<Status()> run)
{
    std::string label = GetMsg(Msg::StoreFileCopy);
    if (step.form == Form::Deflate)
        label = GetMsg(Msg::StoreCompressing, {TextOf(step.source.filename())});
    else if (step.form == Form::Jpeg)
        label = GetMsg(Msg::StoreConvertingLoad);
    return {FileSize(step.source), std::move(label), std::move(run)};
}

StoredOrigins OriginsOf(const std::vector<StoreStep>& steps, const StoredOrigins& made)
{
    std::vector<std::optional<StoredOrigin>> found(steps.size());
    RunOnAllCores(steps.size(), [&](std::size_t i) {
        const std::string name = steps[i].source.filename().native();
        if (const auto wave = made.find(name); wave != made.end())
            found[i] = wave->second;
        else if (steps[i].form != Form::Copy)
            found[i] = OriginOf(name, steps[i].source);
    });
    StoredOrigins origins;
    for (std::size_t i = 0; i < steps.size(); ++i)
        if (found[i])
            origins.emplace(steps[i].name, std::move(*found[i]));
    return origins;
}

} // namespace kestrova
