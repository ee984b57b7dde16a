#pragma once

#include "session/host.h"

#include <optional>
#include <string>
#include <vector>

namespace kestrova
{

/// The help's topics while one is looked for: what `Dialog_Indice` shows and does.
class HelpIndex
{
public:
    HelpIndex(Host& host, std::string_view help);

    /// The chosen item; the window moves it.
    std::optional<std::size_t> selected;

    /// Main topics or sub-topics; hits of the other list are dropped.
    void Show(bool main);
    [[nodiscard]] bool ShowsMain() const { return showsMain_; }
    /// In UTF-8, with their brackets.
    [[nodiscard]] const std::vector<std::string>& Items() const;
    /// How many items the list has, or the last search has found.
    [[nodiscard]] std::string Info() const;

    /// The first item that holds the text is the chosen one.
    void Find(const std::string& text);
    void Next();
    void Previous();
    /// The chosen topic; nothing, in words, without one.
    std::optional<std::string> Chosen();

private:
    Host& host_;
    std::vector<std::string> main_;
    std::vector<std::string> sub_;
    bool showsMain_ = true;
    std::size_t count_ = 0;
    std::vector<std::size_t> hits_;
    std::size_t hit_ = 0; ///< place among the hits
};

} // namespace kestrova
