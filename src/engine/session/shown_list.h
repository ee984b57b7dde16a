#pragma once

#include "core/names.h"
#include "formats/archive_file.h"

#include <optional>
#include <string>

namespace kestrova
{

/// The list of levels as some face shows it. The face without a list keeps just the selection.
class LevelList
{
public:
    virtual ~LevelList() = default;
    /// Rebuilds the list and the title from the session.
    virtual void Refresh() = 0;
    virtual void Select(LevelCode code) = 0;
    [[nodiscard]] virtual std::optional<LevelCode> Selected() const = 0;
    /// A line about what is going on, in place of the level's note, until the next refresh.
    virtual void ShowActivity(const std::string& text) = 0;
};

} // namespace kestrova
