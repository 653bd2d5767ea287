#include "reports/QueryForm.h"
#include "tests/support/DataRows.h"

#include "platform/engine/Database.h"
#include "reports/QueryKind.h"
#include "reports/ResultsKind.h"
#include "reports/ResultsWindow.h"
#include "tests/reports/ReportsCrib.h"
#include "tests/support/FakeExplorer.h"
#include "tests/support/ScriptedUser.h"

class TestQueryForm : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_crib = std::make_unique<ReportsCrib>(); }
    void cleanup() { m_crib.reset(); }

    void startsSwitchedOff_data() { forms(); }

    void startsSwitchedOff()
    {
        QFETCH(const QueryKind *, kind);
        QueryForm form(*kind);
        QCOMPARE(form.objectName(), kind->name);
        QCOMPARE(form.windowTitle(), kind->caption);
        for (const Criterion &row : kind->criteria) {
            QCOMPARE(box(form, row.useBox)->text(), row.caption);
            QVERIFY(!box(form, row.rangeBox)->isEnabled());
            for (const char *number : {"1", "2"}) {
                QVERIFY(!value(form, row.valueBoxes + QString(number))->isEnabled());
                QVERIFY(!value(form, row.valueBoxes + QString(number))->accessibleName().isEmpty());
            }
            for (const char *name : {row.useBox, row.rangeBox}) {
                QVERIFY(!box(form, name)->isChecked());
                QCOMPARE(background(*box(form, name)), QColor(128, 0, 0));
                QCOMPARE(box(form, name)->palette().color(QPalette::WindowText), QColor(255, 255, 255));
            }
        }
    }

    void rowSwitchesItsBoxes()
    {
        QueryForm form(QueryKind::frmQueryCheckedOut);
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        QCheckBox *use = box(form, "chkUsePart"), *range = box(form, "chkPart");
        QWidget *from = value(form, "dbcPart1"), *to = value(form, "dbcPart2");

        use->click();
        QCOMPARE(background(*use), QColor(0, 250, 0));
        QCOMPARE(use->palette().color(QPalette::WindowText), QColor(0, 0, 0));
        QVERIFY(from->isEnabled() && from->hasFocus());
        QVERIFY(!range->isEnabled());
        enter(form, "dbcPart1", "P-1");
        QVERIFY(range->isEnabled());
        enter(form, "dbcPart1", "");
        QVERIFY(range->isEnabled());
        enter(form, "dbcPart1", "P-1");

        range->click();
        QVERIFY(to->isEnabled() && to->hasFocus());
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
        box(form, "chkUseDate")->click();
        box(form, "chkUseJob")->click();
        QVERIFY(!box(form, "chkUseDate")->isChecked());
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

    void keyboardWorksARow()
    {
        QueryForm form(QueryKind::frmReportAllTools);
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        QVERIFY(box(form, "chkUseTool")->hasFocus());
        const auto press = [&](Qt::Key key) { QTest::keyClick(form.focusWidget(), key); };
        press(Qt::Key_Tab);
        QVERIFY(box(form, "chkUseMan")->hasFocus());
        press(Qt::Key_Space);
        QVERIFY(value(form, "dbcMan1")->hasFocus());
        QTest::keyClicks(form.focusWidget(), "B");
        press(Qt::Key_Tab);
        QVERIFY(box(form, "chkMan")->hasFocus());
        press(Qt::Key_Space);
        QVERIFY(value(form, "dbcMan2")->hasFocus());
        press(Qt::Key_Tab);
        QVERIFY(box(form, "chkUsePart")->hasFocus());
        press(Qt::Key_Tab);
        press(Qt::Key_Tab);
        QVERIFY(form.ui.cmdGenerate->hasFocus());
        QCOMPARE(text(form, "dbcMan1"), "Bosch");
    }

    void listsAreReadOnFirstUse_data() { forms(); }

    void listsAreReadOnFirstUse()
    {
        QFETCH(const QueryKind *, kind);
        const Database::Counters &counters = Session::database().counters();
        qint64 run = counters.run;
        QueryForm form(*kind);
        for (const Criterion &row : kind->criteria)
            box(form, row.useBox)->click();
        QCOMPARE(counters.run - run, 0);

        for (const Criterion &row : kind->criteria) {
            if (!row.source)
                continue;
            run = counters.run;
            for (const char *number : {"1", "2"})
                form.findChild<BoundCombo *>(row.valueBoxes + QString(number))->showPopup();
            QCOMPARE(counters.run - run, 1);
            const QStringList expected = m_crib->rows(row.choices.statement);
            QCOMPARE(form.findChild<BoundCombo *>(row.valueBoxes + QString("2"))->count(), int(expected.size()));
        }
    }

    void generate_data()
    {
        using Steps = std::function<void(QueryForm &)>;
        columns<const QueryKind *, Steps, QString, QString>("kind", "steps", "where", "findCrp");
        row("loans of an employee", &QueryKind::frmQueryCheckedOut, Steps([](QueryForm &form) {
                box(form, "chkUseEmp")->click();
                enter(form, "dbcEmp1", "miller anna");
            }),
            "Employee.EmpId = 17", "{Employee.EmpId} = 17");
        row("the number of an employee", &QueryKind::frmQueryCheckedOut, Steps([](QueryForm &form) {
                box(form, "chkUseEmp")->click();
                enter(form, "dbcEmp1", "18");
            }),
            "Employee.EmpId = 18", "{Employee.EmpId} = 18");
        row("the beginning of one name only", &QueryKind::frmQueryCheckedOut, Steps([](QueryForm &form) {
                box(form, "chkUseEmp")->click();
                QTest::keyClicks(value(form, "dbcEmp1"), "bak");
            }),
            "Employee.EmpId = 21", "{Employee.EmpId} = 21");
        row("a range without an upper bound is a single value", &QueryKind::frmQueryCheckedOut,
            Steps([](QueryForm &form) {
                box(form, "chkUseJobNo")->click();
                enter(form, "dbcJobNo1", "1250");
                box(form, "chkJobNo")->click();
            }),
            "CheckOutIn.JobOrOh = 1250 and CheckOutIn.LineItemTypeId=4",
            "{CheckOutIn.JobOrOh} = 1250 and {CheckOutIn.LineItemTypeId} = 4");
        row("criteria follow one another as on the form", &QueryKind::frmQueryCheckedOut, Steps([](QueryForm &form) {
                box(form, "chkUseCheckOut")->click();
                enter(form, "dbcCheckOut1", "2026-03-01");
                box(form, "chkUseDescription")->click();
                enter(form, "dbcDescription1", " Drill ");
            }),
            "CheckOutIn.CheckOutDesc = 'Drill' and format(CheckOutIn.DateOut,'short date') = #2026-03-01#",
            "{CheckOutIn.CheckOutDesc} = 'Drill' and {CheckOutIn.DateOut}= date(2026,03,01)");
        row("tools of a type", &QueryKind::frmQueryTypeLoc, Steps([](QueryForm &form) {
                box(form, "chkUseType")->click();
                enter(form, "dbcType1", "Torque wrenches");
            }),
            "types.description = 'Torque wrenches'", "{types.description} = 'Torque wrenches'");
        row("tools by price", &QueryKind::frmReportAllTools, Steps([](QueryForm &form) {
                box(form, "chkUsePrice")->click();
                enter(form, "dbcPrice1", "10");
                box(form, "chkPrice")->click();
                enter(form, "dbcPrice2", "$25.00");
            }),
            "PricePer between 10 and 25", "{tools.PricePer} in 10 to 25");
        row("scrapped tools", &QueryKind::frmQueryScrap, Steps([](QueryForm &form) {
                box(form, "chkUseReason")->click();
                enter(form, "dbcReason1", "Broken");
            }),
            "ScrapReasons.Description = 'Broken'", "{ScrapReasons.Description} = 'Broken'");
        row("junk tools", &QueryKind::frmReportJunkTools, Steps([](QueryForm &form) {
                box(form, "chkUseDate")->click();
                enter(form, "etxtDate1", "2026-03-03");
            }),
            "Date = #2026-03-03#", "{Scrap.Date} = date(2026,03,03)");
    }

    void generate()
    {
        QFETCH(const QueryKind *, kind);
        QFETCH(std::function<void(QueryForm &)>, steps);
        QFETCH(QString, where);
        whenModal<QueryForm>([&](QueryForm &form) {
            steps(form);
            form.ui.cmdGenerate->click();
            QVERIFY(!form.isVisible());
        });
        QueryForm::showModal(*kind);
        QCOMPARE(QueryForm::lastQuery(*kind).findsql, kind->statement + (" where " + where));
        QTEST(QueryForm::lastQuery(*kind).findCrp, "findCrp");
        ResultsWindow *results = ResultsWindow::opened(kind->results);
        QVERIFY(results && results->isVisible() && !results->isModal());
    }

    void nothingFoundKeepsTheForm()
    {
        ScriptedUser user(QMessageBox::Ok);
        QString before;
        whenModal<QueryForm>([&](QueryForm &form) {
            before = form.findsql();
            box(form, "chkUseTool")->click();
            enter(form, "dbcTool1", "Anvil");
            form.ui.cmdGenerate->click();
            QVERIFY(form.isVisible());
            QCOMPARE(text(form, "dbcTool1"), "Anvil");
        });
        QueryForm::showModal(QueryKind::frmReportAllTools);
        QCOMPARE(user.boxes(), QStringList("No Records Found (warning): No Records satisfy your Criteria! [OK]"));
        QCOMPARE(QueryForm::lastQuery(QueryKind::frmReportAllTools).findsql, before);
    }

    void refusals_data()
    {
        columns<QString, QString, QString>("useBox", "valueBox", "typed");
        row("an apostrophe ends the text", "chkUseDescription", "dbcDescription1", "O'Brien");
        row("a job that is no number", "chkUseJobNo", "dbcJobNo1", "twelve");
        row("a date that is none", "chkUseCheckIn", "dbcCheckIn1", "soon");
        row("an employee who is none of the list", "chkUseEmp", "dbcEmp1", "NOBODY");
        row("a second statement", "chkUseJobNo", "dbcJobNo1", "1250; delete from Tools");
    }

    void refusals()
    {
        QFETCH(QString, useBox);
        QFETCH(QString, valueBox);
        QFETCH(QString, typed);
        ScriptedUser user(QMessageBox::Ok);
        whenModal<QueryForm>([&](QueryForm &form) {
            box(form, useBox)->click();
            enter(form, valueBox, typed);
            form.ui.cmdGenerate->click();
            QVERIFY(form.isVisible());
        });
        QueryForm::showModal(QueryKind::frmQueryCheckedOut);
        QCOMPARE(user.boxes(),
                 QStringList("System Message (critical): An error ocurred while attempting to run the Query [OK]"));
        QCOMPARE(m_crib->rows("Select count(*) as n from Tools"), QStringList("3"));
    }

    void resultsAreWhatFindsqlSays()
    {
        const auto generate = [](const QString &job) {
            whenModal<QueryForm>([job](QueryForm &form) {
                box(form, "chkUseJobNo")->click();
                enter(form, "dbcJobNo1", job);
                form.ui.cmdGenerate->click();
            });
            QueryForm::showModal(QueryKind::frmQueryCheckedOut);
            return ResultsWindow::opened(ResultsKind::frmReportToolsOutQresults);
        };
        QCOMPARE(generate("1250")->ui.dbgCustFound->rows().recordCount(), 2);
        // A further query takes the place of the first one's results.
        QCOMPARE(generate("12500")->ui.dbgCustFound->rows().recordCount(), 1);
        int visible = 0;
        for (const QWidget *window : QApplication::topLevelWidgets())
            visible += qobject_cast<const ResultsWindow *>(window) && window->isVisible() ? 1 : 0;
        QCOMPARE(visible, 1);
    }

    void queryGoesByWhatTheExplorerShows()
    {
        FakeExplorer explorer;
        for (const char *mode : {"type", "location"}) {
            explorer.mode = mode;
            whenModal<QueryForm>([](QueryForm &form) {
                box(form, "chkUsePart")->click();
                enter(form, "dbcPart1", "P-1");
                form.ui.cmdGenerate->click();
            });
            QueryForm::showModal(QueryKind::frmQueryTypeLoc);
            const ResultsWindow *results = ResultsWindow::opened(ResultsKind::frmReportAllToolsQresults);
            QCOMPARE(results->ui.dbcReport->text(), explorer.mode == "type" ? "Tools by Type" : "Tools by Location");
        }
    }

private:
    static void forms()
    {
        columns<const QueryKind *>("kind");
        for (const QueryKind *kind :
             {&QueryKind::frmQueryCheckedOut, &QueryKind::frmQueryTypeLoc, &QueryKind::frmReportAllTools,
              &QueryKind::frmQueryScrap, &QueryKind::frmReportJunkTools})
            row(kind->name, kind);
    }
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

    std::unique_ptr<ReportsCrib> m_crib;
};

QTEST_MAIN(TestQueryForm)
#include "tst_queryform.moc"
