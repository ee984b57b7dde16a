#include "drives/seen_discs.h"

#include "core/leftovers.h"
#include "core/look.h"
#include "core/removal.h"
#include "core/size_words.h"
#include "core/staged_file.h"
#include "drives/extracted_disc.h"
#include "drives/file_names.h"
#include "drives/mounted_disc.h"
#include "platform/file_content.h"
#include "platform/places.h"
#include "platform/process.h"
#include "words/drives.h"

namespace kestrova
{

namespace
{

constexpr std::uint64_t longestNote = 32768;
constexpr std::string_view driveKey = "drive-";

Path KeyFolder(const Path& programFolder, const std::string& key)
{
    return InFolder(programFolder, OnDisk::DirSeen) / key;
}

std::optional<SeenNote> NoteIn(const Path& folder)
{
    const auto text = ReadFileIfThere(InFolder(folder, OnDisk::FragSeenNote), longestNote);
    return text && *text ? ParseSeenNote(**text) : std::nullopt;
}

Status WriteNote(const Path& folder, const SeenNote& note)
{
    return WriteWholeFile(InFolder(folder, OnDisk::FragSeenNote), FormatSeenNote(note));
}

/// Nothing is seen there any more. What cannot go holds up nothing.
void ForgetNote(const Path& folder)
{
    (void)platform::Unlink(InFolder(folder, OnDisk::FragSeenNote));
}

/// What a killed program left of copies beside the folder in which a disc is seen.
void ClearKilledCopies(const Path& place)
{
    for (const Path& left : LeftoversIn(place))
        if (OwnerOfStaged(left.filename().native()) != platform::OwnProcess())
            (void)RemoveTree(left); // tried again at the next occasion
}

void ForgetKey(const Path& folder)
{
    ForgetNote(folder);
    (void)platform::RemoveFolder(InFolder(folder, OnDisk::FragSeenDisc)); // if it is empty
    (void)platform::RemoveFolder(folder);
}

bool IsOfFile(const SeenNote& note, const Path& image, const platform::FileFacts& facts)
{
    return note.image == image.native() && note.imageSize == facts.size &&
           note.imageTime == facts.modifiedNs;
}

/// What the note tells of is still there.
bool Stands(const SeenNote& note)
{
    if (note.way != SeenNote::Way::Copy)
        return IsMounted(note);
    const platform::FileFacts facts = platform::FactsOfLink(note.folder);
    return facts.kind == platform::FileKind::Folder && facts.device == note.device &&
           facts.inode == note.inode;
}

/// A folder that is no disc's any more is told of once: the note goes all the same.
Status GiveBack(const Tools& tools, const std::string& key, const SeenNote& note)
{
    const Path folder = KeyFolder(tools.programFolder, key);
    const Status done =
        note.way == SeenNote::Way::Copy ? RemoveExtracted(note) : EndMount(tools, note);
    if (!done && done.Error().code != ErrorCode::Differs)
        return done;
    if (done && note.way == SeenNote::Way::Copy && key.starts_with(driveKey))
        (void)platform::MakeFolder(note.folder); // the drive's own folder was there before
    ClearKilledCopies(Path{note.folder}.parent_path());
    ForgetNote(folder);
    return done;
}

Status CheckImage(const Path& image, const platform::FileFacts& facts)
{
    if (facts.kind != platform::FileKind::File)
        return InWords(ErrorCode::Missing, GetMsg(Msg::DiscImageMissing, {TextOf(image)}));
    platform::DiscHead head;
    if (const auto failure = platform::ReadDiscHead(image, head))
        return InWords(ErrorCode::Damaged, GetMsg(Msg::DiscImageNone, {TextOf(image)}),
                       failure == std::errc::not_a_directory ? "" : failure.message());
    if (head.bytes > facts.size)
        return InWords(ErrorCode::Damaged,
                       GetMsg(Msg::DiscImageShort,
                              {TextOf(image), SizeInWords(static_cast<double>(head.bytes)),
                               SizeInWords(static_cast<double>(facts.size))}));
    return {};
}

Status MakePlace(const Tools& tools, const SeenOrder& order)
{
    // In a folder of this program's own nobody else mounts anything.
    if (!order.key.starts_with(driveKey))
        if (auto ended = EndStaleMount(tools, order.place); !ended)
            return ended;
    std::vector<platform::FolderEntry> entries;
    if (const auto made = MakeFolders(order.place); !made)
        return Saying(GetMsg(Msg::DiscPlaceUnusable, {TextOf(order.place)}), made);
    if (const auto failure = platform::ListFolder(order.place, entries))
        return Saying(GetMsg(Msg::DiscPlaceUnusable, {TextOf(order.place)}),
                      MakeFailure(ErrorCode::CannotRead, TextOf(order.place), failure));
    if (!entries.empty() || !platform::KindMountedOn(order.place).empty())
        return InWords(ErrorCode::Refused, order.placeTaken);
    return {};
}

/// Each way notes what it is about to do before it does it.
class Showing
{
public:
    Showing(const Tools& tools, const SeenOrder& order, const platform::FileFacts& facts)
        : tools_(tools), order_(order), folder_(KeyFolder(tools.programFolder, order.key))
    {
        note_.way = SeenNote::Way::Fuse;
        note_.folder = order.place.native();
        note_.image = order.image.native();
        note_.imageSize = facts.size;
        note_.imageTime = facts.modifiedNs;
    }

    Result<Path> Fuse()
    {
        if (const auto written = WriteNote(folder_, note_); !written)
            return written.Error();
        if (const auto done = MountByFuse(tools_, order_.image, order_.place); !done)
            return done.Error();
        return order_.place;
    }

    Result<Path> Loop()
    {
        const auto device = LoopDeviceOf(tools_, order_.image);
        if (!device)
            return device.Error();
        note_.way = SeenNote::Way::Loop;
        note_.loop = device->native();
        if (const auto written = WriteNote(folder_, note_); !written)
            return written.Error();
        const auto place = MountByDesktop(tools_, *device);
        if (!place) {
            (void)EndMount(tools_, note_); // what stays of it is known by its file
            return place;
        }
        note_.folder = place->native();
        if (const auto written = WriteNote(folder_, note_); !written)
            return written.Error();
        return place;
    }

    Result<Path> Copy(Machine& machine, Host& host)
    {
        const auto staged = ExtractDisc(tools_, machine, host, order_.image, order_.place);
        if (!staged)
            return staged;
        auto place = PutCopy(*staged);
        if (!place)
            (void)RemoveTree(*staged); // what stays is cleared by the next start
        return place;
    }

private:
    Result<Path> PutCopy(const Path& staged)
    {
        const platform::FileFacts facts = platform::FactsOfLink(staged);
        const auto hash = HashOfTree(staged);
        if (!hash)
            return hash.Error();
        note_.way = SeenNote::Way::Copy;
        note_.device = facts.device;
        note_.inode = facts.inode;
        note_.hash = *hash;
        if (const auto written = WriteNote(folder_, note_); !written)
            return written.Error();
        // Takes the place of an empty folder, and of nothing else.
        if (const auto failure = platform::Rename(staged, order_.place))
            return Saying(GetMsg(Msg::DiscPlaceUnusable, {TextOf(order_.place)}),
                          MakeFailure(ErrorCode::CannotWrite, TextOf(order_.place), failure));
        return order_.place;
    }

    const Tools& tools_;
    const SeenOrder& order_;
    Path folder_;
    SeenNote note_;
};

Result<Path> ShowAnew(const Tools& tools, Machine& machine, Host& host, const SeenOrder& order,
                      const platform::FileFacts& facts)
{
    if (const auto made = MakePlace(tools, order); !made)
        return made.Error();
    Showing showing{tools, order, facts};
    if (auto place = showing.Fuse())
        return place;
    if (auto place = showing.Loop())
        return place;
    return showing.Copy(machine, host);
}

} // namespace

std::string SeenKeyOfDrive(const std::string& drive)
{
    return std::string{driveKey} + drive;
}

std::string SeenKeyOfImage(const Path& image)
{
    const Path real = ResolvePath(platform::AbsolutePath(image));
    return platform::HashOf(std::as_bytes(std::span(real.native())));
}

Path SeenFolder(const Path& programFolder, const std::string& key, const Path& image)
{
    const auto note = NoteIn(KeyFolder(programFolder, key));
    const bool seen = note && IsOfFile(*note, image, platform::FactsOf(image)) && Stands(*note);
    return seen ? Path{note->folder} : Path{};
}

Result<Path> ShowDisc(const Tools& tools, Machine& machine, Host& host, const SeenOrder& order)
{
    const platform::FileFacts facts = platform::FactsOf(order.image);
    if (const auto checked = CheckImage(order.image, facts); !checked)
        return checked.Error();
    std::unique_ptr<ProgressScope> waiting;
    const auto lock = SeenLock::Take(tools.programFolder, [&] {
        if (!waiting) {
            waiting = host.BeginProgress(ProgressWindow::Wait, GetMsg(Msg::DiscWaitForOther));
            waiting->AllowStop();
        }
        return waiting->Step();
    });
    waiting.reset();
    if (!lock)
        return lock.Error();
    const Path folder = KeyFolder(tools.programFolder, order.key);
    if (const auto made = MakeFolders(folder); !made)
        return made.Error();
    const auto old = NoteIn(folder);
    if (old && IsOfFile(*old, order.image, facts) && Stands(*old)) {
        if (const auto marked = MarkUser(folder); !marked)
            return marked.Error();
        return Path{old->folder};
    }
    if (old && OthersUse(folder))
        return InWords(ErrorCode::Refused, GetMsg(Msg::DiscUsedByOther, {old->folder}));
    if (old)
        if (const auto back = GiveBack(tools, order.key, *old);
            !back && back.Error().code != ErrorCode::Differs)
            return back.Error();
    if (const auto marked = MarkUser(folder); !marked)
        return marked.Error();
    auto place = ShowAnew(tools, machine, host, order, facts);
    if (place)
        return place;
    (void)UnmarkUser(folder); // the failure that counts is known
    if (const auto left = NoteIn(folder))
        (void)GiveBack(tools, order.key, *left);
    ForgetKey(folder);
    return place;
}

Status HideDisc(const Tools& tools, const std::string& key, bool whole)
{
    const Path folder = KeyFolder(tools.programFolder, key);
    if (!FolderExists(folder))
        return {};
    // What another process changes just now it uses.
    const auto lock = SeenLock::Take(tools.programFolder, [] { return false; });
    const auto note = NoteIn(folder);
    if (!lock)
        return whole && note && lock.Error().code == ErrorCode::Stopped
                   ? InWords(ErrorCode::Refused, GetMsg(Msg::DiscUsedByOther, {note->folder}))
                   : lock.Error();
    if (UnmarkUser(folder)) {
        if (whole && note)
            return InWords(ErrorCode::Refused, GetMsg(Msg::DiscUsedByOther, {note->folder}));
        return {};
    }
    Status back;
    if (note)
        back = GiveBack(tools, key, *note);
    if (back || back.Error().code == ErrorCode::Differs)
        ForgetKey(folder);
    return back;
}

std::vector<std::string> SeenKeys(const Path& programFolder)
{
    std::vector<platform::FolderEntry> entries;
    (void)platform::ListFolder(InFolder(programFolder, OnDisk::DirSeen), entries); // none yet
    std::vector<std::string> keys;
    for (const platform::FolderEntry& entry : entries)
        if (entry.kind == platform::FileKind::Folder)
            keys.push_back(entry.name);
    return keys;
}

} // namespace kestrova
