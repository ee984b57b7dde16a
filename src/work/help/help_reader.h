#pragma once

#include "formats/help_text.h"

#include <optional>
#include <string>
#include <vector>

namespace kestrova
{

/// The help while it is read: what `Dialog_Testo` shows and does. A letter of the text is a byte
/// here, so that places are those of the text.
class HelpReader
{
public:
    /// `tag`: the first thing that is looked for; a text without it opens at its beginning.
    HelpReader(std::string help, std::string tag);

    /// What the box for the search holds, in UTF-8. The window moves it.
    std::string search;

    [[nodiscard]] const std::string& Help() const { return help_; }
    /// The whole text as it is shown, in UTF-8: lines of enormous length, which no text view can
    /// hold, are broken.
    [[nodiscard]] std::string Text() const;
    /// Where a letter of the help stands in what is shown, and the other way round.
    [[nodiscard]] std::size_t ShownPlace(std::size_t place) const;
    [[nodiscard]] std::size_t PlaceOf(std::size_t shown) const;
    /// What is selected; nothing before the first hit.
    [[nodiscard]] const std::optional<HelpWord>& Selection() const { return selection_; }

    /// What the buttons do. Without a hit nothing changes.
    void Find();
    void Next();
    void Previous();
    /// A mouse selection at that place: the word there is selected and becomes what is searched.
    void Pick(std::size_t caret);
    /// A topic that the index gave.
    void Jump(const std::string& topic);

private:
    /// What is looked for, in the text's own letters; empty for what the text cannot hold.
    [[nodiscard]] std::string Wanted() const;
    void Select(std::optional<std::size_t> hit, std::size_t length);

    std::string help_;
    std::vector<std::size_t> breaks_; ///< places in front of which the shown text has a line end
    std::size_t foundAt_ = 0;
    std::optional<HelpWord> selection_;
};

} // namespace kestrova
