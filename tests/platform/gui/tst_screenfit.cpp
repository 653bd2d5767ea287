#include "platform/gui/ScreenFit.h"

#include <QBoxLayout>
#include <QDialog>
#include <QPushButton>
#include <QScreen>
#include <QTest>

/// Windows on screens that are smaller than they are.
class TestScreenFit : public QObject
{
    Q_OBJECT

private slots:
    void aTooLargeDialogScrollsAboveItsButtons()
    {
        const ScreenFit screenFit;
        QDialog dialog;
        auto *rows = new QVBoxLayout(&dialog);
        auto *large = new QWidget;
        large->setMinimumSize(3000, 2000);
        auto *buttons = new QHBoxLayout;
        auto *ok = new QPushButton("OK");
        rows->addWidget(large);
        rows->addLayout(buttons);
        buttons->addWidget(ok);
        dialog.show();
        const QRect screen = dialog.screen()->availableGeometry();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        QVERIFY(screen.contains(dialog.frameGeometry()));
        QVERIFY(screen.contains(QRect(ok->mapToGlobal(QPoint()), ok->size())));
        QVERIFY(large->isVisible());
    }
};

QTEST_MAIN(TestScreenFit)
#include "tst_screenfit.moc"
