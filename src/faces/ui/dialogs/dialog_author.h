#pragma once

#include "publish/author_infos.h"

#include <QDialog>

class QComboBox;
class QGroupBox;
class QLineEdit;
class QPlainTextEdit;

namespace kestrova
{

/// `Dialog_Autore`: the game designer's data of one level.
class AuthorDialog : public QDialog
{
public:
    /// `index` is the level's place in the archive.
    AuthorDialog(Session& session, std::size_t index, QWidget* parent);

    void accept() override;
    void reject() override;

private:
    /// One button below a list: its name, and what it does to the list.
    struct Deed {
        const char* button;
        void (AuthorInfos::*run)();
    };
    QGroupBox* MakeAddresses(const char* frame, QComboBox& combo, AuthorInfos::Addresses& list,
                             std::initializer_list<Deed> deeds);
    static void ShowAddresses(QComboBox& combo, const AuthorInfos::Addresses& list);

    Session& session_;
    AuthorInfos infos_;
    const AuthorInfos shown_{infos_}; ///< as the window opened
    QLineEdit* name_;
    QPlainTextEdit* note_;
    QComboBox* emails_;
    QComboBox* sites_;
};

} // namespace kestrova
