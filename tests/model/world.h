#pragma once

#include "history/standing.h"
#include "program.h"
#include "world/world.h"

#include <map>
#include <optional>
#include <random>
#include <set>

/// A small model of what must hold, beside the real folders: two archives that are used by turns,
/// their levels, and every file that the player made.
namespace kestrova::testing
{

/// A level as the player knows it; its name is its own in both archives.
struct ModelLevel {
    std::string archive; ///< "a" or "b"; empty for the original configuration
    int code = 0;
    std::map<std::string, std::string> files; ///< below the Level Editor's folder, exact
};

enum class Treasure {
    State, ///< a savegame, note or shot: belongs to one level
    Own    ///< any other file of the player in the Level Editor's folder
};
struct ModelTreasure {
    Treasure kind = Treasure::State;
    std::string owner; ///< the level's name; empty for the original configuration
};

class ModelWorld
{
public:
    explicit ModelWorld(std::uint32_t seed);

    /// One random step, mended afterwards, and everything compared with the model. What does not
    /// hold is a failure of the running test.
    void Step();
    /// What the last steps were, for a failing test's message.
    [[nodiscard]] std::string Trail() const;

private:
    using Words = std::vector<std::string>;

    int Roll(int sides) { return static_cast<int>(random_() % static_cast<unsigned>(sides)); }
    Trouble RandomTrouble();
    Outcome Run(const Words& words, const Trouble& trouble = {});
    /// Runs without trouble what must succeed.
    Outcome Must(const Words& words);
    std::string PickLevel(bool originalToo);
    [[nodiscard]] std::string Standing() const;

    void AddLevel(const Trouble& trouble);
    void RemoveLevel(const Trouble& trouble);
    void Play(const Trouble& trouble);
    void Original(const Trouble& trouble);
    void Savegames(const Trouble& trouble);
    void Edit(const Trouble& trouble);
    void Undo(const Trouble& trouble);
    void Compress(const Trouble& trouble);
    void LoadOther(const Trouble& trouble);
    void ReadAgain(const Trouble& trouble);
    void GameSaves();
    void PlayerWorks();

    /// By level: names and contents of the player's files in its slots.
    using Slots = std::map<std::string, std::set<std::pair<std::string, std::string>>>;
    enum class Store {
        Counts,       ///< what could not be brought in waits there
        ButOfStanding ///< that of the level that stands in the folder holds what was there once
    };
    [[nodiscard]] Slots SlotsOfAll(Store store) const;
    void ExpectSameSlots(const Slots& before);

    void LearnLevels(const std::string& archive);
    void Forget(const std::string& file);
    void Mend();
    void ExpectNothingLost();
    void NoteStrangers(const std::string& said);
    void ExpectStateWhereItBelongs();
    void ExpectInstalled(const std::string& level);
    void ExpectOriginal();
    void ExpectNoLeftovers();

    World box_;
    Path scratch_;
    std::mt19937 random_;
    std::map<std::string, ModelLevel> levels_;       ///< by name
    std::map<std::string, ModelLevel> removed_;      ///< what an undo may bring back
    std::map<std::string, ModelTreasure> treasures_; ///< by content
    std::map<std::string, std::string> original_;
    std::string loaded_ = "a";
    int made_ = 0; ///< numbers everything that is made, so that no two contents are equal
    /// Files of another level that the program said it could not take out of the folder.
    std::set<std::string> strangers_;
    std::vector<std::string> trail_;
};

} // namespace kestrova::testing
