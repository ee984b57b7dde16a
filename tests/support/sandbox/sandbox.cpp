#include "sandbox/sandbox.h"

#include "core/files.h"
#include "platform/file_content.h"

#include <array>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kestrova::testing
{

namespace fs = std::filesystem;

namespace
{

Path NewFolder()
{
    // Thousands of flushes are the point of some tests; memory takes them faster than a disk.
    const Path memory = "/dev/shm";
    const Path top = platform::IsWritableFolder(memory) ? memory : fs::temp_directory_path();
    std::string name = (top / "kestrova-test-XXXXXX").native();
    if (::mkdtemp(name.data()) == nullptr)
        std::abort();
    return name;
}

std::string ContentOf(const std::string& file)
{
    std::string content;
    return platform::ReadAll(file, content) ? "(missing)" : content;
}

/// True for a link that leads to a file below `top`.
bool IsFileBelow(const Path& link, const Path& top)
{
    std::error_code failure;
    const Path target = fs::canonical(link, failure);
    const Path relative = target.lexically_relative(fs::canonical(top, failure));
    return !failure && fs::is_regular_file(target, failure) && *relative.begin() != "..";
}

/// An open file or folder, or none.
class Handle
{
public:
    Handle(int folder, const char* name, int flags)
        : number_(::openat(folder, name, flags | O_RDONLY | O_CLOEXEC))
    {
    }
    ~Handle()
    {
        if (number_ >= 0)
            ::close(number_);
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    [[nodiscard]] int Number() const { return number_; }

private:
    int number_;
};

std::string ContentOf(const Handle& file)
{
    struct stat facts = {};
    if (::fstat(file.Number(), &facts) != 0)
        return "(missing)";
    std::string content(static_cast<std::size_t>(facts.st_size), '\0');
    if (::read(file.Number(), content.data(), content.size()) != facts.st_size)
        return "(unreadable)";
    return content;
}

/// Thousands of snapshots are taken, so this goes through the folder as plainly as can be, and
/// without the library's listings: each takes 32 KB of the memory that the sanitizer watches.
class Gatherer
{
public:
    Gatherer(const Path& top, FileContents& files) : top_(top), files_(files) {}

    void Gather(const Handle& folder, const std::string& prefix)
    {
        alignas(dirent64) std::array<char, 4096> room;
        for (ssize_t got = 0; (got = ::getdents64(folder.Number(), room.data(), room.size())) > 0;)
            for (const char* at = room.data(); at < room.data() + got;) {
                const auto* entry = static_cast<const dirent64*>(static_cast<const void*>(at));
                at += entry->d_reclen;
                Take(folder, prefix, entry->d_name, entry->d_type);
            }
    }

private:
    void Take(const Handle& folder, const std::string& prefix, const char* name, unsigned char type)
    {
        const std::string_view text = name;
        if (text == "." || text == ".." || text.starts_with(stagedPrefix))
            return;
        if (struct stat facts = {}; type == DT_UNKNOWN) {
            if (::fstatat(folder.Number(), name, &facts, AT_SYMLINK_NOFOLLOW) != 0)
                return;
            type = static_cast<unsigned char>(IFTODT(facts.st_mode));
        }
        if (type == DT_DIR)
            Gather(Handle{folder.Number(), name, O_DIRECTORY}, prefix + name + "/");
        else if (type == DT_REG || (type == DT_LNK && IsFileBelow(top_ / (prefix + name), top_)))
            files_[prefix + name] = ContentOf(Handle{folder.Number(), name, 0});
    }

    const Path& top_;
    FileContents& files_;
};

} // namespace

Sandbox::Sandbox() : root(NewFolder()) {}

Sandbox::~Sandbox()
{
    std::error_code failure;
    fs::remove_all(root, failure);
    if (!failure)
        return;
    // Tests take rights away; they are given back so that the folder can go.
    for (auto entry = fs::recursive_directory_iterator(
             root, fs::directory_options::skip_permission_denied, failure);
         entry != fs::end(entry); entry.increment(failure))
        if (entry->is_directory(failure) && !entry->is_symlink(failure))
            fs::permissions(entry->path(), fs::perms::owner_all, fs::perm_options::add, failure);
    fs::remove_all(root, failure);
}

void Sandbox::Write(const std::string& relative, std::string_view content) const
{
    const Path file = root / relative;
    fs::create_directories(file.parent_path());
    platform::File handle;
    ASSERT_FALSE(platform::File::Create(file, handle)) << file;
    ASSERT_FALSE(handle.Write(std::as_bytes(std::span(content)))) << file;
}

std::string Sandbox::Read(const std::string& relative) const
{
    return ContentOf((root / relative).native());
}

bool Sandbox::Has(const std::string& relative) const
{
    return platform::FactsOfLink(root / relative).kind != platform::FileKind::Missing;
}

FileContents Sandbox::Snapshot(const std::string& relative) const
{
    FileContents files;
    const Path top = root / relative;
    Gatherer{top, files}.Gather(Handle{AT_FDCWD, top.c_str(), O_DIRECTORY}, {});
    return files;
}

} // namespace kestrova::testing
