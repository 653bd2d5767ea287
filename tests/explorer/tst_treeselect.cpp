#include "explorer/frmTreeSelect.h"
#include "tests/support/CribDatabase.h"
#include "tests/support/DataRows.h"
#include "tests/support/ScriptedUser.h"

class TestTreeSelect : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        crib.emplace();
        crib->run({
            "INSERT INTO Types (Description,Parent) VALUES('Drills',0)",
            "INSERT INTO Types (Description,Parent) VALUES('Digital',2)",
            "INSERT INTO Locations (Description,Parent) VALUES('Drawer 1',2)",
        });
    }

    void cleanup() { crib.reset(); }

    void picks_data()
    {
        columns<QString, QString, QList<int>, bool, QString, int>("mode", "caption", "keys", "refused", "path", "id");
        const int enter = Qt::Key_Return;
        const int escape = Qt::Key_Escape;
        row("Enter takes the folder", "type", "Tool Types", QList<int>{Qt::Key_Down, enter}, false, "Vorlane\\Drills",
            3);
        row("Right opens a branch", "type", "Tool Types",
            QList<int>{Qt::Key_W, Qt::Key_Right, Qt::Key_Right, Qt::Key_Right, Qt::Key_Right, enter}, false,
            "Vorlane\\Wrenches\\Torque wrenches\\Digital", 4);
        row("letters find a location", "location", "Tool Locations", QList<int>{Qt::Key_C, Qt::Key_A, enter}, false,
            "Vorlane\\Cabinet A", 1);
        row("Escape takes nothing", "location", "Tool Locations", QList<int>{Qt::Key_Down, escape}, false, QString(),
            0);
        row("the root is no folder", "type", "Tool Types", QList<int>{enter, escape}, true, QString(), 0);
    }

    void picks()
    {
        const auto [mode, keys, refused, path] =
            fetched<QString, QList<int>, bool, QString>("mode", "keys", "refused", "path");
        ScriptedUser user(QMessageBox::Ok, refused);

        whenModal<frmTreeSelect>([&](frmTreeSelect &form) {
            QTEST(form.windowTitle(), "caption");
            QCOMPARE(form.ui.tvMain->currentIndex().data().toString(), "Vorlane");
            for (const int key : keys)
                QTest::keyClick(form.ui.tvMain, Qt::Key(key));
        });
        const std::optional<PickedFolder> picked = frmTreeSelect::pick(mode, nullptr);

        QCOMPARE(user.boxes().join('\n'), refused ? remark("You must select a Path!") : "");
        QCOMPARE(picked ? picked->path : QString(), path);
        QTEST(picked ? picked->id : 0, "id");
    }

private:
    std::optional<CribDatabase> crib;
};

QTEST_MAIN(TestTreeSelect)
#include "tst_treeselect.moc"
