#pragma once

#include "session/host.h"

#include <unordered_map>
#include <vector>

/// Files whose other form (`.zl`, mp3, jpeg) would take the place of another file of the level.
/// Both stay as they are then, since neither can be made from the other, and the person hears of
/// it.
namespace kestrova
{

/// The names in one folder, without regard to case, while forms change there.
class NamesInUse
{
public:
    void Add(const std::string& name);
    /// How often the name was added, in any spelling.
    [[nodiscard]] int Uses(const std::string& name) const;

private:
    std::unordered_map<std::string, int> uses_; ///< by folded name
};

/// True when the stream holds the plain file's bytes: what a killed run leaves beside its source.
bool StreamHolds(const Path& stream, const Path& plain);

/// Names the files that stay as they are stored; nothing for an empty list.
void TellKeptForms(Host& host, const std::vector<std::string>& names);

} // namespace kestrova
