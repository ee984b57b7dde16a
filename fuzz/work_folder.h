#pragma once

#include "check.h"

#include <filesystem>
#include <string>
#include <unistd.h>

namespace kestrova::fuzz
{

/// A folder of this run, in memory where the system has such a place: a flush would be waited for.
struct WorkFolder {
    std::filesystem::path path;
    WorkFolder()
    {
        const std::filesystem::path memory = "/dev/shm";
        std::string name =
            (std::filesystem::exists(memory) ? memory : std::filesystem::temp_directory_path())
                .native() +
            "/kestrova-fuzz-XXXXXX";
        Promise(mkdtemp(name.data()) != nullptr, "a folder to work in");
        path = name;
    }
    ~WorkFolder() { std::filesystem::remove_all(path); }
};

} // namespace kestrova::fuzz
