#pragma once

#include "archive/archive_parts.h"
#include "words/message.h"

namespace kestrova
{

/// The game designer's data of one level while they are edited: what `Dialog_Autore` shows and
/// does.
class AuthorInfos
{
public:
    struct Addresses {
        std::vector<std::string> items;
        std::optional<std::size_t> selected;
    };

    /// `index` is the level's place in the archive.
    AuthorInfos(const ArchiveParts& parts, std::size_t index);

    std::string name;
    std::string note;
    Addresses emails; ///< the window moves `selected`
    Addresses sites;

    /// What the buttons beside a list do: ask for a new address, for another text of the selected
    /// one, remove the selected one.
    void NewEmail();
    void NewSite();
    void ChangeEmail();
    void ChangeSite();
    void DeleteEmail();
    void DeleteSite();
    /// Opens the selected address with the desktop's program for it. A site that came with a level
    /// opens as nothing but a web address; one without a scheme counts as http.
    void SendMail();
    void VisitSite();

    /// Stores mails, sites, name and note in the level's record, in this order, and saves the
    /// archive. False, in words, at the first that its field cannot hold: what was stored before it
    /// stays in the record, in memory. A value that would fill its field exactly is refused too.
    bool Store();

private:
    /// What was stored can be undone.
    void NoteStored(const LevelRecord& before);
    void Add(Addresses& list, Message question);
    void Change(Addresses& list, Message question);
    void Delete(Addresses& list);
    /// The selected text; nothing, and a message, when there is none.
    std::optional<std::string> Selected(const Addresses& list, Message refusal);

    ArchiveParts parts_;
    std::size_t index_;
};

} // namespace kestrova
