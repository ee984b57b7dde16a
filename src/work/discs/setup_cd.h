#pragma once

#include "session/disc_reader.h"
#include "session/host.h"
#include "session/machine.h"

namespace kestrova
{

/// `Dialog_SetupCd` without its window: how an archive on discs comes to this computer.
class SetupCd
{
public:
    SetupCd(Host& host, Machine& machine, const Archive& archive);

    /// What the archive is called, for a person.
    [[nodiscard]] std::string Title() const;
    /// What a setup takes on the hard disk, in bytes.
    [[nodiscard]] double Size(bool full) const;
    [[nodiscard]] std::string SizeText(bool full) const;

    bool full = false;

    /// `Pul_Install`: asks for the folder. True when it was chosen and has room, which is told
    /// otherwise.
    bool Install();
    /// The choice, once `Install` was done.
    [[nodiscard]] const std::optional<DiscSetup>& Chosen() const { return chosen_; }

private:
    Host& host_;
    Machine& machine_;
    const Archive& archive_;
    std::optional<DiscSetup> chosen_;
};

/// Fails, in words, where the folder's file system has no room for that setup.
Status HasSetupRoom(Machine& machine, const ArchiveHeader& header, const DiscSetup& setup);

} // namespace kestrova
