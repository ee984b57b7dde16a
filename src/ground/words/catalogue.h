#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace kestrova
{

/// The texts in another language, by the told English: gettext's compiled form (`.mo`), whose bytes
/// need not be trusted.
///
///     offset  bytes  what (numbers little-endian)
///     0       4      0x950412de
///     4       4      revision; major 0 or 1 (its upper half)
///     8       4      count of texts
///     12      4      where the table of told texts begins: a pair (length, offset) for each
///     16      4      where the table of translations begins: the same
///
/// A text ends with a zero byte that its length leaves out. The empty told text has the file's own
/// head lines as its translation.
class Catalogue
{
public:
    /// No value when the bytes are no catalogue, or a text of it does not lie in them.
    static std::optional<Catalogue> Read(std::string bytes);

    /// The text of the language; `told` itself when the catalogue has none. Lies in the catalogue,
    /// or is `told`.
    [[nodiscard]] std::string_view Of(std::string_view told) const;

private:
    std::unique_ptr<const std::string> bytes_; ///< where all of them lie, wherever their owner goes
    std::unordered_map<std::string_view, std::string_view> texts_;
};

/// From now on every text is shown by it, in all threads; null: in told English. It must stay as
/// long as the program runs.
void SpeakBy(const Catalogue* catalogue);
const Catalogue* SpokenCatalogue();

} // namespace kestrova
