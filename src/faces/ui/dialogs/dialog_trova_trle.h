#pragma once

#include "editor/find_trle.h"

#include <QDialog>

namespace kestrova
{

class ElidedLabel;
enum class SetupFrom;

/// `Dialog_TrovaTrle`: accepted when a valid folder stands in the preferences.
class FindTrleDialog : public QDialog
{
public:
    FindTrleDialog(Session& session, TrleFinder& finder, QWidget* parent);

    /// The closing of the window is the person's "I've not it".
    void reject() override;

private:
    template <class Work> void Run(Work work);
    QWidget* MakeOffer(const char* frame, const char* note, const char* button);
    /// What was set up stands in the window then, to be taken with Ok.
    void SetUp(SetupFrom from);
    void ShowFolder();

    Session& session_;
    TrleFinder& finder_;
    ElidedLabel* path_;
};

} // namespace kestrova
