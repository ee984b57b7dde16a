#pragma once

#include "ui/main/main_window.h"
#include "ui/widgets/input_gate.h"
#include "ui/widgets/qt_text.h"
#include "world/world.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

namespace kestrova::testing
{

/// A control of a dialog by its name.
template <class Control = QWidget> Control* In(QWidget& dialog, const char* name)
{
    auto* found = dialog.findChild<Control*>(QString::fromLatin1(name));
    EXPECT_NE(found, nullptr) << name;
    return found;
}

inline void Press(QWidget& dialog, const char* button)
{
    In<QPushButton>(dialog, button)->click();
}

/// A sandbox whose session shows its levels in a main window.
class WindowWorld
{
public:
    explicit WindowWorld(Host* host = nullptr)
        : session{host != nullptr ? *host : box.host, box.machine, list, box.session.programFolder},
          gate(session.running)
    {
        box.MakeTrle();
        box.MakeBackupAndArchive();
        session.preferences = box.session.preferences;
        session.settings = box.session.settings;
        session.archive = box.session.archive;
    }

    LevelCode AddLevel(const std::string& name, const std::string& note = {})
    {
        const LevelCode code = box.AddLevel(name, {{"level1.tr4", name}});
        box.session.archive.levels.back().levelNote = note;
        session.archive.levels = box.session.archive.levels;
        return code;
    }

    void Show()
    {
        window.show();
        window.RefreshList();
    }

    template <class Control = QWidget> Control* Find(const char* name)
    {
        auto* found = window.findChild<Control*>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    std::string TextOfLabel(const char* name) { return FromQt(Find<QLabel>(name)->text()); }
    void Click(const char* name) { QTest::mouseClick(Find(name), Qt::LeftButton); }

    World box;
    WindowLevelList list;
    Session session;
    InputGate gate;
    MainWindow window{session, list};
};

} // namespace kestrova::testing
