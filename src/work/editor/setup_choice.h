#pragma once

#include "editor/setup_parts.h"
#include "session/session.h"

#include <optional>

namespace kestrova
{

/// State and steps of the window of a setup: what it comes from, where it goes, in which language.
class SetupChoice
{
public:
    /// With a folder the setup comes from there, else from zips that are yet to be chosen.
    explicit SetupChoice(Session& session, const std::optional<Path>& folder = {});

    [[nodiscard]] const SetupWish& Wish() const { return wish_; }
    void ChooseZip();
    /// One that is in the list already is not added, with words.
    void AddZip(const Path& zip);
    /// Without a place in the list, words.
    void Remove(std::optional<std::size_t> zip);
    void ChooseTarget();
    void SetTarget(const Path& target) { wish_.target = target; }
    void SetLanguage(const SetupLanguage& language) { wish_.language = &language; }
    /// How much room there is where the Level Editor would lie.
    [[nodiscard]] std::string RoomText() const;
    /// True when it was installed; then it lies at `Installed`.
    bool Install(ProgressScope& progress);
    [[nodiscard]] const Path& Installed() const { return installed_; }

private:
    Session& session_;
    SetupWish wish_;
    Path installed_;
};

/// The folder that a setup comes from, as the person chooses it.
std::optional<Path> ChooseSetupFolder(Host& host);

} // namespace kestrova
