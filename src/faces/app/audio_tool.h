#pragma once

#include "audio/wave_header.h"
#include "session/session.h"

/// The audio tool: files are gathered in a folder of the program's own and converted from there.
namespace kestrova
{

enum class AudioToolMode { Decode, Encode, Convert };

class AudioTool
{
public:
    AudioTool(Session& session, AudioToolMode mode);

    /// Makes the work folder, empty. False, told, when that cannot be.
    bool Open();
    /// Removes the work folder.
    void Leave();

    [[nodiscard]] AudioToolMode Mode() const { return mode_; }
    [[nodiscard]] bool ToMp3() const { return mode_ == AudioToolMode::Encode; }
    /// What the gathered files end with.
    [[nodiscard]] std::string Extension() const;

    struct Row {
        std::string name;
        std::string text; ///< the name and what the file holds
    };
    /// In listing order, as they were at the last change.
    [[nodiscard]] const std::vector<Row>& Rows() const { return rows_; }
    /// `2 files (84 Kb)`
    [[nodiscard]] std::string SizeText() const;
    [[nodiscard]] const Path& Target() const { return target_; }

    /// Choosers; what is not of the mode's kind is passed over.
    void AddFile();
    void AddFolder();
    /// What was dropped on the window: files, and folders with the files in them.
    void AddPaths(const std::vector<Path>& paths);
    /// A row that is none: nothing is selected.
    void Remove(std::size_t row);
    void Listen(std::size_t row);
    void BrowseTarget();

    /// Converts all into the target folder; mp3 by the session's settings. True when the person
    /// wants to leave, the work folder then being gone.
    bool Convert(AudioKind kind);

private:
    std::vector<Path> SoundsIn(const Path& folder);
    bool Take(const std::vector<Path>& files);
    void Refresh();

    Session& session_;
    AudioToolMode mode_;
    Path work_;
    Path target_;
    std::vector<Row> rows_;
    std::vector<Path> origins_; ///< where what was gathered came from
    double size_ = 0;
};

} // namespace kestrova
