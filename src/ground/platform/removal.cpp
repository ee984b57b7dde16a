#include "platform/removal.h"

#include "platform/file_hook.h"
#include "platform/folder_memory.h"
#include "platform/last_error.h"
#include "platform/steady_folders.h"

#include <chrono>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace kestrova::platform
{

namespace
{

/// An open folder, closed at the end of its life.
class Folder
{
public:
    explicit Folder(int descriptor = -1) : descriptor_(descriptor) {}
    Folder(Folder&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    Folder& operator=(Folder&& other) noexcept
    {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }
    ~Folder()
    {
        if (descriptor_ >= 0)
            ::close(descriptor_);
    }
    [[nodiscard]] int Get() const { return descriptor_; }
    [[nodiscard]] bool IsOpen() const { return descriptor_ >= 0; }

private:
    int descriptor_;
};

/// A folder on the way down from the root. Only the deepest one is open.
struct Level {
    std::string name;                 ///< in the folder above
    std::vector<std::string> folders; ///< those still to be emptied
    dev_t device = 0;
    ino_t inode = 0;
    bool stays = false; ///< something in it could not be removed
};

constexpr mode_t enterable = 0700;
/// A descriptor that marks a folder and needs no right on it.
constexpr int marking = O_PATH | O_DIRECTORY | O_CLOEXEC;
constexpr auto stepEvery = std::chrono::milliseconds{20};

/// True when something is mounted on the open folder, be it of the same file system.
bool IsMountPoint(const Folder& folder, const struct stat& facts, const Level& above)
{
    struct statx more {
    };
    if (::statx(folder.Get(), "", AT_EMPTY_PATH, STATX_TYPE, &more) == 0 &&
        (more.stx_attributes_mask & STATX_ATTR_MOUNT_ROOT) != 0)
        return (more.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0;
    return facts.st_dev != above.device;
}

class Removal
{
public:
    Removal(const Path& root, const RemovalStep& step)
        : above_(root.has_parent_path() ? root.parent_path() : Path{"."}), name_(root.filename()),
          step_(step)
    {
    }

    std::error_code Run(std::string& stuck)
    {
        stuck = above_ / name_;
        if (name_.empty() || name_ == "." || name_ == "..")
            return std::make_error_code(std::errc::invalid_argument);
        struct stat facts {
        };
        current_ = Folder{::open(above_.c_str(), marking)};
        if (!current_.IsOpen() || ::fstat(current_.Get(), &facts) != 0)
            return LastError();
        levels_.push_back({{}, {}, facts.st_dev, facts.st_ino, false});
        if (::fstatat(current_.Get(), name_.c_str(), &facts, AT_SYMLINK_NOFOLLOW) != 0)
            return LastError();
        if (!IsAlive())
            return failure_;
        if (S_ISDIR(facts.st_mode))
            levels_.back().folders.push_back(name_);
        else
            UnlinkEntry(name_, 0);
        while (!ended_ && (levels_.size() > 1 || !levels_.back().folders.empty()))
            if (levels_.back().folders.empty())
                GoUp();
            else
                GoDown();
        if (failure_)
            stuck = stuck_;
        return failure_;
    }

private:
    /// The whole path of an entry of the current folder, or of that folder itself. For words alone:
    /// it may be longer than any call takes.
    [[nodiscard]] std::string PathOf(const std::string& name) const
    {
        std::string path = above_;
        for (std::size_t i = 1; i < levels_.size(); ++i)
            path += "/" + levels_[i].name;
        return name.empty() ? path : path + "/" + name;
    }

    [[nodiscard]] std::error_code AskHook(FileAction action, const std::string& name) const
    {
        return AskFileHookAt(action, [&] { return Path{PathOf(name)}; });
    }

    void Note(const std::string& name, const std::error_code& failure)
    {
        levels_.back().stays = true;
        if (!failure_) {
            failure_ = failure;
            stuck_ = PathOf(name);
        }
    }

    bool IsAlive()
    {
        const auto now = std::chrono::steady_clock::now();
        if (ended_ || !step_ || now < nextStep_)
            return !ended_;
        nextStep_ = now + stepEvery;
        if (!step_()) {
            failure_ = std::make_error_code(std::errc::operation_canceled);
            stuck_ = above_ / name_;
            ended_ = true;
        }
        return !ended_;
    }

    std::error_code Unlink(const std::string& name, int flags)
    {
        const FileAction action = flags == 0 ? FileAction::Unlink : FileAction::RemoveFolder;
        auto failure = AskHook(action, name);
        if (!failure && ::unlinkat(current_.Get(), name.c_str(), flags) != 0)
            failure = LastError();
        return failure == std::errc::no_such_file_or_directory ? std::error_code{} : failure;
    }

    void UnlinkEntry(const std::string& name, int flags)
    {
        if (const auto failure = Unlink(name, flags))
            Note(name, failure);
    }

    /// A folder of the current one, marked and ready to be listed. Without rights it gets them
    /// first, where that is allowed.
    std::error_code Enter(const std::string& name, Folder& entered, struct stat& facts) const
    {
        entered = Folder{::openat(current_.Get(), name.c_str(), marking | O_NOFOLLOW)};
        if (!entered.IsOpen() || ::fstat(entered.Get(), &facts) != 0)
            return LastError();
        if (levels_.size() > 1 && IsMountPoint(entered, facts, levels_.back()))
            return std::make_error_code(std::errc::device_or_resource_busy);
        if ((facts.st_mode & enterable) != enterable) {
            if (const auto failure = AskHook(FileAction::SetMode, name))
                return failure;
            const std::string self = "/proc/self/fd/" + std::to_string(entered.Get());
            (void)::chmod(self.c_str(), (facts.st_mode & 07777U) | enterable); // the look tells
        }
        // Without the right to search nobody gets up from it again.
        return ::faccessat(entered.Get(), ".", X_OK, AT_EACCESS) == 0 ? std::error_code{}
                                                                      : LastError();
    }

    void GoDown()
    {
        std::string name = std::move(levels_.back().folders.back());
        levels_.back().folders.pop_back();
        Folder entered;
        struct stat facts {
        };
        if (const auto failure = Enter(name, entered, facts)) {
            // What cannot be entered may be empty.
            if (Unlink(name, AT_REMOVEDIR))
                Note(name, failure);
            return;
        }
        current_ = std::move(entered);
        levels_.push_back({std::move(name), {}, facts.st_dev, facts.st_ino, false});
        Empty();
    }

    /// Everything in the current folder that is no folder goes; the folders are noted.
    void Empty()
    {
        std::vector<std::string> others;
        if (const auto failure = List(others))
            Note({}, failure);
        for (const std::string& name : others) {
            if (!IsAlive())
                return;
            UnlinkEntry(name, 0);
        }
    }

    std::error_code List(std::vector<std::string>& others)
    {
        if (const auto failure = AskHook(FileAction::List, {}))
            return failure;
        const int opened =
            ::openat(current_.Get(), ".", O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
        if (opened < 0)
            return LastError();
        DIR* listing = ::fdopendir(opened);
        if (listing == nullptr) {
            const std::error_code failure = LastError();
            ::close(opened);
            return failure;
        }
        errno = 0;
        while (const dirent* entry = ::readdir(listing)) {
            const std::string name = entry->d_name;
            if (name != "." && name != "..")
                (IsFolder(*entry) ? levels_.back().folders : others).push_back(name);
            if (!IsAlive())
                break;
            errno = 0;
        }
        const std::error_code failure = errno != 0 && !ended_ ? LastError() : std::error_code{};
        ::closedir(listing);
        return failure;
    }

    [[nodiscard]] bool IsFolder(const dirent& entry) const
    {
        if (entry.d_type != DT_UNKNOWN)
            return entry.d_type == DT_DIR;
        struct stat facts {
        };
        return ::fstatat(current_.Get(), entry.d_name, &facts, AT_SYMLINK_NOFOLLOW) == 0 &&
               S_ISDIR(facts.st_mode);
    }

    /// Back to the folder above, provided that it still is the one that was left; then the empty
    /// one goes.
    void GoUp()
    {
        const Level left = std::move(levels_.back());
        levels_.pop_back();
        Level& above = levels_.back();
        Folder parent{::openat(current_.Get(), "..", marking)};
        struct stat facts {
        };
        const bool opened = parent.IsOpen() && ::fstat(parent.Get(), &facts) == 0;
        if (!opened || facts.st_dev != above.device || facts.st_ino != above.inode) {
            Note(left.name, opened ? std::make_error_code(std::errc::io_error) : LastError());
            ended_ = true; // somebody moves folders about; nothing else may be touched
            return;
        }
        current_ = std::move(parent);
        if (!IsAlive())
            return;
        if (left.stays)
            above.stays = true;
        else
            UnlinkEntry(left.name, AT_REMOVEDIR);
    }

    const Path above_;
    const std::string name_;
    const RemovalStep& step_;
    std::chrono::steady_clock::time_point nextStep_;
    Folder current_;
    std::vector<Level> levels_; ///< the first is the folder above the root
    std::error_code failure_;   ///< the first one
    std::string stuck_;
    bool ended_ = false;
};

/// Without the separators at its end, behind which a path has no name.
Path Bare(const Path& root)
{
    std::string text = root.native();
    while (text.size() > 1 && text.back() == '/')
        text.pop_back();
    return text;
}

} // namespace

std::error_code RemoveTree(const Path& root, std::string& stuck, const RemovalStep& step)
{
    const Path bare = Bare(root);
    if (const auto gone = AskSteadyFolders(bare)) {
        stuck = bare.native();
        return gone;
    }
    const auto failure = Removal{bare, step}.Run(stuck);
    ForgetTree(bare);
    return failure;
}

} // namespace kestrova::platform
