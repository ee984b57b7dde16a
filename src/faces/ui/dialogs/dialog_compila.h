#pragma once

#include "editor/tom_compile.h"
#include "session/session.h"

#include <QDialog>

namespace kestrova
{

/// `Dialog_Compila`: a person compiles by hand while the Level Editor's folder is lent. Only its
/// buttons leave it, since one of them must give the folder back.
class CompilaDialog : public QDialog
{
public:
    CompilaDialog(Session& session, TomCompile& compile, QWidget* parent);

    /// Refused: Escape and the window's own close do nothing.
    void reject() override;

private:
    QLayout* MakeButtons();
    /// One step of the person's; the window goes once the folder is back.
    template <class Work> void Run(Work work);

    Session& session_;
    TomCompile& compile_;
};

/// Shows the window until the results are taken out, or the person gave up.
void ShowCompila(Session& session, TomCompile& compile, QWidget* parent);

} // namespace kestrova
