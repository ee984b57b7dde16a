#include "online/part_file.h"

#include "core/look.h"
#include "core/staged_file.h"
#include "formats/part_note.h"
#include "online/file_names.h"
#include "platform/places.h"

namespace kestrova
{

namespace
{

constexpr std::uint64_t longestPartNote = 100'000;
constexpr int nothingBehind = 416;

} // namespace

PartFile::PartFile(Machine& machine, std::string url, const Path& target)
    : machine_(machine), url_(std::move(url)), target_(target)
{
}

PartFile::~PartFile()
{
    if (!staged_.empty())
        (void)platform::Unlink(staged_); // a leftover is skipped by listings and cleared later
}

Path PartFile::Part() const
{
    return target_.parent_path() / (std::string{OnDisk::PartPrefix} + target_.filename().native());
}

Path PartFile::Note() const
{
    return Part().native() + std::string{OnDisk::PartNoteEnding};
}

bool PartFile::ClaimPart()
{
    const auto text = ReadFileIfThere(Note(), longestPartNote);
    if (!text || !*text)
        return false;
    const auto note = ParsePartNote(**text);
    // Whatever the note says, it tells of no other part that may come to lie here.
    (void)platform::Unlink(Note());
    if (!note || note->url != url_ || platform::FactsOfLink(Part()).size != note->size) {
        (void)platform::Unlink(Part());
        return false;
    }
    const Path staged = StagedNameFor(target_);
    if (platform::Rename(Part(), staged))
        return false; // another download took it
    staged_ = staged;
    if (platform::File::OpenForUpdate(staged_, file_) || file_.Facts().size != note->size)
        return false;
    size_ = note->size;
    validator_ = note->validator;
    return true;
}

Status PartFile::CreateNew()
{
    if (!staged_.empty())
        (void)platform::Unlink(staged_);
    file_ = {};
    staged_ = StagedNameFor(target_);
    size_ = 0;
    validator_.clear();
    useless_ = false;
    if (const auto failure = platform::File::CreateNew(staged_, file_))
        return MakeFailure(ErrorCode::CannotOpen, TextOf(target_), failure);
    return {};
}

Status PartFile::Open()
{
    const auto place = FindPath(platform::AbsolutePath(target_));
    if (!place)
        return Failure{ErrorCode::CannotOpen, place.Error().subject, place.Error().reason};
    target_ = *place;
    const auto old = LookAtReplaced(target_);
    if (!old)
        return old.Error();
    replaced_ = *old;
    ClearLeftoversOfKilled(target_.parent_path());
    return ClaimPart() ? Status{} : CreateNew();
}

std::error_code PartFile::Begin(const platform::HttpAnswer& answer)
{
    begun_ = true;
    useless_ = answer.status == nothingBehind && size_ > 0;
    if (useless_)
        return std::make_error_code(std::errc::result_out_of_range);
    if (!platform::BringsFile(answer.status)) {
        (void)Keep(); // the file may be back tomorrow; its page about today goes elsewhere
        page_ = true;
        if (const auto created = CreateNew(); !created)
            return std::make_error_code(std::errc::io_error);
    } else if (answer.status != platform::httpPartOfIt) {
        // An empty file is left alone: one that was cut to nothing is written out by ext4 when it
        // is closed, and whoever closes it waits.
        if (size_ > 0)
            if (const auto failure = file_.Truncate(0))
                return failure;
        size_ = 0;
    }
    validator_ = answer.validator;
    if (answer.total && *answer.total > size_) {
        const auto free = machine_.FreeSpace(target_.parent_path());
        if (free && *free < *answer.total - size_)
            return std::make_error_code(std::errc::no_space_on_device);
    }
    return {};
}

std::error_code PartFile::Take(std::span<const std::byte> bytes)
{
    if (const auto failure = file_.WriteAt(size_, bytes))
        return failure;
    size_ += bytes.size();
    return {};
}

Status PartFile::Commit()
{
    if (replaced_.kind == platform::FileKind::File)
        if (const auto failure = platform::SetMode(staged_, replaced_.mode))
            return MakeFailure(ErrorCode::CannotWrite, TextOf(target_), failure);
    // A file that replaces another one is on the disk first; a new one is no loss to anybody.
    const bool replaces = replaced_.kind != platform::FileKind::Missing;
    return PutStaged(file_, staged_, target_, replaces);
}

bool PartFile::Keep()
{
    if (page_ || validator_.empty() || size_ == 0 || staged_.empty())
        return false;
    // Without any of these steps the next download just begins anew. The bytes are on the disk
    // before the note counts them.
    if (file_.Truncate(size_) || file_.Sync() || file_.Close() || platform::Rename(staged_, Part()))
        return false;
    staged_.clear();
    const auto noted = WriteWholeFile(Note(), FormatPartNote({url_, validator_, size_}), false);
    if (!noted)
        (void)platform::Unlink(Part()); // nobody goes on with it, and it would take room unseen
    return bool{noted};
}

} // namespace kestrova
