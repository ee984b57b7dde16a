#include "editor/link_analysis.h"

#include "core/text.h"
#include "editor/wad_links.h"

#include <algorithm>
#include <map>

namespace kestrova
{

namespace
{

constexpr std::size_t windowBefore = 40; ///< letters
constexpr std::size_t windowSize = 80;
constexpr std::size_t noStem = static_cast<std::size_t>(-1);

/// Stems by their last letters, so that one walk back from a dot finds all that end there.
class StemTree
{
public:
    /// The first of equal stems counts.
    void Add(std::string_view folded, std::size_t number)
    {
        std::size_t at = 0;
        for (auto byte = folded.rbegin(); byte != folded.rend(); ++byte) {
            const auto [next, isNew] = nodes_[at].next.emplace(*byte, nodes_.size());
            at = next->second;
            if (isNew)
                nodes_.emplace_back();
        }
        if (!folded.empty() && nodes_[at].number == noStem)
            nodes_[at].number = number;
    }
    /// Calls `found` with the number of each stem that ends in front of the dot, and its bytes.
    template <class Found>
    void EndingAt(std::string_view text, std::size_t dot, const Found& found) const
    {
        std::size_t at = 0;
        for (std::size_t size = 1; size <= dot; ++size) {
            const auto next = nodes_[at].next.find(text[dot - size]);
            if (next == nodes_[at].next.end())
                return;
            at = next->second;
            if (nodes_[at].number != noStem)
                found(nodes_[at].number, size);
        }
    }

private:
    struct Node {
        std::map<char, std::size_t> next{};
        std::size_t number = noStem;
    };
    std::vector<Node> nodes_{1};
};

bool IsInsideLetter(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// The letters about the place at which a tom file's name begins.
std::string_view WindowAt(std::string_view text, std::size_t place)
{
    std::size_t begin = place;
    for (std::size_t letters = 0; begin > 0 && letters < windowBefore;)
        letters += IsInsideLetter(text[--begin]) ? 0 : 1;
    std::size_t end = begin;
    for (std::size_t letters = 0; end < text.size(); ++end)
        if (!IsInsideLetter(text[end]) && letters++ == windowSize)
            break;
    return text.substr(begin, end - begin);
}

class LinkSearch
{
public:
    LinkSearch(std::string_view foldedText, const std::vector<std::string>& toms,
               const std::vector<std::string>& wads)
        : text_(foldedText), toms_(toms), wads_(wads), links_(toms.size())
    {
        for (std::size_t i = 0; i < toms.size(); ++i)
            tomTree_.Add(FoldCase(toms[i]), i);
        for (std::size_t i = 0; i < wads.size(); ++i)
            wadTree_.Add(FoldCase(StripExtension(wads[i])), i);
    }

    /// The dot may end the name of a tom file.
    void LookAt(std::size_t dot)
    {
        tomTree_.EndingAt(text_, dot, [&](std::size_t tom, std::size_t size) {
            if (!links_[tom])
                links_[tom] = BestIn(WindowAt(text_, dot - size), tom);
        });
    }

    [[nodiscard]] std::vector<std::optional<std::size_t>> Links() const
    {
        // Names that differ by case alone are told of alike.
        std::unordered_map<std::string, std::size_t> firsts;
        std::vector<std::optional<std::size_t>> links;
        for (std::size_t i = 0; i < toms_.size(); ++i)
            links.push_back(links_[firsts.emplace(FoldCase(toms_[i]), i).first->second]);
        return links;
    }

private:
    [[nodiscard]] std::optional<std::size_t> BestIn(std::string_view window, std::size_t tom) const
    {
        const std::string key = toms_[tom] + '.';
        std::optional<std::size_t> best;
        std::size_t longest = 0;
        for (std::size_t dot = window.find('.'); dot != std::string_view::npos;
             dot = window.find('.', dot + 1))
            wadTree_.EndingAt(window, dot, [&](std::size_t wad, std::size_t /*size*/) {
                const std::size_t length = CommonPrefixLength(wads_[wad], key);
                if (best && (length < longest || (length == longest && wad >= *best)))
                    return;
                best = wad;
                longest = length;
            });
        return best;
    }

    std::string_view text_;
    const std::vector<std::string>& toms_;
    const std::vector<std::string>& wads_;
    StemTree tomTree_;
    StemTree wadTree_;
    std::vector<std::optional<std::size_t>> links_;
};

} // namespace

Result<std::vector<std::optional<std::size_t>>> FindLinks(std::string_view text,
                                                          const std::vector<std::string>& tomStems,
                                                          const std::vector<std::string>& wads,
                                                          const Heartbeat& heartbeat)
{
    constexpr std::size_t dotsBetweenBeats = 4096;
    const std::string folded = FoldCase(text);
    LinkSearch search{folded, tomStems, wads};
    std::size_t dots = 0;
    for (std::size_t dot = folded.find('.'); dot != std::string::npos;
         dot = folded.find('.', dot + 1)) {
        search.LookAt(dot);
        if (heartbeat && ++dots % dotsBetweenBeats == 0 && !heartbeat())
            return Failure{ErrorCode::Stopped};
    }
    return search.Links();
}

} // namespace kestrova
