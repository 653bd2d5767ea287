#include "reports/PrintBy.h"
#include "tests/support/DataRows.h"

#include "platform/reportcontrol/PreviewWindow.h"
#include "platform/reportcontrol/ReportControl.h"
#include "reports/QueryForm.h"
#include "reports/QueryKind.h"
#include "tests/reports/ReportsCrib.h"
#include "tests/support/ScriptedUser.h"

class TestPrintBy : public QObject
{
    Q_OBJECT

private slots:
    void printsWhatIsChosen_data()
    {
        columns<Qt::Key, const PrintByKind *, QString, QString, QString, QString>("key", "kind", "number", "title",
                                                                                  "file", "formula");
        row("job", Qt::Key_J, &PrintByKind::frmPrByJob, "1250", "Junk Tools - Ordered By Job", "ToolsJunkByJob.rpt",
            "{Scrap.job} = 1250");
        row("employee", Qt::Key_E, &PrintByKind::frmPrByEmp, "17", "Junk Tools - Ordered By Employee",
            "ToolsJunkByEmployee.rpt", "{Scrap.employee} = 17");
    }

    void printsWhatIsChosen()
    {
        const auto [kind, number, file] = fetched<const PrintByKind *, QString, QString>("kind", "number", "file");
        ReportsCrib crib;
        ScriptedUser user(QMessageBox::Ok);
        const auto addTemplate = [&] { crib.addTemplate(file, "<from table=\"Scrap\"/>", "{Scrap.ID}"); };
        QFETCH(Qt::Key, key);
        whenModal<QueryForm>([key](QueryForm &form) { QTest::keyClick(&form, key, Qt::ControlModifier); });
        whenModal<PrintBy>([&](PrintBy &form) {
            QCOMPARE(form.ui.dbcJob->itemText(0), number);
            form.ui.dbcJob->setCurrentIndex(0);
            form.ui.cmdOK->click();
            QVERIFY(form.isVisible()); // a run that fails keeps the dialog
            addTemplate();
            form.ui.cmdOK->click();
            QVERIFY(!form.isVisible());
        });
        QueryForm::showModal(QueryKind::frmReportJunkTools);
        QVERIFY(user.boxes()[0].startsWith("Crystal Reports Error (critical): 20504:  Report Not Found.  You have "));
        const ReportControl &control = crib.frame.CrpMain();
        QTEST(control.windowTitle, "title");
        QCOMPARE(control.reportFile, crib.folder.path() + '\\' + file);
        QTEST(control.selectionFormula, "formula");
        QCOMPARE(control.windowLeft, 65);
        QVERIFY(control.preview() && control.preview()->isVisible());
    }
};

QTEST_MAIN(TestPrintBy)
#include "tst_printby.moc"
