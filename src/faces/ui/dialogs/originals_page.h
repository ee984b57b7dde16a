#pragma once

#include "session/session.h"

#include <QWidget>

class QPushButton;
class QTreeWidget;

namespace kestrova
{

/// `Page_Originals`: what was kept of the Level Editor's folder, newest first, and the way back.
class OriginalsPage : public QWidget
{
public:
    OriginalsPage(Session& session, QWidget* parent);

private:
    void Fill();
    void BringBack();
    void Delete();

    Session& session_;
    QTreeWidget* list_;
    QPushButton* bringBack_;
    QPushButton* delete_;
};

} // namespace kestrova
