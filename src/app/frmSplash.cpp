#include "app/frmSplash.h"

#include "platform/gui/Icons.h"
#include "platform/gui/Twips.h"
#include "platform/system/ProgramFolder.h"

#include <QScreen>

namespace {
constexpr int logoSide = 64;
constexpr int leftOfCentre = 500; // twips; the splash has always stood there
}

frmSplash::frmSplash() : QFrame(nullptr, Qt::SplashScreen | Qt::WindowStaysOnTopHint)
{
    ui.setupUi(this);
    ui.imgLogo->setPixmap(Icons::icon("vorlane").pixmap(logoSide));
    ui.Label2->setText("Version " + ProgramFolder::version());
    resize(sizeHint());
    const QRect area = screen()->geometry();
    const int left = (Twips::fromPixels(area.width()) - Twips::fromPixels(width())) / 2 - leftOfCentre;
    const int top = (Twips::fromPixels(area.height()) - Twips::fromPixels(height())) / 2;
    move(area.topLeft() + QPoint(Twips::toPixels(left), Twips::toPixels(top)));
}
