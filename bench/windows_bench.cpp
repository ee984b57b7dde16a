#include "support/sandbox.h"
#include "ui/main_window.h"

#include <QApplication>
#include <QLineEdit>
#include <QListView>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>

/// How long the main window needs to open, empty and with 10,000 levels, and to show the list again
/// after a key of the search. Medians of pairs that take turns, as `name value unit` lines.

using namespace kestrova;

namespace
{

constexpr int pairs = 5;
constexpr int manyLevels = 10'000;

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
        // Not in the order of the list, and names as long as real ones.
        level.levelName = "Adventure " + std::to_string(i * 7919 % manyLevels) + ": the lost city";
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
        for (const QChar letter : QStringLiteral("city 9731")) {
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

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    QApplication::setStyle(QStringLiteral("Fusion"));
    testing::Sandbox box;
    box.MakeTrle();
    box.MakeBackupAndArchive();
    WindowLevelList list;
    Session session{box.host, box.machine, list, box.session.programFolder};
    session.preferences = box.session.preferences;
    session.archive = box.session.archive;
    const std::vector<LevelRecord> few = box.session.levels;
    const std::vector<LevelRecord> many = ManyLevels(few.front());

    session.levels = few;
    Open(session, list); // fonts and style are read once
    std::vector<double> empty;
    std::vector<double> full;
    std::unique_ptr<MainWindow> window;
    for (int pair = 0; pair < pairs; ++pair) {
        session.levels = few;
        window.reset();
        empty.push_back(Milliseconds([&] { window = Open(session, list); }));
        session.levels = many;
        window.reset();
        full.push_back(Milliseconds([&] { window = Open(session, list); }));
    }
    Print("window_open_empty", Median(empty), "ms");
    Print("window_open_10000", Median(full), "ms");
    Print("window_open_ratio", Median(full) / Median(empty), "x");
    MeasureSearch(*window);
    return 0;
}
