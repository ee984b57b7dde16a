#pragma once

#include <chrono>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

/// What the practice folder's stand-ins for the Level Editor's programs share. They are built for
/// Windows too, so all of it stands on the standard library, and names stay paths, which hold any
/// letter on both.
namespace stand_in
{

using Place = std::filesystem::path;

/// How a program is started again, as if by somebody else.
inline constexpr std::string_view lateWord = "--late";
inline constexpr std::string_view stayWord = "--stay";

/// What a person reads of any of them.
inline constexpr const char* notFound = "ERROR: Unable to find file ";
inline constexpr const char* notWritten = "ERROR: Unable to write ";

inline std::string Shown(const Place& place)
{
    const auto text = place.u8string();
    return {text.begin(), text.end()};
}

inline std::string Folded(std::string text)
{
    for (char& letter : text)
        if (letter >= 'A' && letter <= 'Z')
            letter = static_cast<char>(letter + ('a' - 'A'));
    return text;
}

/// The file or folder of that name, whose parts are parted by backslashes or slashes, however it is
/// spelled; as given where there is none.
inline Place Spelled(const Place& folder, std::string name)
{
    Place found = folder;
    for (char& letter : name)
        if (letter == '\\')
            letter = '/';
    for (const Place& part : Place{std::u8string{name.begin(), name.end()}}) {
        std::error_code failure;
        const Place above = found;
        found /= part;
        if (std::filesystem::exists(found, failure))
            continue;
        for (const auto& entry : std::filesystem::directory_iterator{above, failure})
            if (Folded(Shown(entry.path().filename())) == Folded(Shown(part)))
                found = entry.path();
    }
    return found;
}

inline std::optional<std::string> BytesOf(const Place& file)
{
    std::ifstream stream{file, std::ios::binary};
    if (!stream)
        return std::nullopt;
    return std::string{std::istreambuf_iterator<char>{stream}, {}};
}

inline bool Write(const Place& file, std::string_view bytes)
{
    std::ofstream stream{file, std::ios::binary | std::ios::trunc};
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return static_cast<bool>(stream.flush());
}

/// The lines of a text, without blanks at their ends.
inline std::vector<std::string> LinesOf(const std::string& text)
{
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        std::string line = text.substr(at, end - at);
        line.erase(line.find_last_not_of(" \t\r") + 1);
        lines.push_back(std::move(line));
        at = end + 1;
    }
    return lines;
}

/// What stands behind `tag` in each line that begins with it.
inline std::vector<std::string> ValuesOf(const std::string& text, const std::string& tag)
{
    std::vector<std::string> values;
    for (const std::string& line : LinesOf(text))
        if (Folded(line.substr(0, tag.size())) == tag)
            values.push_back(line.substr(tag.size()));
    return values;
}

/// The exit code of a program that did not do it.
inline int Fail(const char* words, const std::string& subject = {})
{
    std::cout << words << subject << std::endl;
    return 1;
}

inline void Rest(std::chrono::seconds time)
{
    std::this_thread::sleep_for(time);
}

/// Starts this program again with those words, and does not wait for it.
inline void StartBeside(const Place& program, std::string_view first,
                        const std::vector<Place>& words)
{
#ifdef _WIN32
    std::wstring command =
        L"start \"\" /b \"" + program.wstring() + L"\" " + Place{first}.wstring();
    for (const Place& word : words)
        command += L" \"" + word.wstring() + L"\"";
    (void)_wsystem(command.c_str());
#else
    const auto quoted = [](const std::string& text) { return " '" + text + "'"; };
    std::string command = quoted(program.string()) + ' ' + std::string{first};
    for (const Place& word : words)
        command += quoted(word.string());
    if (std::system((command + " &").c_str()) != 0)
        std::cout << "Unable to start again\n";
#endif
}

/// How a program can be made to behave, by the lines `act=WORD` of what it is given (behind a `;`
/// where that is the sign of a comment).
///
///     hang         waits for an hour        nothing   ends without a result
///     print N      prints N bytes           empty     writes results of no bytes
///     crash        ends by a signal         half      writes half of its last result, and crashes
///     exit N       ends with N at once      fill      its result has no end
///     later        another process does it, one second after this one ended
///     stay         leaves a process behind, for an hour
class Acts
{
public:
    Acts() = default;
    explicit Acts(const std::string& text)
    {
        for (const char* tag : {"act=", ";act="})
            for (const std::string& value : ValuesOf(text, tag))
                acts_.push_back(value);
    }

    [[nodiscard]] bool Has(std::string_view act) const { return Find(act) != nullptr; }

    /// What comes ahead of the work. False when there is to be no result.
    [[nodiscard]] bool Begin(const Place& program, const std::vector<Place>& words) const
    {
        const bool late = !words.empty() && words.front() == lateWord;
        if (const std::string* print = Find("print"))
            Print(NumberIn(*print));
        if (Has("hang"))
            Rest(std::chrono::hours{1});
        if (Has("crash"))
            std::abort();
        if (const std::string* code = Find("exit"))
            std::exit(static_cast<int>(NumberIn(*code)));
        if (Has("stay"))
            StartBeside(program, stayWord, {});
        if (late)
            Rest(std::chrono::seconds{1});
        else if (Has("later"))
            StartBeside(program, lateWord, words);
        return !Has("nothing") && (late || !Has("later"));
    }

    /// Writes a result, as the acts would have it.
    [[nodiscard]] bool WriteResult(const Place& file, std::string_view bytes) const
    {
        if (Has("empty"))
            return Write(file, {});
        if (Has("half")) {
            (void)Write(file, bytes.substr(0, bytes.size() / 2));
            std::abort();
        }
        if (Has("fill")) {
            std::ofstream stream{file, std::ios::binary};
            while (stream << std::string(1 << 20, 'x'))
                ;
            return false;
        }
        return Write(file, bytes);
    }

private:
    [[nodiscard]] const std::string* Find(std::string_view act) const
    {
        for (const std::string& found : acts_)
            if (found.substr(0, found.find(' ')) == act)
                return &found;
        return nullptr;
    }
    static unsigned long NumberIn(const std::string& act)
    {
        const std::size_t blank = act.find(' ');
        return blank == std::string::npos ? 0 : std::strtoul(act.c_str() + blank, nullptr, 10);
    }
    static void Print(unsigned long count)
    {
        const std::string line(79, '.');
        for (unsigned long printed = 0; printed < count; printed += 80)
            std::cout << line << '\n';
    }

    std::vector<std::string> acts_;
};

/// Walks into a program's work with its own place and its words. One that was started to stay does
/// nothing else. What the standard library throws ends it with 1.
template <class Letter, class Work> int Main(int count, Letter** words, Work work)
{
    try {
        const std::vector<Place> all(words, words + count);
        const Place program = std::filesystem::absolute(all.at(0));
        if (count > 1 && all[1] == stayWord) {
            Rest(std::chrono::hours{1});
            return 0;
        }
        return work(program, std::vector<Place>(all.begin() + 1, all.end()));
    } catch (const std::exception& failure) {
        std::cout << failure.what() << '\n';
        return 1;
    }
}

} // namespace stand_in

/// The program's entry: `STAND_IN_MAIN(Work)`, where Work takes its place and its words.
#ifdef _WIN32
#define STAND_IN_MAIN(work)                                                                        \
    int wmain(int count, wchar_t** words)                                                          \
    {                                                                                              \
        return stand_in::Main(count, words, work);                                                 \
    }
#else
#define STAND_IN_MAIN(work)                                                                        \
    int main(int count, char** words)                                                              \
    {                                                                                              \
        return stand_in::Main(count, words, work);                                                 \
    }
#endif
