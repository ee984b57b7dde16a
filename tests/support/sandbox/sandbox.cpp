#include "sandbox/sandbox.h"

#include "core/files.h"
#include "platform/file_content.h"

#include <cstdlib>
#include <dirent.h>
#include <gtest/gtest.h>
#include <memory>
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

/// Thousands of snapshots are taken, so this goes through the folder as plainly as can be.
void Gather(const std::string& folder, const Path& top, const std::string& prefix,
            FileContents& files)
{
    const std::unique_ptr<DIR, int (*)(DIR*)> listing{::opendir(folder.c_str()), &::closedir};
    if (listing == nullptr)
        return;
    while (const dirent* entry = ::readdir(listing.get())) {
        const std::string name = entry->d_name;
        if (name == "." || name == ".." || name.starts_with(stagedPrefix))
            continue;
        const std::string path = folder + "/" + name;
        struct stat facts = {};
        if (entry->d_type == DT_UNKNOWN && ::lstat(path.c_str(), &facts) != 0)
            continue;
        const auto type = entry->d_type != DT_UNKNOWN ? entry->d_type : IFTODT(facts.st_mode);
        if (type == DT_DIR)
            Gather(path, top, prefix + name + "/", files);
        else if (type == DT_REG || (type == DT_LNK && IsFileBelow(path, top)))
            files[prefix + name] = ContentOf(path);
    }
}

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
    Gather((root / relative).native(), root / relative, {}, files);
    return files;
}

} // namespace kestrova::testing
