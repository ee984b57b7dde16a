#include "play/game_watch.h"

#include "swap/folder_guard.h"

#include <algorithm>

namespace kestrova
{

bool GameWatch::Look()
{
    // First to be told, then to look: what happens in between is told.
    const Path folder = session_.TrleFolder();
    platform::Waker openings = platform::Waker::OnOpenIn(ResolvePath(folder));
    std::vector<platform::RunningProgram> programs = ProgramsInTrle(session_, session_.Folders());
    wakers_.clear();
    for (const platform::RunningProgram& program : programs)
        wakers_.push_back(platform::Waker::OnEndOf(program.pid));
    if (programs.empty() && !folder.empty())
        wakers_.push_back(std::move(openings));
    told_ = std::all_of(wakers_.begin(), wakers_.end(),
                        [](const platform::Waker& waker) { return waker.Works(); });
    const bool changed = programs.empty() == Running();
    programs_ = std::move(programs);
    return changed;
}

bool GameWatch::HasNews() const
{
    if (Running())
        return true; // a program's end
    // The marker is opened by whoever asks which level stands there, this program above all.
    const std::string marker = session_.Folders().Marker().filename().native();
    return std::any_of(wakers_.begin(), wakers_.end(), [&](const platform::Waker& waker) {
        const auto opened = waker.Opened();
        return std::any_of(opened.begin(), opened.end(),
                           [&](const std::string& name) { return !EqualNames(name, marker); });
    });
}

} // namespace kestrova
