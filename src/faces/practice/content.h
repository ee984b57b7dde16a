#pragma once

#include "words/message.h"

#include <span>

/// What the practice folder is made of, as tables.
namespace kestrova
{

enum class Content {
    GameData,    ///< `size` thousands of bytes
    Tune,        ///< `size` tenths of a second
    Script,      ///< with the level's name
    ScriptOf,    ///< compiled of the row `text`
    LoadPicture, ///< with the level's name
    Text,        ///< of the row `text`
    Language,    ///< the same with a binary head
    Jpeg,        ///< another view, without a name
    Bitmap,
    Sample, ///< `size` tenths of a second
    Silence ///< an mp3 of `size` frames
};

struct PracticeItem {
    std::string_view file;
    Content content;
    unsigned size = 0;
    Message text = Message{};
};

struct PracticeLevel {
    Message name;
    int style; ///< of its pictures
    bool alsoZip;
    std::span<const PracticeItem> items;
};

/// The Level Editor's folder, its game and music left out.
const PracticeLevel& PracticeOriginal();
std::span<const PracticeLevel> PracticeLevels();

/// The waves that a complete Level Editor brings.
inline constexpr unsigned practiceTunes = 54;
/// The thousands of bytes that the items of the first level come to, for scaling it.
inline constexpr unsigned bigLevelSize = 100'000;

} // namespace kestrova
