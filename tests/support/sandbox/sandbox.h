#pragma once

#include "core/names.h"

#include <map>
#include <string>
#include <string_view>

namespace kestrova::testing
{

/// Relative path and content.
using FileContents = std::map<std::string, std::string>;

/// A folder of its own below the system's temporary folder, removed at the end.
class Sandbox
{
public:
    Sandbox();
    ~Sandbox();
    Sandbox(const Sandbox&) = delete;
    Sandbox& operator=(const Sandbox&) = delete;

    Path root;

    /// A path below the sandbox.
    Path operator/(const std::string& relative) const { return root / relative; }
    /// Writes a file, making its folders.
    void Write(const std::string& relative, std::string_view content) const;
    [[nodiscard]] std::string Read(const std::string& relative) const;
    [[nodiscard]] bool Has(const std::string& relative) const;
    /// All files below a folder; staged and lock files left out, and links that lead out of it.
    [[nodiscard]] FileContents Snapshot(const std::string& relative) const;
};

} // namespace kestrova::testing
