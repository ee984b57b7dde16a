#pragma once

#include "formats/url_changes.h"
#include "online/url_update.h"

#include <functional>
#include <optional>

namespace kestrova
{

/// The list of web addresses while it is looked at and edited: what `Dialog_Siti` shows and does.
/// The file changes only in `Save`.
class UrlEditor
{
public:
    UrlEditor(Host& host, Machine& machine, const Folders& folders, UpdateServers servers);

    /// The kind that is shown; the window moves it, and `selected` with it.
    std::int32_t kind = UrlKindLevels;
    /// The chosen record's place in the list.
    std::optional<std::size_t> selected;

    [[nodiscard]] const UrlList& List() const { return list_; }
    [[nodiscard]] bool IsChanged() const { return changed_; }
    /// Why a list that is there could not be read; none where there is no list yet. The file stays
    /// beside the one that `Save` writes.
    [[nodiscard]] const std::optional<Failure>& NotRead() const { return notRead_; }
    /// Shows a kind; its first record is the chosen one.
    void Show(std::int32_t newKind);
    /// Shows only what holds this text, without regard to case, in the words that a person reads
    /// or in the address; all for an empty one. It stands for every kind.
    void Search(const std::string& text);
    /// Places of the shown records.
    [[nodiscard]] const std::vector<std::size_t>& Rows() const { return rows_; }

    /// What the buttons do. All of them ask, tell and refuse by themselves; True when it was done.
    void Add();
    void Change();
    bool Remove();
    void Copy(const std::function<void(const std::string&)>& toClipboard);
    bool Go();
    /// `showLine`: in the place of the address, while the list is on its way.
    bool Update(const std::function<void(const std::string&)>& showLine);
    /// The same for texts that are known. False when the person wants no double.
    bool AddRecord(const std::string& description, const std::string& url);
    bool ChangeRecord(const std::string& description, const std::string& url);

    /// False, in words, when the list could not be written: then the window stays.
    bool Save();
    /// False when the person wants to go on.
    bool MayLeave();

private:
    /// The chosen record; none, in words, without one.
    UrlRecord* Selected();
    /// The description as the list can hold it; none when the person does not want it so.
    std::optional<std::string> Storable(const std::string& description);
    bool AcceptsDouble(const UrlRecord& entry, const UrlDouble& twin);
    bool AcceptsDoubles(const UrlRecord& entry, std::optional<std::size_t> except);
    void FindRows();
    /// Of all of `rows_`.
    void FillTexts();
    /// Renames a file that could not be read aside.
    Status SetAside();

    Host& host_;
    Machine& machine_;
    Folders folders_;
    UpdateServers servers_;
    UrlList list_;
    std::vector<std::size_t> rows_;
    std::string search_; ///< folded
    /// Of the shown kind's records in their order, folded; filled by the first search.
    std::vector<std::string> texts_;
    bool changed_ = false;
    std::optional<Failure> notRead_;
};

} // namespace kestrova
