#pragma once

#include "session/session.h"

namespace kestrova
{

/// What "Preferences of current archive" shows, as text.
struct ArchiveFacts {
    std::string file;
    std::string mainFolder;
    std::string secondaryFolder;
    std::size_t levels = 0;
    bool onCd = false;
    std::int32_t cdCount = 0;
    std::string size; ///< of both folders, and their sum
    std::string sizeOnCd;
    std::string sizeOnDisk;
};

/// The archive's header under edit: each change counts at once, `Cancel` puts it all back.
class ArchiveForm
{
public:
    /// An archive without levels on cd has no use for two folders: both become the writable one.
    explicit ArchiveForm(Session& session);

    [[nodiscard]] ArchiveFacts Facts() const;
    void SetCompress(bool on);
    void SetWavInMp3(bool on);
    /// Choosers. A folder that holds none of the archive's levels is refused in words.
    void BrowseMain();
    void BrowseSecondary();

    void Cancel();
    /// Saves what was changed, and offers to bring the levels into the new form.
    void Accept();

private:
    void Browse(bool secondary);
    [[nodiscard]] bool HoldsLevels(const Path& folder) const;

    Session& session_;
    ArchiveHeader kept_;
};

} // namespace kestrova
