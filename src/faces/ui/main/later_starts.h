#pragma once

#include "app/meeting_place.h"

#include <QObject>
#include <QTimer>

#include <deque>

namespace kestrova
{

class MainWindow;
struct Session;

/// What later starts ask for: the window comes to the front at once, and their files are opened as
/// soon as nothing runs here and no question is open.
class LaterStarts : public QObject
{
public:
    LaterStarts(MeetingPlace& meeting, const Session& session, MainWindow& window);
    /// This program's own start is done; only now anything is opened. `packages` of its own command
    /// line come first.
    void Open(const std::vector<Path>& packages);

private:
    void Hear();
    void OpenNext();
    [[nodiscard]] bool IsFree() const;

    MeetingPlace& meeting_;
    const Session& session_;
    MainWindow& window_;
    std::deque<std::vector<std::string>> waiting_;
    QTimer again_; ///< looks whether what waits can be opened now
    bool started_ = false;
};

} // namespace kestrova
