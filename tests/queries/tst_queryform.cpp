#include "queries/QueryForm.h"

#include "platform/engine/Database.h"
#include "platform/reportcontrol/PreviewWindow.h"
#include "platform/reportcontrol/ReportControl.h"
#include "platform/system/Clock.h"
#include "queries/KeptQueriesWindow.h"
#include "queries/QueryKind.h"
#include "queries/ResultsKind.h"
#include "queries/ResultsWindow.h"
#include "reports/PrintBy.h"
#include "tests/reports/ReportsCrib.h"
#include "tests/support/FakeExplorer.h"

#include <QComboBox>
#include <QScopeGuard>

class TestQueryForm : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_crib.emplace(); }

    void rowSwitchesItsBoxes()
    {
        QueryForm form(QueryKind::frmQueryCheckedOut);
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        QCheckBox *use = box(form, "chkUsePart"), *range = box(form, "chkPart");
        QWidget *from = value(form, "dbcPart1"), *to = value(form, "dbcPart2");

        use->click();
        QCOMPARE(background(*use), QColor(0, 250, 0));
        QVERIFY(from->hasFocus() && !range->isEnabled());
        enter(form, "dbcPart1", "P-1");
        range->click();
        QVERIFY(to->hasFocus());
        enter(form, "dbcPart2", "P-9");
        range->click();
        QVERIFY(!to->isEnabled());
        QCOMPARE(text(form, "dbcPart2"), QString());
        QCOMPARE(background(*range), QColor(128, 0, 0));

        range->click();
        enter(form, "dbcPart2", "P-9");
        use->click();
        QVERIFY(!from->isEnabled() && !to->isEnabled() && !range->isChecked() && !range->isEnabled());
        QCOMPARE(text(form, "dbcPart1") + text(form, "dbcPart2"), QString());
    }

    void rowWithoutValueSwitchesItselfOff()
    {
        QueryForm form(QueryKind::frmReportJunkTools);
        box(form, "chkUseJob")->click();
        enter(form, "dbcJob1", "  ");
        box(form, "chkUseDate")->click();
        QVERIFY(!box(form, "chkUseJob")->isChecked());
        enter(form, "etxtDate1", "2026-03-03");
        box(form, "chkUseEmp")->click();
        QVERIFY(box(form, "chkUseDate")->isChecked());

        ScriptedUser user(QMessageBox::Ok);
        enter(form, "etxtDate1", {});
        form.ui.cmdGenerate->click();
        QVERIFY(!box(form, "chkUseDate")->isChecked() && !box(form, "chkUseEmp")->isChecked());
        QCOMPARE(user.boxes(), QStringList("No Criteria! (information): Please Enter Criteria For Query! [OK]"));
    }

    void listsAreReadOnFirstUse()
    {
        const Counters &counters = Session::database().counters();
        for (const QueryKind *kind :
             {&QueryKind::frmQueryCheckedOut, &QueryKind::frmQueryTypeLoc, &QueryKind::frmReportAllTools,
              &QueryKind::frmQueryScrap, &QueryKind::frmReportJunkTools}) {
            QueryForm form(*kind);
            for (const Criterion &row : kind->criteria) {
                qint64 run = counters.run;
                box(form, row.useBox)->click();
                QCOMPARE(counters.run, run);
                if (!row.source)
                    continue;
                for (const char *number : {"1", "2"})
                    form.findChild<BoundCombo *>(row.valueBoxes + QString(number))->showPopup();
                QCOMPARE(counters.run, run + 1);
                const auto offered = form.findChild<BoundCombo *>(row.valueBoxes + QString("2"))->count();
                QCOMPARE(offered, m_crib->rows(row.choices.statement).size());
            }
        }
    }

    void generate_data()
    {
        row("the number of an employee", QStringList{"chkUseEmp", "dbcEmp1=18"}, "Employee.EmpId = 18",
            "{Employee.EmpId} = 18");
        row("a range without an upper bound is a single value",
            QStringList{"chkUseJobNo", "dbcJobNo1=1250", "chkJobNo"},
            "CheckOutIn.JobOrOh = 1250 and CheckOutIn.LineItemTypeId=4",
            "{CheckOutIn.JobOrOh} = 1250 and {CheckOutIn.LineItemTypeId} = 4");
        row("criteria follow one another as on the form",
            QStringList{"chkUseCheckOut", "dbcCheckOut1=2026-03-01", "chkUseDescription", "dbcDescription1= Drill "},
            "CheckOutIn.CheckOutDesc = 'Drill' and format(CheckOutIn.DateOut,'short date') = #2026-03-01#",
            "{CheckOutIn.CheckOutDesc} = 'Drill' and {CheckOutIn.DateOut}= date(2026,03,01)");
    }

    void generate()
    {
        const auto [steps, where, findCrp] = fetched<QStringList, QString, QString>();
        const QueryKind &kind = QueryKind::frmQueryCheckedOut;
        whenModal<QueryForm>([&](QueryForm &form) {
            for (const QString &step : steps)
                if (step.contains('='))
                    enter(form, step.section('=', 0, 0), step.section('=', 1));
                else
                    box(form, step)->click();
            form.ui.cmdGenerate->click();
            QVERIFY(!form.isVisible());
        });
        QueryForm::showModal(kind);
        QCOMPARE(QueryForm::lastQuery(kind).findsql, kind.statement + (" where " + where));
        QCOMPARE(QueryForm::lastQuery(kind).findCrp, findCrp);
        ResultsWindow *results = ResultsWindow::opened(kind.results);
        QVERIFY(results && results->isVisible() && !results->isModal());
    }

    void refusalsKeepTheForm_data()
    {
        const QString error = "System Message (critical): An error ocurred while attempting to run the Query [OK]";
        row("nothing found", "chkUseDescription", "dbcDescription1", "Anvil",
            "No Records Found (warning): No Records satisfy your Criteria! [OK]");
        row("an apostrophe ends the text", "chkUseDescription", "dbcDescription1", "O'Brien", error);
        row("a date that is none", "chkUseCheckIn", "dbcCheckIn1", "soon", error);
        row("a second statement", "chkUseJobNo", "dbcJobNo1", "1250; delete from Tools", error);
    }

    void refusalsKeepTheForm()
    {
        const auto [useBox, valueBox, typed, message] = fetched<QString, QString, QString, QString>();
        ScriptedUser user(QMessageBox::Ok);
        const QString before = QueryForm::lastQuery(QueryKind::frmQueryCheckedOut).findsql;
        whenModal<QueryForm>([&](QueryForm &form) {
            box(form, useBox)->click();
            enter(form, valueBox, typed);
            form.ui.cmdGenerate->click();
            QVERIFY(form.isVisible());
            QCOMPARE(text(form, valueBox), typed);
        });
        QueryForm::showModal(QueryKind::frmQueryCheckedOut);
        QCOMPARE(user.boxes(), QStringList(message));
        QCOMPARE(QueryForm::lastQuery(QueryKind::frmQueryCheckedOut).findsql, before);
        QCOMPARE(m_crib->rows("Select count(*) as n from Tools"), QStringList("3"));
    }

    void queryGoesByWhatTheExplorerShows()
    {
        FakeExplorer explorer;
        QPointer<ResultsWindow> results;
        for (const char *mode : {"type", "location"}) {
            explorer.mode = mode;
            whenModal<QueryForm>([](QueryForm &form) {
                box(form, "chkUsePart")->click();
                enter(form, "dbcPart1", "P-1");
                form.ui.cmdGenerate->click();
            });
            QueryForm::showModal(QueryKind::frmQueryTypeLoc);
            QVERIFY(!results || !results->isVisible()); // one window of a kind
            results = ResultsWindow::opened(ResultsKind::frmReportAllToolsQresults);
            QCOMPARE(results->ui.dbcReport->text(), explorer.mode == "type" ? "Tools by Type" : "Tools by Location");
        }
    }

    void printsWhatIsChosen_data()
    {
        row("job", Qt::Key_J, &PrintByKind::frmPrByJob, "1250", "Junk Tools - Ordered By Job", "ToolsJunkByJob.rpt",
            "{Scrap.job} = 1250");
        row("employee", Qt::Key_E, &PrintByKind::frmPrByEmp, "17", "Junk Tools - Ordered By Employee",
            "ToolsJunkByEmployee.rpt", "{Scrap.employee} = 17");
    }

    void printsWhatIsChosen()
    {
        const auto [key, kind, number, title, file, formula] =
            fetched<int, const PrintByKind *, QString, QString, QString, QString>();
        ScriptedUser user(QMessageBox::Ok);
        const auto addTemplate = [&] { m_crib->addTemplate(file, "<from table=\"Scrap\"/>", "{Scrap.ID}"); };
        whenModal<QueryForm>([key](QueryForm &form) { QTest::keyClick(&form, Qt::Key(key), Qt::ControlModifier); });
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
        const ReportControl &control = m_crib->frame.CrpMain();
        QCOMPARE(control.windowTitle, title);
        QCOMPARE(control.reportFile, m_crib->folder.path() + '\\' + file);
        QCOMPARE(control.selectionFormula, formula);
        QCOMPARE(control.windowLeft, 65);
        QVERIFY(control.preview() && control.preview()->isVisible());
    }

    void criteriaAreKeptAndTakenAgain()
    {
        Clock::setSource([] { return QDateTime({2026, 2, 15}, {8, 0}); });
        const auto endClock = qScopeGuard([] { Clock::setSource({}); });
        ScriptedUser user(QMessageBox::Ok);
        user.answers(QMessageBox::Yes);
        user.answers(QMessageBox::Ok, 2);
        m_crib->run({"Insert into Employee (EmpID, LastName, FirstName) values (3, 'Miller', 'Anna')",
                     "Insert into CheckOutIn (Tool_Id, Employee) values (1, '3')"});
        QueryForm form(QueryKind::frmQueryCheckedOut);
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        const auto inKeptQueries = [&](const std::function<void(KeptQueriesWindow &)> &act) {
            QVERIFY(QTest::qWaitForWindowActive(&form));
            whenModal<KeptQueriesWindow>(act);
            QTest::keyClick(&form, Qt::Key_O, Qt::ControlModifier);
        };
        box(form, "chkUseEmp")->click();
        enter(form, "dbcEmp1", "MILLER ANNA");
        auto *employees = form.findChild<BoundCombo *>("dbcEmp1");
        employees->setCurrentIndex(employees->findData("17"));
        box(form, "chkUseCheckOut")->click();
        enter(form, "dbcCheckOut1", "2020-01-01");
        inKeptQueries([](KeptQueriesWindow &window) {
            for (const QString period : {"last month", "until today"}) {
                window.findChild<QComboBox *>()->setCurrentText(period);
                window.ui.txtName->setFocus();
                window.ui.txtName->setText("Anna, " + period);
                QTest::keyClick(window.ui.txtName, Qt::Key_Return);
            }
            QVERIFY(window.isVisible());
            window.ui.cmdClose->setFocus();
            QTest::keyClick(window.ui.cmdClose, Qt::Key_Return);
            QCOMPARE(window.taken().size(), 0);
        });
        for (const auto &[name, from, to] : {std::tuple("Anna, last month", "2026-01-01", "2026-01-31"),
                                             {"Anna, until today", "2020-01-01", "2026-02-15"}}) {
            box(form, "chkUseEmp")->setChecked(false);
            box(form, "chkUsePart")->click();
            enter(form, "dbcPart1", "P-1");
            inKeptQueries([&](KeptQueriesWindow &window) {
                window.ui.lstNames->setCurrentItem(window.ui.lstNames->findItems(name, Qt::MatchExactly).value(0));
                window.ui.cmdTake->click();
            });
            QVERIFY(box(form, "chkUseEmp")->isChecked() && !box(form, "chkUsePart")->isChecked());
            QCOMPARE(form.findChild<BoundCombo *>("dbcEmp1")->boundValue().toText(), "17");
            QCOMPARE(text(form, "dbcCheckOut1") + ' ' + text(form, "dbcCheckOut2"), QString(from) + ' ' + to);
        }

        const KeptQueries queries("frmQueryCheckedOut");
        QVERIFY(queries.keep("gone", {{"chkUseEmp", {.shown = {"MILLER ANNA"}, .bound = {"99"}}}}, false));
        QVERIFY(!queries.keep("gone", {}, false));
        inKeptQueries([](KeptQueriesWindow &window) {
            window.ui.lstNames->setCurrentRow(2);
            window.ui.cmdTake->click();
        });
        QCOMPARE(user.texts(), QStringList("MILLER ANNA is not in the list of employees any more."));
        QVERIFY(employees->boundValue().isNull());

        inKeptQueries([](KeptQueriesWindow &window) {
            QTest::keyClick(window.ui.lstNames, Qt::Key_Delete);
            QCOMPARE(window.ui.lstNames->count(), 2);
            window.reject();
        });
        QCOMPARE(KeptQueries("frmQueryScrap").names(), QStringList());
        for (const auto &[content, text] :
             {std::pair("{\"version\": 1, ", "queries.json is damaged"),
              {"{\"version\": 1, \"forms\": []}", "queries.json was not written by this"}}) {
            writeFile(m_crib->folder.filePath("queries.json"), content);
            QVERIFY(QTest::qWaitForWindowActive(&form));
            QTest::keyClick(&form, Qt::Key_O, Qt::ControlModifier);
            QVERIFY2(user.texts().last().contains(text), qPrintable(user.texts().last()));
        }
    }

private:
    static QCheckBox *box(QueryForm &form, const QString &name) { return form.findChild<QCheckBox *>(name); }
    /// As it is painted.
    static QColor background(QCheckBox &box) { return box.grab().toImage().pixelColor(box.width() - 2, 1); }
    static QWidget *value(QueryForm &form, const QString &name) { return form.findChild<QWidget *>(name); }
    /// Puts a text into a value box, as by hand.
    static void enter(QueryForm &form, const QString &name, const QString &text)
    {
        if (auto *combo = form.findChild<BoundCombo *>(name))
            combo->setText(text);
        else
            form.findChild<QLineEdit *>(name)->setText(text);
    }
    static QString text(QueryForm &form, const QString &name)
    {
        const auto *combo = form.findChild<BoundCombo *>(name);
        return combo ? combo->text() : form.findChild<QLineEdit *>(name)->text();
    }

    std::optional<ReportsCrib> m_crib;
};

QTEST_MAIN(TestQueryForm)
#include "tst_queryform.moc"
