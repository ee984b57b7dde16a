#pragma once

#include "app/audio_tool.h"
#include "session/operation.h"

#include <QDialog>

class QGroupBox;
class QLabel;
class QListWidget;
class QPushButton;
class QRadioButton;

namespace kestrova
{

class ElidedLabel;
class Mp3SettingsBox;

/// `Dialog_ConvertAudio`: decodes, encodes or converts sound files that are chosen or dropped.
class ConvertAudioDialog : public QDialog
{
public:
    ConvertAudioDialog(Session& session, AudioToolMode mode, QWidget* parent);

    /// False when there is no folder to work in; the person knows.
    bool Ready();
    /// The cancel button's way out; any other leads here too.
    void reject() override;

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    QGroupBox* MakeFiles();
    QGroupBox* MakeTarget();
    QGroupBox* MakeWave();
    void ShowAll();
    void Convert();
    [[nodiscard]] std::size_t ChosenRow() const;
    /// Work of the tool, and the window as it is then.
    template <class Work> void Do(Work work)
    {
        const Operation operation{session_};
        work();
        ShowAll();
    }

    Session& session_;
    AudioTool tool_;
    QListWidget* list_;
    QLabel* size_;
    QLabel* hint_;
    ElidedLabel* target_;
    QPushButton* convert_;
    Mp3SettingsBox* mp3_;
    QRadioButton* mono_ = nullptr;
    QRadioButton* adpcm_ = nullptr;
};

/// Shows the tool until the person leaves it.
void ShowAudioTool(Session& session, AudioToolMode mode, QWidget* parent);

} // namespace kestrova
