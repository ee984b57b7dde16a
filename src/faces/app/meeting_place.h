#pragma once

#include "core/files.h"
#include "formats/open_request.h"
#include "platform/file_lock.h"
#include "platform/local_socket.h"

#include <chrono>

/// Of all starts of the windows over one program's folder the first one stays; a later one gives it
/// what it was asked to open, and ends.
namespace kestrova
{

class MeetingPlace
{
public:
    /// The meeting place is in the person's runtime folder, under a name that follows from the
    /// program's folder; in that folder itself where there is no runtime folder.
    explicit MeetingPlace(const Path& programFolder);
    /// The meeting place is gone with the first one.
    ~MeetingPlace();
    MeetingPlace(const MeetingPlace&) = delete;
    MeetingPlace& operator=(const MeetingPlace&) = delete;

    enum class Role {
        First,    ///< nobody has the folder open, or it cannot be told: go on
        Taken,    ///< the program that has it open took the request
        NoAnswer, ///< it did not answer: nothing was opened there, and will not be
        TooMuch,  ///< it is there, and the request is larger than one may be
    };
    /// Waits for an answer for `patience` at the utmost. A meeting place that a killed program left
    /// is taken over.
    Role Begin(const OpenRequest& request, std::chrono::milliseconds patience);
    /// What the program that does not answer says of itself; empty when it says nothing.
    [[nodiscard]] const std::string& Holder() const { return holder_; }

    /// Can be read while `Hear` has something to do; -1 where later starts do not come here.
    [[nodiscard]] int Descriptor() const;
    /// What later starts ask for, each of which waited to be heard; waits for nobody.
    std::vector<OpenRequest> Hear();

private:
    struct Caller {
        platform::LocalSocket socket;
        std::string bytes{};
        bool answered = false;
    };
    Role Ask(const std::string& request, std::chrono::milliseconds patience);
    bool HearOne(Caller& caller, std::vector<OpenRequest>& asked);

    Path socket_; ///< empty: there is no meeting place
    Path lockFile_;
    std::string holder_;
    platform::FileLock lock_;
    platform::LocalSocket listener_;
    platform::SocketGroup group_;
    std::vector<Caller> callers_;
};

} // namespace kestrova
