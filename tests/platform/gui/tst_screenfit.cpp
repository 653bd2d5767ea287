#include "platform/gui/ScreenFit.h"
#include "platform/gui/WrappingPanel.h"

#include <QDialog>
#include <QGridLayout>
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

    void controlsGoOnInFurtherRows()
    {
        QWidget window;
        auto &panel = *new WrappingPanel(&window);
        auto *grid = new QGridLayout(&panel);
        QPushButton *last = nullptr;
        for (int column = 0; column < 4; ++column)
            grid->addWidget(last = new QPushButton("Some command"), 0, column);
        const int wide = panel.sizeHint().width();
        for (const int width : {wide, wide * 2 / 3, wide}) {
            panel.resize(width, 200);
            window.show();
            grid->activate();
            QVERIFY(last->geometry().right() <= panel.width());
            QCOMPARE(last->y() > grid->itemAtPosition(0, 0)->widget()->y(), width < wide);
        }
    }
};

QTEST_MAIN(TestScreenFit)
#include "tst_screenfit.moc"
