#pragma once

#include "session/host.h"

#include <QString>

class QWidget;

namespace kestrova
{

/// Asks, tells and shows in boxes of the desktop, over whatever window is on top.
class WindowHost : public Host
{
public:
    void Tell(Tone tone, const std::string& text, const std::string& reason = {},
              const std::string& details = {}) override;
    bool AskYesNo(const std::string& text, Consent consent = Consent::Ordinary) override;
    bool AskOkCancel(const std::string& text) override;
    bool AskToGoOn(const std::string& text) override;
    YesNoCancel AskYesNoCancel(const std::string& text) override;
    YesNoCancel AskEither(const std::string& text, Message first, Message second,
                          YesNoCancel safe) override;
    std::optional<std::string> AskText(const std::string& text, const std::string& suggestion,
                                       const std::string& title = {}) override;
    std::optional<Path> ChooseFolder(const std::string& title, const Path& start) override;
    std::optional<Path> ChooseOpenFile(const std::string& title, const std::string& filter,
                                       const Path& start) override;
    std::vector<Path> ChooseOpenFiles(const std::string& title, const std::string& filter,
                                      const Path& start) override;
    std::optional<Path> ChooseSaveFile(const std::string& title, const std::string& filter,
                                       const Path& start, const std::string& suggestion) override;
    std::unique_ptr<ProgressScope> BeginProgress(ProgressWindow window,
                                                 const std::string& text) override;
};

/// The window that a new one belongs to: the modal one on top, otherwise the main window.
QWidget* TopWindow();

/// `Zip files (*.zip)|*.zip` as the desktop's choosers want it, in lower and in upper case; every
/// file can be chosen too, by one row.
QString ChooserFilter(const std::string& filter);

} // namespace kestrova
