#pragma once

#include <QIcon>

namespace kestrova
{

enum class Drawing {
    Play,
    Search,
    Previous,
    Next,
    Zoom,
    Here,
    Page,
    Folder,
    Save,
    Leave,
    Add,
    Pencil,
    Bin,
    PackOut,
    Undo,
    Redo,
    Globe,
    PutAway,
    BringBack,
    Clock,
    Camera,
    Disc,
    Gate,
    Parcel,
    Sliders,
    Question,
    Rows,
    Covers,
};

/// Drawn in the palette's own colours at whatever size is asked for, so that it fits light and
/// dark, and every scale.
QIcon DrawnIcon(Drawing drawing);
/// The program's own picture; drawn plainly when the share folder is not there.
QIcon ProgramIcon();

} // namespace kestrova
