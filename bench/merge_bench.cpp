#include "editor/script_files.h"
#include "editor/wad_scripts.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

/// How long new levels need to come into a script of 2,000 levels and its strings, from reading the
/// person's files to writing them: the median of 20 levels at once, as a `name value unit` line.

using namespace kestrova;

namespace
{

constexpr int mergeRuns = 15;
constexpr int knownLevels = 2000;
constexpr int newLevels = 20;

std::string Block(const std::string& name)
{
    std::string block = "[Level]\r\nName= Level " + name + "\r\n";
    for (int line = 0; line < 20; ++line)
        block += "Puzzle= " + std::to_string(line) + ", Some thing,$0000,$0300,$0000,$0002\r\n";
    return block + "Level= DATA\\" + name + ",101\r\n";
}

std::string Strings(const std::string& stem, int count)
{
    std::string text = "[Strings]\r\n";
    for (int i = 0; i < count; ++i)
        text += "Level " + stem + std::to_string(i) + "\r\n";
    return text + "[PSXStrings]\r\n";
}

} // namespace

int main(int argc, char** argv)
{
    const Path folder = argc > 1 ? argv[1] : ".";
    std::string known;
    std::string fresh;
    std::vector<std::string> tr4Names;
    for (int i = 0; i < knownLevels; ++i)
        known += Block("known" + std::to_string(i));
    for (int i = 0; i < newLevels; ++i) {
        fresh += Block("new" + std::to_string(i));
        tr4Names.push_back("new" + std::to_string(i) + ".tr4");
    }
    const auto newScript = ParseScriptText(fresh);
    const auto newStrings = ParseLanguageText(Strings("new", newLevels));
    const auto knownScript = ParseScriptText(known);
    const auto knownStrings = ParseLanguageText(Strings("known", knownLevels));
    if (!newScript || !newStrings || !knownScript || !knownStrings)
        return EXIT_FAILURE;

    std::vector<double> times; // ms
    for (int run = 0; run < mergeRuns; ++run) {
        if (!WriteScriptFile(folder / "script.txt", *knownScript) ||
            !WriteLanguageFile(folder / "english.txt", *knownStrings))
            return EXIT_FAILURE;
        const auto start = std::chrono::steady_clock::now();
        auto script = ReadScriptFile(folder / "script.txt");
        auto strings = ReadLanguageFile(folder / "english.txt");
        if (!script || !strings)
            return EXIT_FAILURE;
        OwnScripts own{std::move(*script), std::move(*strings), {}};
        const auto report = MergeNewLevels(*newScript, *newStrings, tr4Names, {}, own);
        if (!report.withoutLevel.empty() || !report.withoutName.empty() ||
            own.script.levels.size() != knownLevels + newLevels ||
            !WriteScriptFile(folder / "script.txt", own.script) ||
            !WriteLanguageFile(folder / "english.txt", own.language))
            return EXIT_FAILURE;
        times.push_back(
            std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
                .count());
    }
    std::sort(times.begin(), times.end());
    std::printf("merge_2000 %.3f ms\n", times[times.size() / 2]);
    return EXIT_SUCCESS;
}
