#pragma once

#include "formats/swap_journal.h"
#include "swap/swap_parts.h"

#include <unordered_map>

/// The sounds that levels left in the Level Editor's folder under a compact backup.
namespace kestrova
{

/// Settles them when a full backup is made: they are no originals, and what they replaced was kept
/// in the vault.
class SoundsLeft
{
public:
    explicit SoundsLeft(const SwapParts& parts);

    /// Fails while it cannot be told what they are.
    Status Find();

    /// The original that belongs in the place of `file`; `file` itself when no level left it.
    [[nodiscard]] Path OriginalOf(const Path& file) const;

    /// Now that the backup has every original, they go and what they replaced comes back. What
    /// cannot go yet stays noted, and the next start tries again.
    void Settle();

private:
    struct Left {
        OwnedFile listed;
        Path relative;
        Path place;
    };
    SwapParts parts_;
    Path trle_;
    OwnerRecord owner_;
    std::vector<Left> files_;
    std::unordered_map<std::string, std::size_t> byPlace_; ///< of `files_`, by folded path
};

} // namespace kestrova
