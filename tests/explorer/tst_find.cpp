#include "explorer/frmFind.h"
#include "tests/support/CribExplorer.h"

/// The search and deletion service, and the find dialog that shows its hits.
class TestFind : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_crib.emplace();
        m_crib->insert("Types (Description,Parent)", {"'Small torque wrenches',2", "'Alike',0", "'Alike',0"});
        m_crib->insert("Locations (Description,Parent)", {"'Drawer 5',1"});
        m_crib->insert("Tools (Type,Location,Manufacturer,PartNumber,Description,Out)",
                       {"2,3,'Orrin','T-1','Torque wrench',0", "3,3,'Orrin','T-2','Miller''s wrench',-1"});
        m_crib->insert("CheckOutIn (Tool_Id,Employee,JobOrOH,LineItemTypeId,DateOut,Active)",
                       {"2,'17',1250,4,#2026-03-04#,-1"});
        m_crib->insert(
            "Scrap (ToolID,TypeDescription,PartNumber,Description,Employee,ScrapDate,JobOrOH,LineItemTypeId)",
            {"70,'Drills','D-1','Drill 5',21,#2025-12-31 23:59:00#,1250,4",
             "71,'Drills','D-1','Drill 5',99,#2025-12-31 23:59:00#,1250,4",
             "72,'Drills','D-2','Drill 6',17,#2025-12-30 07:00:00#,11,5"});
        explorer().Startup(false);
    }

    void findsInEachView_data()
    {
        row("whole descriptions only", "type", "torque", QStringList());
        row("folders before tools, in any case", "type", "*TORQUE*",
            QStringList({"t2 Tools\\Wrenches\\Torque wrenches",
                         "t3 Tools\\Wrenches\\Torque wrenches\\Small torque wrenches",
                         "r1 Tools\\Wrenches\\Torque wrenches"}));
        row("locations", "location", "Drawer #", QStringList("l3 Tools\\Cabinet A\\Drawer 5"));
        row("an apostrophe", "location", "Miller's*", QStringList("r2 Tools\\Cabinet A\\Drawer 5"));
        row("kinds and jobs", "scrap", "1250", QStringList("l1250 Tools\\Job\\1250"));
        row("a kind", "scrap", "Job", QStringList("s4 Tools\\Job"));
        row("operations", "scrap", "Rep*", QStringList("l11 Tools\\Overhead\\Repair"));
        row("scrapped tools of known employees", "scrap", "Drill ?",
            QStringList({"j16384 Tools\\Job\\1250", "j16386 Tools\\Overhead\\Repair"}));
        row("descriptions, then tools out", "checkedOut", "*wrench",
            QStringList({"co1 Tools\\Miller's wrench", "co2 Tools\\Miller's wrench"}));
    }

    void findsInEachView()
    {
        const auto [mode, text, hits] = fetched<QString, QString, QStringList>();
        QCOMPARE(found(mode, text), hits);
    }

    void brokenChainsEndWithTheirMessage()
    {
        QCOMPARE(clsTools::path(clsTools::Kind::types, 3), "Wrenches\\Torque wrenches\\Small torque wrenches");
        m_crib->damage({"UPDATE Types SET Parent=99 WHERE ID=1"});
        QVERIFY_EXCEPTION_THROWN(clsTools::path(clsTools::Kind::types, 3), std::runtime_error);
        m_crib->run({"UPDATE Types SET Parent=3 WHERE ID=1"}); // 1 above 2 above 3 above 1
        // A hit that hangs on nothing says so and hides no other.
        m_crib->insert("Types (Description,Parent)", {"'Torque heads',0"});
        QCOMPARE(found("type", "*torque*"), QStringList({"t2 ...", "t3 ...", "t6 Tools\\Torque heads", "r1 ..."}));
    }

    void deletesSubtreesWhole()
    {
        m_crib->run({"UPDATE Types SET Parent=3 WHERE ID=1"}); // a circle must not stop it
        refuse(Session::database(), "DELETE", "Types");
        const QString problem = clsTools().Delete(clsTools::Kind::types, {2}, {});
        QVERIFY(problem.startsWith("Error: Unable to delete Types data.\r\nError: "));
        const auto left = [this] {
            return m_crib->rows("Select ID from Types where ID<4") + m_crib->rows("Select ID from Tools")
                + m_crib->rows("Select Tool_Id from CheckOutIn");
        };
        QCOMPARE(left(), QStringList({"1", "2", "3", "1", "2", "2"})); // a refused deletion changes nothing
        refuseNoMore(Session::database());
        QCOMPARE(clsTools().Delete(clsTools::Kind::types, {2}, {}), QString());
        QCOMPARE(left(), QStringList());
    }

    void stopKeepsWhatWasFound()
    {
        m_crib->insert("Tools (Type,Location,Description)", QStringList(30, "1,1,'Open wrench'"));
        frmFind &find = openFind("Open*");
        // The button is pressed while the search lets events run.
        QTimer press;
        connect(&press, &QTimer::timeout, &find, [&] { find.ui.cmdStop->click(); });
        press.start(0);
        find.ui.cmdStart->click();
        const int count = find.ui.lstFind->model()->rowCount();
        QVERIFY2(count > 0 && count < 30, qPrintable(QString::number(count)));
        QCOMPARE(find.ui.sbr1->currentMessage(), QStringLiteral("%1 item(s) found.").arg(count));
        QVERIFY(find.ui.cmdStart->isEnabled());
    }

    void folderPathsAreReadOnce()
    {
        m_crib->insert("Tools (Type,Location,Description)", QStringList(300, "2,1,'Wrench'"));
        const qint64 before = Session::database().counters().run;
        QCOMPARE(found("type", "Wrench*").size(), 301);
        // Folders and tools, and the way from two folders to the root.
        QCOMPARE(Session::database().counters().run - before, 2 + 1 + 2);
    }

    void goToLeadsToTheHit_data()
    {
        row("a folder", 0, "Small torque wrenches", "l3", "");
        row("a tool in stock", 0, "Torque wrench", "l2", "r1");
        row("a tool that is out", 1, "Miller's wrench", "l3", "co2");
        row("a scrapped tool", 3, "Drill 6", "C11", "j16386");
        row("an operation", 3, "Repair", "C11", "");
        row("the second one of a name", 0, "Alike", "l5", "");
        row("a description that is out", 2, "Miller's wrench", "l1", "");
    }

    void goToLeadsToTheHit()
    {
        const auto [option, text, node, item] = fetched<int, QString, QString, QString>();
        m_crib->view(option);
        frmFind &find = openFind(text);
        find.ui.cmdStart->click();
        QVERIFY(!find.ui.cmdGoto->isEnabled());
        find.ui.lstFind->setCurrentIndex(find.ui.lstFind->model()->index(text == "Alike" ? 1 : 0, 0));
        QCOMPARE(find.ui.sbr1->currentMessage(), "Double click to go to " + text);
        ScriptedUser user;
        if (option == 2)
            user.answers(QMessageBox::Ok); // the apostrophe breaks that list
        find.ui.lstFind->setFocus();
        QTest::keyClick(find.ui.lstFind, Qt::Key_Return);
        QCOMPARE(m_crib->tree()->selectedNode()->key, node);
        QCOMPARE(explorer().selectedItem() ? explorer().selectedItem()->key : QString(), item);
    }

    void goToAfterTheViewChanged()
    {
        frmFind &find = openFind("Torque wrench");
        find.ui.cmdStart->click();
        m_crib->view(1);
        find.ui.lstFind->setCurrentIndex(find.ui.lstFind->model()->index(0, 0));
        ScriptedUser user(QMessageBox::Ok);
        emit find.ui.lstFind->doubleClicked(find.ui.lstFind->currentIndex());
        QCOMPARE(
            user.texts(),
            QStringList(
                "Unable to find the tree node Tools\\Wrenches\\Torque wrenches. Make sure that the View mode has not "
                "changed since you ran this search. If so, please click on the Start button to refresh the results."));
        explorer().ui.cmdClose->click();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!frmFind::isLoaded());
    }

private:
    static frmFind &openFind(const QString &text)
    {
        explorer().ui.cmdFind->click();
        frmFind::instance().ui.txtFind->setText(text);
        return frmFind::instance();
    }

    QStringList found(const QString &mode, const QString &text)
    {
        KeyedList hits({});
        const auto &views = View::all();
        clsTools().Find(**std::find_if(views.begin(), views.end(), [&](auto *view) { return view->mode() == mode; }),
                        text, hits);
        QStringList lines;
        for (int row = 0; row < hits.count(); ++row)
            lines.append(hits.item(row).key + ' ' + hits.item(row).path);
        return lines;
    }

    std::optional<CribExplorer> m_crib;
};

QTEST_MAIN(TestFind)
#include "tst_find.moc"
