#include "audio/sound_info.h"
#include "core/size_words.h"
#include "sandbox/sound_files.h"
#include "ui/desktop/progress_windows.h"
#include "ui/dialogs/dialog_convert_audio.h"
#include "ui/dialogs/dialog_set_mp3.h"
#include "window_world.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDropEvent>
#include <QListWidget>
#include <QMimeData>
#include <QRadioButton>
#include <QUrl>

namespace kestrova::testing
{

namespace
{

void Drop(QWidget& window, const QList<QUrl>& urls)
{
    QMimeData data;
    data.setUrls(urls);
    QDragEnterEvent enter{{5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier};
    QCoreApplication::sendEvent(&window, &enter);
    ASSERT_TRUE(enter.isAccepted());
    QDropEvent drop{{5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier};
    QCoreApplication::sendEvent(&window, &drop);
    QTest::qWait(20);
}

} // namespace

TEST(AudioWindow, WhatIsDroppedIsListedAndConverted)
{
    WindowWorld world;
    World& box = world.box;
    box.Write("music/one.wav", ToneWave({}, 3000));
    box.Write("music/a name that is much longer than seventeen columns.wav", ToneWave({}, 3000));
    std::filesystem::create_directory(box / "out");
    {
        ConvertAudioDialog dialog{world.session, AudioToolMode::Convert, nullptr};
        ASSERT_TRUE(dialog.Ready());
        EXPECT_FALSE(In<QPushButton>(dialog, "Pul_Converti")->isEnabled());
        EXPECT_TRUE(In(dialog, "Frame_Mp3")->isHidden());
        Drop(dialog, {QUrl::fromLocalFile(PathToQt(box / "music"))});
        auto* list = In<QListWidget>(dialog, "List_Files");
        ASSERT_EQ(list->count(), 2);
        EXPECT_EQ(FromQt(list->item(1)->text()), "one.wav           44100Hz 16 bits stereo");
        EXPECT_EQ(FromQt(In<QLabel>(dialog, "Label_Size")->text()),
                  "2 files (" + FormatSize(2 * 12044) + ")");
        list->setCurrentRow(1);
        box.host.WillAsk("Are you sure to remove file: one.wav", true);
        Press(dialog, "Pul_Remove");
        ASSERT_EQ(list->count(), 1);
        Press(dialog, "Pul_Converti");
        EXPECT_TRUE(box.host.WasTold("Please, set target folder"));
        box.host.WillChoose("Select target folder", box / "out");
        Press(dialog, "Pul_SfogliaDirOut");
        In<QRadioButton>(dialog, "Opt_Wav4bit")->setChecked(true);
        box.host.WillAsk("Do you want listen", false);
        box.host.WillAsk("Do you want exit", true);
        Press(dialog, "Pul_Converti");
        EXPECT_EQ(dialog.result(), QDialog::Accepted);
        EXPECT_EQ(ClassifyWav(ListFiles(box / "out", "*.wav")->at(0), AudioKind::Adpcm).mode, 0);
    }
    EXPECT_FALSE(box.Has("home/_audio_temp"));

    ConvertAudioDialog encode{world.session, AudioToolMode::Encode, nullptr};
    ASSERT_TRUE(encode.Ready());
    EXPECT_TRUE(In(encode, "Frame1_Outputwav")->isHidden());
    EXPECT_EQ(FromQt(In<QLabel>(encode, "Label_InfoMp3")->text()), "6.75 %");
    In<QComboBox>(encode, "Combo_BitRate")->setCurrentIndex(0);
    EXPECT_EQ(FromQt(In<QLabel>(encode, "Label_InfoMp3")->text()), "36.00 %");
    Press(encode, "Pul_Restore");
    EXPECT_EQ(In<QComboBox>(encode, "Combo_BitRate")->currentText(), "24");
    EXPECT_EQ(In<QComboBox>(encode, "Combo_Canali")->currentText(), "mono");
    EXPECT_EQ(In<QComboBox>(encode, "Combo_Frequenza")->currentText(), "Automatic");
    Press(encode, "Pul_Cancel");
    EXPECT_FALSE(box.Has("home/_audio_temp"));
}

TEST(AudioWindow, TheSettingsAreAskedForAndHeard)
{
    WindowWorld world;
    World& box = world.box;
    box.machine.tools["lame"] = platform::FindOnPath("lame");
    box.Write("trle/audio/105.wav", ToneWave({}, 44100));
    box.Write("trle/audio/no wave.wav", "nothing of a wave");
    SetMp3Dialog dialog{world.session, true, nullptr};
    EXPECT_TRUE(dialog.WithDecoder());
    In<QComboBox>(dialog, "Combo_BitRate")->setCurrentIndex(0);
    In<QComboBox>(dialog, "Combo_Canali")->setCurrentText("stereo");
    box.host.WillChoose("Choose a wav", std::nullopt);
    Press(dialog, "Pul_TestMp3");
    EXPECT_TRUE(box.machine.opened.empty());
    box.host.WillChoose("Choose a wav", box / "trle/audio/105.wav");
    Press(dialog, "Pul_TestMp3");
    ASSERT_EQ(box.machine.opened.size(), 1U);
    const auto sound = LookAtSound(box / "home/105.mp3");
    ASSERT_TRUE(sound);
    EXPECT_EQ(sound->kbits, 128);
    EXPECT_EQ(sound->channels, 2);
    box.host.WillChoose("Choose a wav", box / "trle/audio/no wave.wav");
    Press(dialog, "Pul_TestMp3");
    EXPECT_TRUE(box.host.WasTold("Failed conversion: I cannot convert file 'no wave.wav'"));
    EXPECT_EQ(box.machine.opened.size(), 1U);

    In<QComboBox>(dialog, "Combo_Frequenza")->setCurrentText("22050");
    In<QCheckBox>(dialog, "Check_InsertUtiliy")->setChecked(false);
    Press(dialog, "Pul_Start");
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_FALSE(dialog.WithDecoder());
    EXPECT_EQ(world.session.mp3Settings, (Mp3Settings{2, 128, 22050}));
}

TEST(AudioWindow, TheBatchShowsTheStepAndTheWhole)
{
    ProgressDialog dialog{ProgressWindow::Audio, nullptr};
    EXPECT_EQ(dialog.objectName(), "Dialog_ConvertiMp3");
    dialog.SetPart(1, 4);
    dialog.SetBar(1, 2);
    EXPECT_EQ(In<QProgressBar>(dialog, "ProgressBar_Singolo")->value(), 250);
    EXPECT_EQ(In<QProgressBar>(dialog, "ProgrBar_Tutti1")->value(), 500);
    dialog.AllowStop();
    Press(dialog, "Pul_Stop");
    EXPECT_TRUE(dialog.Stopped());
}

} // namespace kestrova::testing
