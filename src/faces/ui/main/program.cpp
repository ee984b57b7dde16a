#include "ui/main/program.h"

#include "app/init_program.h"
#include "app/meeting_place.h"
#include "app/session_discs.h"
#include "platform/end_signals.h"
#include "platform/places.h"
#include "session/settings.h"
#include "session/telling.h"
#include "ui/desktop/file_names.h"
#include "ui/desktop/host_windows.h"
#include "ui/desktop/machine_windows.h"
#include "ui/desktop/spoken_language.h"
#include "ui/dialogs/dialog_setup_cd.h"
#include "ui/dialogs/dialogs_small.h"
#include "ui/dialogs/help_desk.h"
#include "ui/main/later_starts.h"
#include "ui/main/main_window.h"
#include "ui/main/start_windows.h"
#include "ui/widgets/clear_boxes_style.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/input_gate.h"
#include "ui/widgets/qt_text.h"
#include "words/ui_main.h"
#include "words/ui_shared.h"

#include <QApplication>
#include <QPalette>
#include <QSessionManager>
#include <QSocketNotifier>
#include <QTimer>
#include <QWindow>

#include <cstdio>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace kestrova
{

namespace
{

struct Options {
    Path home;
    std::vector<std::string> items; ///< an archive, say
    bool version = false;
    bool help = false;
    bool wrong = false;
};

/// The bytes as they came: the name of a file need not be text. Behind `--` all are items.
Options ReadOptions(int argc, const char* const* argv)
{
    Options options;
    bool itemsAlone = false;
    for (int i = 1; i < argc; ++i) {
        const std::string_view word = argv[i];
        if (itemsAlone || !word.starts_with('-'))
            options.items.emplace_back(word);
        else if (word == "--")
            itemsAlone = true;
        else if (word == "--version")
            options.version = true;
        else if (word == "--help" || word == "-h")
            options.help = true;
        else if (word == "--home" && i + 1 < argc)
            options.home = argv[++i];
        else
            options.wrong = true;
    }
    return options;
}

/// Answers that need no display; no value when the windows are wanted.
std::optional<int> AnswerAtOnce(const Options& options)
{
    if (!options.version && !options.help)
        return std::nullopt;
    const std::string line = options.version ? GetMsg(Msg::WindowVersionLine, {KESTROVA_VERSION})
                                             : GetMsg(Msg::WindowUsageLine);
    std::fprintf(stdout, "%s\n", line.c_str());
    return 0;
}

/// Some desktops' dark palettes leave the hint in an empty line black on black.
void MendHintColour()
{
    QColor hint = QApplication::palette().color(QPalette::Text);
    hint.setAlphaF(0.5F);
    // Only this one role, so that all the others go on following the desktop.
    QPalette mended;
    mended.setColor(QPalette::PlaceholderText, hint);
    QApplication::setPalette(mended);
}

/// Only as a program of X do the windows learn of keys that are pressed in the game, which is one
/// under Wine. Whoever chose otherwise is followed.
void PreferX()
{
    if (platform::SessionDesktop() == platform::Desktop::WaylandWithX &&
        qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "xcb;wayland");
}

/// The splash, when the player has put a picture there.
std::unique_ptr<SplashDialog> ShowSplash(const Path& programFolder)
{
    const QPixmap picture(PathToQt(ResolvePath(programFolder / OnDisk::FileNameSplash)));
    if (picture.isNull())
        return nullptr;
    auto splash = std::make_unique<SplashDialog>(picture);
    splash->show();
    return splash;
}

/// What was made is written before the desktop's session or the system ends the program.
void HearOfTheEnd(QApplication& application, MainWindow& window)
{
    QObject::connect(
        &application, &QGuiApplication::commitDataRequest, &window,
        [&window](QSessionManager& manager) {
            const bool asks = manager.allowsInteraction();
            const bool ends = window.MayEnd(asks);
            if (asks)
                manager.release();
            if (!ends)
                manager.cancel();
        },
        Qt::DirectConnection);
    const int descriptor = platform::NoteEndSignals();
    if (descriptor < 0)
        return; // a signal ends the program at once, as ever
    auto* heard = new QSocketNotifier(descriptor, QSocketNotifier::Read, &window);
    QObject::connect(heard, &QSocketNotifier::activated, &window, [heard, &window] {
        heard->setEnabled(false);
        if (!window.EndNow())
            platform::EndBySignal(); // what is under way is mended by the next start
        window.ended();
    });
}

/// The items as another program finds them, which works in another folder; none behind the first
/// empty one.
OpenRequest RequestFor(const std::vector<std::string>& items, const std::string& activation)
{
    OpenRequest request{activation, {}};
    for (const std::string& item : items) {
        if (item.empty())
            break;
        request.items.push_back(platform::AbsolutePath(item).native());
    }
    return request;
}

/// No value when this start goes on; the exit code of one that another program stands for.
std::optional<int> AskMeetingPlace(MeetingPlace& meeting, WindowHost& host,
                                   const OpenRequest& request)
{
    constexpr std::chrono::seconds patience{10};
    switch (meeting.Begin(request, patience)) {
    case MeetingPlace::Role::First:
        return std::nullopt;
    case MeetingPlace::Role::Taken:
        return 0;
    case MeetingPlace::Role::NoAnswer:
        host.Tell(Tone::Error, GetMsg(Msg::MeetingSilent), meeting.Holder());
        return 1;
    case MeetingPlace::Role::TooMuch:
        break;
    }
    host.Tell(Tone::Error, GetMsg(Msg::MeetingTooMuch));
    return 1;
}

/// Does a work once a window stands on the screen: what is shown over it before that would be
/// placed where the desktop has not put it. One that never says so is not waited for.
class OnceItStands : public QObject
{
public:
    OnceItStands(QWidget& window, std::function<void()> work)
        : QObject(&window), window_(*window.windowHandle()), work_(std::move(work))
    {
        constexpr int patienceMs = 1000;
        window_.installEventFilter(this);
        begins_.setSingleShot(true);
        connect(&begins_, &QTimer::timeout, this, &OnceItStands::Begin);
        begins_.start(window_.isExposed() ? 0 : patienceMs);
    }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Expose && window_.isExposed())
            begins_.start(0);
        return false;
    }

private:
    void Begin()
    {
        window_.removeEventFilter(this);
        std::exchange(work_, {})();
    }

    QWindow& window_;
    std::function<void()> work_;
    QTimer begins_;
};

int ShowWindows(QApplication& application, Session& session, WindowLevelList& list,
                MeetingPlace& meeting, const std::vector<std::string>& items)
{
    const InputGate gate{session.running};
    const HelpDesk help{session};
    const std::unique_ptr<SplashDialog> splash = ShowSplash(session.programFolder);
    MainWindow window{session, list};
    LaterStarts laterStarts{meeting, session, window};
    QApplication::setQuitOnLastWindowClosed(false);
    window.ended = [&application] { application.quit(); };
    window.show();
    // From inside the event loop, so that the window is there and alive under what the start asks.
    new OnceItStands(window, [&] {
        StartDialogs dialogs;
        if (!InitProgram(session, dialogs, items))
            return QApplication::exit(1);
        HearOfTheEnd(application, window); // not before the preferences were read
        window.RefreshList();
        if (splash != nullptr)
            splash->close();
        laterStarts.Open(ParseCommandLine(items).others);
    });
    return QApplication::exec();
}

} // namespace

int RunWindows(int argc, char** argv)
{
    if (const auto exitCode = AnswerAtOnce(ReadOptions(argc, argv)))
        return *exitCode;
    const std::string activation = platform::Variable("XDG_ACTIVATION_TOKEN"); // Qt takes it away
    PreferX();
    QApplication application(argc, argv); // takes its own options away
    const Options options = ReadOptions(argc, argv);
    if (options.wrong) {
        std::fprintf(stderr, "%s\n", GetMsg(Msg::WindowUsageLine).c_str());
        return 2;
    }
    QApplication::setStyle(new ClearBoxesStyle);
    MendHintColour();
    QApplication::setApplicationName(Words(Msg::ProgramName));
    QApplication::setDesktopFileName(QStringLiteral("kestrova"));
    QApplication::setWindowIcon(ProgramIcon());

    WindowHost host;
    WindowMachine machine;
    WindowLevelList list;
    const auto folder = ChooseProgramFolder(options.home);
    if (!folder) {
        host.Tell(Tone::Error, GetMsg(Msg::WindowNoProgramFolder, {folder.Error().subject}),
                  folder.Error().reason);
        return 1;
    }
    const auto settings = ReadSettings(*folder);
    SpeakInWindows(settings ? settings->language : std::string{toldLanguage});
    MeetingPlace meeting{*folder};
    if (const auto ended = AskMeetingPlace(meeting, host, RequestFor(options.items, activation)))
        return *ended;
    Session session{host, machine, list, *folder};
    const SessionDiscs discs{session, WindowsForDiscs()};
    machine.refusedLate = [&host](const Failure& failure) { TellFailure(host, failure); };
    const int code = ShowWindows(application, session, list, meeting, options.items);
    GiveDiscsBack(session);
    return code;
}

} // namespace kestrova
