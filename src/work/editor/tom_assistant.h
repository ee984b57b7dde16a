#pragma once

#include "core/files.h"
#include "session/folders.h"
#include "session/host.h"
#include "session/machine.h"
#include "tools/tools.h"

#include <optional>

namespace kestrova
{

/// What the assistant needs of a session.
struct AssistantParts {
    Host& host;
    Machine& machine;
    Folders folders;
    Tools tools;
};

/// Links the tom files of a level with wads: by the person's choice, or as a readme tells. The
/// state of a window, and its steps; each tells its own failure. What was linked stays in the
/// level's folder in any case.
class TomAssistant
{
public:
    TomAssistant(AssistantParts parts, Path workFolder);

    /// Reads the level's folder. False, with words, when it could not be read, or when there is
    /// nothing to do: the window does not open then.
    bool Open();

    [[nodiscard]] std::string HelpText() const;
    /// Names of the documents, and the one that is chosen.
    [[nodiscard]] const std::vector<Path>& Documents() const { return documents_; }
    std::optional<std::size_t> document;
    /// The tom files that can be linked, and the chosen one.
    [[nodiscard]] const std::vector<Path>& Toms() const { return toms_; }
    std::optional<std::size_t> tom;
    /// The sets that there are, by one wad of each; the chosen one.
    [[nodiscard]] const std::vector<Path>& Wads() const { return wads_; }
    std::optional<std::size_t> wads;
    /// `city.*`, as a set is shown and linked.
    [[nodiscard]] static std::string SetOf(const Path& wad);

    /// Only what needs work is shown, which is so at first.
    [[nodiscard]] bool ShowsEssential() const { return essential_; }
    void ShowEssential(bool essential);

    void ReadChosen();
    void Perform();
    /// Links as the chosen document tells, when the person agrees; asks for leave to read it.
    void Analyse();
    /// The same of any document, without that question.
    void AnalyseDocument(const Path& file);
    void Finish();
    void Cancel();

    /// The window is over; `IsDone` then says whether each tom file has its wads.
    [[nodiscard]] bool IsOver() const { return over_; }
    [[nodiscard]] bool IsDone() const { return done_; }

    /// Links one tom file. False, with words, when it could not be done.
    bool Link(const std::string& tomName, const std::string& wadsPattern);

private:
    /// False once the window is over.
    bool Refresh();
    bool AllHaveWads();
    [[nodiscard]] Result<std::vector<Path>> TomsWithoutWads() const;
    bool LinkAsTold(const std::vector<Path>& missing, const Path& source);
    void ChooseDocument();

    AssistantParts parts_;
    Path workFolder_;
    std::vector<Path> documents_;
    std::vector<Path> toms_;
    std::vector<Path> wads_;
    bool essential_ = true;
    bool operationDone_ = false;
    bool analysisTried_ = false;
    bool over_ = false;
    bool done_ = false;
};

} // namespace kestrova
