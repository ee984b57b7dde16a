#pragma once

#include "ui/main/level_view.h"

class QSettings;

namespace kestrova
{

/// How a person wants the library: remembered with the places of the windows.
struct LibrarySettings {
    LibraryLook look = LibraryLook::Rows;
    int coverWidth = usualCover;
    LibraryOrder order = LibraryOrder::Name;
    bool turned = false;
    LibraryFilter filter = LibraryFilter::All;
    std::string tag;
    ChosenColumns columns; ///< empty: as at the first start
};
void WriteLibrarySettings(QSettings& places, const LibrarySettings& settings);
/// What makes no sense is as at the first start.
LibrarySettings ReadLibrarySettings(const QSettings& places);

} // namespace kestrova
