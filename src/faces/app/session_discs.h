#pragma once

#include "discs/disc_places.h"
#include "discs/disc_shelf.h"
#include "session/session.h"

namespace kestrova
{

/// The drives and images of this computer, as a session's settings have them.
class SessionDrives : public DiscPlaces
{
public:
    explicit SessionDrives(Session& session) : session_(session) {}

    std::vector<DiscDrive> Drives() override;
    Result<Path> Open(const DiscDrive& drive) override;
    Result<Path> OpenImage(const Path& image) override;
    std::string LabelOf(const Path& image) override;
    void WaitForDisc() override;

private:
    Session& session_;
};

/// What a session finds discs with, for as long as this lives.
class SessionDiscs
{
public:
    /// `windows`: what the face has for the questions.
    explicit SessionDiscs(Session& session, DiscWindows windows = {});
    ~SessionDiscs();
    SessionDiscs(const SessionDiscs&) = delete;
    SessionDiscs& operator=(const SessionDiscs&) = delete;

    [[nodiscard]] DiscShelf& Shelf() { return shelf_; }

private:
    Session& session_;
    SessionDrives drives_;
    DiscShelf shelf_;
};

} // namespace kestrova
