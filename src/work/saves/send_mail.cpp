#include "saves/send_mail.h"

#include "platform/places.h"
#include "saves/file_names.h"
#include "saves/savegame_list.h"
#include "session/operation.h"
#include "words/saves.h"

#include <chrono>
#include <thread>

namespace kestrova
{

namespace
{

/// The hand-off of the desktop has found by then that it cannot; some go on for as long as the mail
/// program stays open.
constexpr std::chrono::milliseconds longEnough{4000};
constexpr std::chrono::milliseconds mailSlice{30};

} // namespace

bool SendMail(const ArchiveParts& parts, const std::string& subject, const std::string& body,
              const std::vector<Path>& attachments)
{
    const Operation operation{parts};
    const Path tool = parts.machine.FindTool(std::string{OnDisk::MailTool});
    if (tool.empty())
        return false;
    platform::Launch launch;
    launch.argv = {tool.native(), "--utf8"};
    const auto add = [&](const char* option, const std::string& value) {
        if (value.empty())
            return;
        launch.argv.emplace_back(option);
        launch.argv.push_back(value);
    };
    add("--subject", Readable(subject));
    std::string lines = Readable(body); // it makes line ends of its own
    std::erase(lines, '\r');
    add("--body", lines);
    for (const Path& file : attachments)
        add("--attach", platform::AbsolutePath(file).native());
    const auto pid = parts.machine.Start(launch);
    if (!pid)
        return false;
    const auto progress =
        parts.host.BeginProgress(ProgressWindow::Wait, GetMsg(Msg::HandingToMail));
    for (auto waited = mailSlice; waited < longEnough; waited += mailSlice) {
        if (const auto end = parts.machine.ExitOf(*pid))
            return *end == 0;
        progress->Step();
        std::this_thread::sleep_for(mailSlice);
    }
    return true;
}

} // namespace kestrova
