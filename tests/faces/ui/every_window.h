#pragma once

#include "editor/find_trle.h"
#include "intake/installed_place.h"
#include "saves/savegame_list.h"
#include "ui/window_world.h"

#include <QPalette>
#include <functional>

namespace kestrova::testing
{

/// Every window of the program over one world whose names are as long as they come.
class EveryWindow : public WindowWorld
{
public:
    EveryWindow();

    /// Shows one window after the other, each page of it for itself; `page` is part of a file's
    /// name.
    using Look = std::function<void(QWidget& window, const std::string& page)>;
    void Each(const Look& look);

private:
    void LookAt(QWidget& dialog);
    void LookAtPages(QWidget& window);
    void StartAndSettings();
    void Levels();
    void SavegamesAndShots();
    void Sources();
    void Sounds();
    void Discs();
    void Others();

    LevelCode level_ = originalCode;
    Look look_;
};

/// The palettes that a desktop may have.
QPalette LightPalette();
QPalette DarkPalette();
QPalette ContrastPalette();

/// While it lives every window has that palette, or letters so many times as large.
class Appearance
{
public:
    explicit Appearance(const QPalette& palette, double letters = 1);
    ~Appearance();
    Appearance(const Appearance&) = delete;
    Appearance& operator=(const Appearance&) = delete;

private:
    QPalette palette_;
    QFont font_;
};

} // namespace kestrova::testing
