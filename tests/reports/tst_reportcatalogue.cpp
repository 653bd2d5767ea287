#include "reports/frmConfigReports.h"
#include "reports/frmImportSelected.h"
#include "reports/frmNewReport.h"
#include "tests/reports/ReportsCrib.h"

class TestReportCatalogue : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_crib.emplace();
        m_crib->run({
            "INSERT INTO Reports (Name,Description,Module,FileName) VALUES('Mine','My own','Junk Tools','Mine.rpt')",
            "INSERT INTO Reports (Name,Description,Module,FileName,Default)"
            " VALUES('Yours','Your own','Junk Tools','Yours.rpt',-1)",
        });
    }

    void setsTheDefault()
    {
        ScriptedUser user(QMessageBox::Ok);
        user.answers(QMessageBox::Cancel).answers(QMessageBox::Ok);
        whenModal<frmConfigReports>([this](frmConfigReports &form) {
            QCOMPARE(form.ui.dbcRtype->currentText(), "Tools Out");
            form.ui.dbcRtype->setCurrentText("Junk Tools");
            QCOMPARE(textsOf(form.ui.dbgReport->model(), 2), QStringList({"Yes", "No", "Yes"}));
            form.ui.cmdDefault->click();
            form.ui.dbgReport->selectRow(1);
            form.ui.cmdDefault->click();
            QCOMPARE(junkTemplates(), QStringList({"Junk Tools|-1", "Mine|0", "Yours|-1"}));
            form.ui.cmdDefault->click();
            QCOMPARE(form.ui.dbgReport->selectedRows(), QList<int>{1});
        });
        frmConfigReports::showModal();
        const QString question = "Set as Default (question): Set Mine As Default for Junk Tools? [OK]* [Cancel]";
        QCOMPARE(user.boxes(),
                 QStringList({"Selection Error (information): Nothing Selected!. [OK]", question, question}));
        QCOMPARE(junkTemplates(), QStringList({"Junk Tools|0", "Mine|-1", "Yours|0"}));
    }

    void removes()
    {
        ScriptedUser user(QMessageBox::Cancel);
        user.answers(QMessageBox::Ok, 3);
        whenModal<frmConfigReports>([](frmConfigReports &form) {
            form.ui.dbcRtype->setCurrentText("Junk Tools");
            const auto remove = [&](int row) {
                form.ui.dbgReport->selectRow(row);
                form.ui.cmdRemove->click();
                return textsOf(form.ui.dbgReport->model());
            };
            QCOMPARE(remove(1).size(), 3); // no
            QCOMPARE(remove(0).size(), 3); // it came with the program
            QCOMPARE(remove(1), QStringList({"Junk Tools", "Yours"}));
            QCOMPARE(form.ui.dbgReport->selectedRows(), QList<int>()); // listed anew
        });
        frmConfigReports::showModal();
        QCOMPARE(user.seen[0].defaultButton, QMessageBox::Cancel);
        const QString question = "Delete This Record?";
        QCOMPARE(user.texts(), QStringList({question, question, "You Cannot Delete OEM Reports!.", question}));
        QCOMPARE(junkTemplates(), QStringList({"Junk Tools|-1", "Yours|-1"}));
    }

    void importing()
    {
        for (const char *name : {"b.rpt", "A.RPT", "notes.txt"})
            m_crib->addTemplate(name, {}, {});
        ScriptedUser user(QMessageBox::Ok, 4);
        whenModal<frmConfigReports>([&](frmConfigReports &form) {
            form.ui.dbcRtype->setCurrentText("All Tools");
            whenModal<frmNewReport>([](frmNewReport &chooser) {
                QCOMPARE(textsOf(chooser.ui.filReport->model()), QStringList({"A.RPT", "b.rpt"}));
                chooser.ui.cmdSelect->click(); // nothing is selected
                chooser.ui.filReport->setCurrentRow(0);
                whenModal<frmImportSelected>([](frmImportSelected &import) {
                    const auto fill = [&](QWidget *box, const char *text) {
                        import.ui.cmdImport->click();
                        QVERIFY(import.isVisible());
                        QTest::keyClicks(box, text);
                    };
                    import.ui.txtName->setText("  ");
                    fill(import.ui.cboRtype, "All");
                    fill(import.ui.txtName, "Bob's list");
                    fill(import.ui.txtDesc, "For Bob");
                    import.ui.cmdImport->click();
                });
                chooser.ui.cmdSelect->click();
                QVERIFY(!chooser.isVisible());
            });
            form.ui.cmdAdd->click();
            QCOMPARE(form.ui.dbgReport->model()->rowCount(), 2);
        });
        frmConfigReports::showModal();
        QCOMPARE(user.texts(),
                 QStringList({"Nothing Selected To Delete!", "You must enter a Report Type!", "You must enter a Name!",
                              "You must enter a Description!"}));
        QCOMPARE(m_crib->rows("Select * from Reports where FileName='A.RPT'"),
                 QStringList("Bob's list|For Bob|All Tools|A.RPT|0|0"));
    }

private:
    QStringList junkTemplates() const
    {
        return m_crib->rows("Select Name,Default from Reports where Module='Junk Tools'");
    }
    std::optional<ReportsCrib> m_crib;
};

QTEST_MAIN(TestReportCatalogue)
#include "tst_reportcatalogue.moc"
