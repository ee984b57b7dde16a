#pragma once

#include "session/folders.h"
#include "session/host.h"

namespace kestrova
{

/// Where an installer put a level's files, as a person says it: what `Dialog_TipoExe` asks for, and
/// what the words of the terminal say beforehand.
struct InstalledInto {
    std::string code; ///< the installer's kind, as a level's configuration file has it
    Path folder;
};
InstalledInto IntoTrle(const Folders& folders);
InstalledInto IntoFolder(const Folders& folders, const Path& folder);

/// The question while it stands.
class InstalledPlace
{
public:
    InstalledPlace(Host& host, const Folders& folders) : host_(host), folders_(folders) {}

    void TakeTrle() { answer_ = IntoTrle(folders_); }
    /// Lets the person choose another folder. False, with words, when none was chosen; the question
    /// stays then.
    bool Browse();
    /// None: it was closed without one.
    [[nodiscard]] const std::optional<InstalledInto>& Answer() const { return answer_; }

private:
    Host& host_;
    const Folders& folders_;
    std::optional<InstalledInto> answer_;
};

} // namespace kestrova
