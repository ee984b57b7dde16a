#include "sandbox/sandbox.h"

#include "core/files.h"
#include "platform/file_content.h"

#include <cstdlib>
#include <gtest/gtest.h>
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

} // namespace

Sandbox::Sandbox() : root(NewFolder()) {}

Sandbox::~Sandbox()
{
    std::error_code failure;
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
    std::string content;
    return platform::ReadAll(root / relative, content) ? "(missing)" : content;
}

bool Sandbox::Has(const std::string& relative) const
{
    return platform::FactsOfLink(root / relative).kind != platform::FileKind::Missing;
}

std::map<std::string, std::string> Sandbox::Snapshot(const std::string& relative) const
{
    std::map<std::string, std::string> files;
    const Path top = root / relative;
    const auto tree = ScanTree(top);
    if (tree)
        for (const Path& file : tree->files)
            files[file.lexically_relative(top).native()] =
                Read(file.lexically_relative(root).native());
    return files;
}

} // namespace kestrova::testing
