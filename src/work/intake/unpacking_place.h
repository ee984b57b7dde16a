#pragma once

#include "session/folders.h"

namespace kestrova
{

/// Where packages are unpacked before their files go on; empty of meaning between two runs.
Path UnpackingFolder(const Folders& folders);

/// That folder, for as long as somebody unpacks there; it goes on every way out.
class UnpackingPlace
{
public:
    explicit UnpackingPlace(const Folders& folders);
    ~UnpackingPlace();
    UnpackingPlace(const UnpackingPlace&) = delete;
    UnpackingPlace& operator=(const UnpackingPlace&) = delete;

    [[nodiscard]] const Path& Folder() const { return folder_; }

private:
    Path folder_;
};

} // namespace kestrova
