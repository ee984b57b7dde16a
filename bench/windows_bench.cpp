#include "online/url_file.h"
#include "pictures/bitmap.h"
#include "pictures/jpeg.h"
#include "ui/dialogs/dialog_siti.h"
#include "ui/main/main_window.h"
#include "ui/widgets/cover_cache.h"
#include "world/world.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QListView>
#include <QProcess>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <memory>
#include <utility>

#include <unistd.h>

/// How long the main window needs to open, empty and with 10,000 levels, and in how much memory;
/// how long to show the list again after a key of the search, and in another order; how long the
/// window of 100,000 web addresses, and a screen full of covers. Medians of pairs that take turns,
/// each window in a run of its own, as `name value unit` lines.

using namespace kestrova;

namespace
{

constexpr int pairs = 5;
constexpr const char* openEmpty = "--open-empty";
constexpr const char* openFull = "--open-full";
constexpr int manyLevels = 10'000;
constexpr int manyAddresses = 100'000;
constexpr int coversOfAScreen = 30;

constexpr const char* places[] = {"Caves",  "Temple", "Ruins", "Secret", "Lost city", "The tomb",
                                  "Palace", "Return", "Curse", "Shadow", "Harbour",   "Night"};
constexpr const char* sights[] = {"seven moons", "drowned king", "Nile",      "old machines",
                                  "jade mask",   "north wind",   "lost army", "sleeping god"};

double Milliseconds(const std::function<void()>& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

double Median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void Print(const char* name, double value, const char* unit)
{
    std::printf("%s %.3f %s\n", name, value, unit);
}

/// From nothing to the first painted picture of it.
std::unique_ptr<MainWindow> Open(Session& session, WindowLevelList& list)
{
    auto window = std::make_unique<MainWindow>(session, list);
    window->RefreshList();
    window->show();
    QCoreApplication::processEvents();
    window->repaint();
    return window;
}

std::vector<LevelRecord> ManyLevels(const LevelRecord& original)
{
    std::vector<LevelRecord> levels{original};
    for (int i = 1; i <= manyLevels; ++i) {
        LevelRecord level;
        // Not in the order of the list, and as long and as different as real names are.
        const auto number = static_cast<std::size_t>(i * 7919 % manyLevels);
        level.levelName = std::string{places[number % std::size(places)]} + " of the " +
                          sights[number / 7 % std::size(sights)] + " " + std::to_string(number);
        level.levelCode = i;
        levels.push_back(level);
    }
    return levels;
}

void MeasureSearch(MainWindow& window)
{
    auto* search = window.findChild<QLineEdit*>(QStringLiteral("Text_Search"));
    auto* list = window.findChild<QListView*>(QStringLiteral("Combo_Livelli"));
    std::vector<double> keys;
    double slowest = 0;
    for (int round = 0; round < pairs; ++round) {
        search->clear();
        QCoreApplication::processEvents();
        for (const QChar letter : QStringLiteral("of the 97")) {
            keys.push_back(Milliseconds([&] {
                search->insert(letter);
                list->viewport()->repaint();
            }));
            slowest = std::max(slowest, round == 0 && keys.size() == 1 ? 0.0 : keys.back());
        }
    }
    Print("window_search_first_key", keys.front(), "ms");
    Print("window_search_key", Median(keys), "ms");
    Print("window_search_slowest_later_key", slowest, "ms");
}

/// The list in each order that the box has, by turns.
void MeasureSort(MainWindow& window)
{
    window.findChild<QLineEdit*>(QStringLiteral("Text_Search"))->clear();
    auto* order = window.findChild<QComboBox*>(QStringLiteral("Combo_Sort"));
    auto* list = window.findChild<QListView*>(QStringLiteral("Combo_Livelli"));
    QCoreApplication::processEvents();
    std::vector<double> sorts;
    for (int round = 0; round < pairs; ++round)
        for (int i = order->count() - 1; i >= 0; --i)
            sorts.push_back(Milliseconds([&] {
                order->setCurrentIndex(i);
                list->viewport()->repaint();
            }));
    Print("window_sort", Median(sorts), "ms");
    Print("window_sort_slowest", *std::max_element(sorts.begin(), sorts.end()), "ms");
}

/// Of this process, in MB: what lies in memory, without the pages that others share.
double OwnMemory()
{
    std::ifstream statm{"/proc/self/statm"}; // proc(5): size, resident, shared … in pages
    double size = 0;
    double resident = 0;
    double shared = 0;
    statm >> size >> resident >> shared;
    return (resident - shared) * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}

/// A world with that many levels beside the original configuration.
struct World {
    explicit World(bool full) : session{box.host, box.machine, list, box.session.programFolder}
    {
        box.MakeTrle();
        box.MakeBackupAndArchive();
        session.preferences = box.session.preferences;
        session.archive.header = box.session.archive.header;
        session.archive.levels =
            full ? ManyLevels(box.session.archive.levels.front()) : box.session.archive.levels;
    }

    testing::World box;
    WindowLevelList list;
    Session session;
};

/// The list of addresses from its file to the painted window, and the first key of a search, which
/// looks through all of it.
void MeasureAddresses(Session& session)
{
    constexpr const char* sorted[] = {"Sorted by rating", "Levels and Reviews", "Language: English",
                                      "Walkthroughs with pictures"};
    UrlList list;
    for (int i = 0; i < manyAddresses; ++i)
        list.records.push_back({"https://levels.example/all/level" + std::to_string(i) + ".html",
                                "Site " + std::to_string(i) + " - " + sorted[i % 4], UrlKindLevels,
                                false});
    if (!SaveUrlList(UrlListPath(session.Folders()), list))
        std::exit(1);
    std::vector<double> shown;
    std::vector<double> searched;
    for (int round = 0; round < pairs; ++round) {
        std::unique_ptr<SitiDialog> window;
        shown.push_back(Milliseconds([&] {
            window = std::make_unique<SitiDialog>(session, UrlKindLevels, nullptr);
            window->show();
            QCoreApplication::processEvents();
            window->repaint();
        }));
        auto* search = window->findChild<QLineEdit*>(QStringLiteral("Text_Search"));
        searched.push_back(Milliseconds([&] {
            search->setText(QStringLiteral("pictures"));
            window->repaint();
        }));
        window->hide();
    }
    Print("addresses_shown", Median(shown), "ms");
    Print("addresses_searched", Median(searched), "ms");
    Print("addresses_shown_and_searched", Median(shown) + Median(searched), "ms");
}

/// From the first question for each cover of a screen full of them until all are there.
double ShowCovers(testing::World& box, const Path& shelf)
{
    CoverCache covers{shelf};
    covers.places = [&](LevelCode code) {
        return CoverPlaces{box / ("covers/" + std::to_string(code)), {}, {}};
    };
    int came = 0;
    covers.came = [&](LevelCode) { ++came; };
    return Milliseconds([&] {
        for (LevelCode code = 0; code < coversOfAScreen; ++code)
            (void)covers.Cover(code);
        while (came < coversOfAScreen)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    });
}

/// Screen-shots as the game's players have them, bitmaps and jpegs by turns.
void MeasureCovers(testing::World& box)
{
    Picture picture{1024, 768, {}};
    for (int i = 0; i < picture.width * picture.height * 3; ++i)
        picture.rgb.push_back(static_cast<std::uint8_t>(i * 31 >> (i % 7)));
    const std::string bitmap = EncodeBitmap(picture);
    const std::string jpeg = *EncodeJpeg(picture);
    for (int code = 0; code < coversOfAScreen; ++code)
        box.Write("covers/" + std::to_string(code) + (code % 2 == 0 ? "/a.bmp" : "/a.jpg"),
                  code % 2 == 0 ? bitmap : jpeg);
    std::vector<double> cold;
    std::vector<double> kept;
    for (int round = 0; round < pairs; ++round) {
        const Path shelf = box / ("shelf" + std::to_string(round));
        cold.push_back(ShowCovers(box, shelf));
        kept.push_back(ShowCovers(box, shelf));
    }
    Print("covers_cold", Median(cold), "ms");
    Print("covers_kept", Median(kept), "ms");
}

/// The window of a run of its own, as a person meets it: fonts and style are not there yet. In
/// milliseconds, and the memory that it takes in MB.
std::pair<double, double> OpenInRunOfItsOwn(const QString& program, const char* what)
{
    QProcess run;
    run.start(program, {QString::fromLatin1(what)});
    run.waitForFinished();
    const QList<QByteArray> words = run.readAllStandardOutput().trimmed().split(' ');
    bool isNumber = words.size() == 2;
    const double time = isNumber ? words[0].toDouble(&isNumber) : 0;
    const double memory = isNumber ? words[1].toDouble(&isNumber) : 0;
    if (!isNumber) {
        std::fputs("no measurement\n", stderr);
        std::exit(1);
    }
    return {time, memory};
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    QApplication::setStyle(QStringLiteral("Fusion"));
    const std::string_view what = argc > 1 ? argv[1] : "";
    if (what == openEmpty || what == openFull) {
        World world{what == openFull};
        std::unique_ptr<MainWindow> window;
        const double before = OwnMemory();
        const double time = Milliseconds([&] { window = Open(world.session, world.list); });
        std::printf("%.3f %.3f\n", time, OwnMemory() - before);
        return 0;
    }

    std::vector<double> empty;
    std::vector<double> full;
    std::vector<double> more;
    for (int pair = 0; pair < pairs; ++pair) {
        const auto [emptyTime, emptyMemory] =
            OpenInRunOfItsOwn(QApplication::applicationFilePath(), openEmpty);
        const auto [fullTime, fullMemory] =
            OpenInRunOfItsOwn(QApplication::applicationFilePath(), openFull);
        empty.push_back(emptyTime);
        full.push_back(fullTime);
        more.push_back(fullMemory - emptyMemory);
    }
    Print("window_open_empty", Median(empty), "ms");
    Print("window_open_10000", Median(full), "ms");
    Print("window_open_ratio", Median(full) / Median(empty), "x");
    Print("window_open_more_memory", Median(more), "MB");
    World world{true};
    const auto window = Open(world.session, world.list);
    MeasureSearch(*window);
    MeasureAddresses(world.session);
    MeasureCovers(world.box);
    MeasureSort(*window); // after it the savegames of all levels are counted for a while
    return 0;
}
