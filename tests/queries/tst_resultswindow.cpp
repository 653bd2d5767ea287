#include "queries/ResultsWindow.h"

#include "platform/reportcontrol/PreviewWindow.h"
#include "platform/reportcontrol/ReportControl.h"
#include "queries/QueryKind.h"
#include "queries/ResultsKind.h"
#include "tests/reports/ReportsCrib.h"

#include <QClipboard>
#include <QFileDialog>
#include <QHeaderView>
#include <QLineEdit>

class TestResultsWindow : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_crib.emplace(); }

    void rowsOfEachWindow_data()
    {
        row("loans", &ResultsKind::frmReportToolsOutQresults, loans(),
            "Check Out ID|Decription|Part Number|Employee|Job #|OH Operation|Check Out Date|Check In Date",
            "1|Drill|P-1|MILLER ANNA|1250||2026-03-01 08:00:00|2026-03-02 09:30:00",
            "{CheckOutIn.id} = 2 or {CheckOutIn.id} = 1");
        row("scrapped tools", &ResultsKind::frmReportToolsScrapQresults, QString(QueryKind::frmQueryScrap.statement),
            "Scrap ID|Description|Part Number|Employee|Job #|OH Operation|Scrap Date|Scrap Reason",
            "16384|Chisel|C-1|MILLER ANNA|1250||2026-03-03 14:00:00|Broken",
            "{Scrap.id} = 16385 or {Scrap.id} = 16384");
        row("junk tools", &ResultsKind::frmReportToolsJunkQresults, "Select * FROM Scrap",
            "Scrap ID|Job #|Employee|Date|Description|Part Number|Manufacturer|Price|Scrap Date|Notes",
            "16384|1250|17|2026-03-03 00:00:00|Chisel|C-1|||2026-03-03 14:00:00|",
            "{Job.JobNo} = 900 or {Job.Jobno} = 1250");
        row("employees", &ResultsKind::frmEmpQresults, "Select * FROM Employee",
            "Employee #|Last Name|First Name|Status", "17|Miller|Anna|Active",
            "{Employee.Empid} = 18 or {Employee.Empid} = 17");
        for (const QString statement : {QueryKind::frmQueryTypeLoc.statement, "Select * FROM Tools"})
            row(qPrintable(statement), &ResultsKind::frmReportAllToolsQresults, statement,
                "Tool Description|Part Number|Type|Location|Manufacturer", "Drill|P-1|Wrenches|Cabinet A|Hilti",
                "{Tools.ID} = 2 OR {Tools.ID} = 1");
    }

    void rowsOfEachWindow()
    {
        const auto [kind, statement, headings, firstRow, formula] =
            fetched<const ResultsKind *, QString, QString, QString, QString>();
        ResultsWindow &window = open(*kind, statement);
        const QAbstractItemModel *rows = window.ui.dbgCustFound->model();
        QString top, first;
        for (int column = 0; column < rows->columnCount(); ++column) {
            top += rows->headerData(column, Qt::Horizontal).toString() + '|';
            first += rows->index(0, column).data().toString() + '|';
        }
        QCOMPARE(top, headings + '|');
        QCOMPARE(first, firstRow + '|');
        QCOMPARE(window.ui.Label1->text(), QString::number(rows->rowCount()) + "  Records Found Matching Query.");

        ScriptedUser user(QMessageBox::Ok, 2);
        window.ui.cmdPrintSel->click();
        QCOMPARE(user.texts(), QStringList("No Records Selected!"));
        // In the order of selection, without what was taken out again.
        select(window, {2, 1});
        window.ui.dbgCustFound->selectionModel()->select(rows->index(2, 0),
                                                         QItemSelectionModel::Deselect | QItemSelectionModel::Rows);
        select(window, {0});
        window.ui.cmdPrintSel->click();
        QCOMPARE(control(window)->selectionFormula, formula);
    }

    void withoutDefaultTemplate()
    {
        m_crib->run({"Update Reports set Default=0 where Module='Tools Scrapped'"});
        ScriptedUser user(QMessageBox::Ok);
        ResultsWindow &window = open(ResultsKind::frmReportToolsScrapQresults, QueryKind::frmQueryScrap.statement);
        QCOMPARE(user.boxes(),
                 QStringList("No Default Report (critical): You do not have a Default Report specified for this Module "
                             "or the Default Report is missing! [OK]"));
        QCOMPARE(window.ui.dbcReport->text() + window.ui.lbldesc->text(), QString());
        QVERIFY(!window.ui.cmdPrintScr->isEnabled() && !window.ui.cmdPrintSel->isEnabled());
        window.ui.dbcReport->setText("Tools Scrapped");
        QVERIFY(window.ui.cmdPrintScr->isEnabled() && window.ui.cmdPrintSel->isEnabled());
        QCOMPARE(window.ui.lbldesc->text(), "Scrapped tools by reason, with their price");
    }

    void sorting_data()
    {
        const ResultsKind *out = &ResultsKind::frmReportToolsOutQresults;
        row("by last name", out, loans(), QList<int>{3}, "2 1 3 4");
        row("by the last click only", out, loans(), QList<int>{3, 7}, "2 3 1 4");
        const ResultsKind *junk = &ResultsKind::frmReportToolsJunkQresults;
        row("junk descending", junk, "Select * FROM Scrap", QList<int>{1, 1}, "16384 16385 16386");
        row("junk ascending again", junk, "Select * FROM Scrap", QList<int>{1, 1, 1}, "16386 16385 16384");
        row("another heading begins ascending", junk, "Select * FROM Scrap where Job > 0", QList<int>{2, 1},
            "16385 16384");
        row("tools are not sorted", &ResultsKind::frmReportAllToolsQresults, "Select * FROM Tools", QList<int>{0, 4},
            "1 2 3");
    }

    void sorting()
    {
        const auto [kind, statement, clicks, ids] = fetched<const ResultsKind *, QString, QList<int>, QString>();
        ResultsWindow &window = open(*kind, statement);
        for (const int column : clicks)
            clickHeading(window, column);
        QStringList shown;
        const Recordset &rows = window.ui.dbgCustFound->rows();
        for (int row = 0; row < rows.recordCount(); ++row)
            shown.append(rows.at(row, rows.fieldIndex(u"ID")).toText());
        QCOMPARE(shown.join(' '), ids);
    }

    void headingsOfTheSuiteThatFail()
    {
        ResultsWindow &window = open(ResultsKind::frmReportToolsOutQresults, loans());
        clickHeading(window, 3);
        const QStringList before = textsOf(window.ui.dbgCustFound->model());
        ScriptedUser user(QMessageBox::Ok, 2);
        clickHeading(window, 1); // Decription
        clickHeading(window, 2); // Part Number
        QCOMPARE(user.texts(), QStringList(2, "Too few parameters. Expected 1."));
        QCOMPARE(textsOf(window.ui.dbgCustFound->model()), before);
        QCOMPARE(window.ui.dbgCustFound->horizontalHeader()->sortIndicatorSection(), 3);
    }

    void recordsWithoutANumberAreNotPrinted()
    {
        ResultsWindow &window = open(ResultsKind::frmReportToolsJunkQresults, "Select * FROM Scrap where Job Is Null");
        ScriptedUser user(QMessageBox::Ok);
        select(window, {0});
        window.ui.cmdPrintSel->click();
        QCOMPARE(user.texts(), QStringList("A selected record has no Job."));
        QVERIFY(!control(window)->preview());
    }

    void shownRowsArePrinted()
    {
        m_crib->addTemplate("LoanSheet.rpt", "<from table=\"CheckOutIn\"/>", "{CheckOutIn.ID}");
        m_crib->frame.resize(1003, 404);
        ScriptedUser user(QMessageBox::Ok);
        ResultsWindow &window = open(ResultsKind::frmReportToolsOutQresults, loans(), "{CheckOutIn.ID} in 1 to 3",
                                     &QueryKind::frmQueryCheckedOut);
        QCOMPARE(window.ui.dbcReport->text(), "Tools Checked Out"); // the default
        QCOMPARE(window.ui.lbldesc->text(), "Loans of each employee");
        window.ui.dbcReport->setText("Loan Sheet");
        window.ui.cmdPrintScr->click();
        const ReportControl &crpMain = *control(window);
        QCOMPARE(crpMain.windowTitle, "Query Results");
        QCOMPARE(crpMain.reportFile, m_crib->folder.path() + "\\LoanSheet.rpt");
        QCOMPARE(crpMain.selectionFormula, "{CheckOutIn.ID} in 1 to 3");
        // Four fifths of the frame, rounded; halves of the rest cut off, left of the middle.
        QCOMPARE(QRect(crpMain.windowLeft, crpMain.windowTop, crpMain.windowWidth, crpMain.windowHeight),
                 QRect(65, 40, 802, 323));
        QPointer<PreviewWindow> preview = crpMain.preview();
        QVERIFY(preview && preview->isVisible() && window.isVisible());
        preview->ui.mnuFilePrint->trigger();
        QVERIFY2(user.texts().value(0).startsWith("20526:  No Default Printer."), "this machine has a printer");

        whenModal<QueryForm>([&](QueryForm &form) {
            QCOMPARE(form.objectName(), "frmQueryCheckedOut");
            QVERIFY(!preview || !preview->isVisible());
            QVERIFY(!ResultsWindow::opened(ResultsKind::frmReportToolsOutQresults));
        });
        window.ui.cmdRedo->click();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!preview);
    }

    void selectedRowsAreCopied()
    {
        m_crib->run({"Update Tools set Manufacturer='Two\t\"cells\"', PartNumber='3/4\"  x' where ID=3"});
        ResultsWindow &window = open(ResultsKind::frmReportAllToolsQresults, "Select * FROM Tools");
        select(window, {2, 0});
        QTest::keyClick(window.ui.dbgCustFound, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(),
                 "Tool Description\tPart Number\tType\tLocation\tManufacturer\n"
                 "Drill\tP-1\tWrenches\tCabinet A\tHilti\n"
                 "Saw\t3/4\"  x\tTorque wrenches\tCabinet A\t\"Two\t\"\"cells\"\"\"\n");
    }

    void rowsAreAddedUpAndSaved()
    {
        m_crib->run({"Update Scrap set PricePer=0.1, Notes='=1+1' where ID=16384",
                     "Update Scrap set PricePer=1234.2 where ID=16385"});
        ResultsWindow &window = open(ResultsKind::frmReportToolsJunkQresults, "Select * FROM Scrap where ID > 0");
        QCOMPARE(window.ui.lblTotals->text(), "3 rows shown, $1,234.30");
        select(window, {0});
        QCOMPARE(window.ui.lblTotals->text(), "3 rows shown, $1,234.30; 1 selected, $0.10");

        BoundGrid &grid = *window.ui.dbgCustFound;
        grid.setCurrentIndex(grid.model()->index(0, 9));
        for (int place = 9; place > 0; --place)
            QTest::keyClick(&grid, Qt::Key_Left, Qt::ControlModifier | Qt::ShiftModifier);
        clickHeading(window, 7);
        const QString path = m_crib->folder.filePath("rows.csv");
        whenModal<QFileDialog>([&](QFileDialog &dialog) {
            dialog.findChild<QLineEdit *>("fileNameEdit")->setText(path);
            static_cast<QDialog &>(dialog).accept();
        });
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QTest::keyClick(&window, Qt::Key_S, Qt::ControlModifier);
        QFile file(path);
        QVERIFY(file.open(QFile::ReadOnly));
        QCOMPARE(
            file.readAll().split('\n').mid(0, 3),
            (QByteArrayList{"\xEF\xBB\xBFNotes,Scrap ID,Job #,Employee,Date,Description,Part Number,Manufacturer,Price,"
                            "Scrap Date\r",
                            ",16386,,17,2026-03-03 00:00:00,Chisel,C-1,,,2026-03-03 14:00:00\r",
                            "'=1+1,16384,1250,17,2026-03-03 00:00:00,Chisel,C-1,,0.1,2026-03-03 14:00:00\r"}));
    }

private:
    ResultsWindow &open(const ResultsKind &kind, const QString &statement, const QString &formula = {},
                        const QueryKind *form = nullptr)
    {
        ResultsWindow::open(kind, {.form = form, .findsql = statement, .findCrp = formula}, openRecordset(statement));
        return *ResultsWindow::opened(kind);
    }
    static QString loans() { return QueryKind::frmQueryCheckedOut.statement + QString(" where CheckOutIn.ID > 0"); }
    static void clickHeading(ResultsWindow &window, int column)
    {
        QHeaderView *header = window.ui.dbgCustFound->horizontalHeader();
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                          {header->sectionViewportPosition(column) + 5, header->height() / 2});
    }
    static void select(ResultsWindow &window, const QList<int> &rows)
    {
        for (const int row : rows)
            window.ui.dbgCustFound->selectionModel()->select(window.ui.dbgCustFound->model()->index(row, 0),
                                                             QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    static ReportControl *control(ResultsWindow &window) { return window.findChild<ReportControl *>("crpMain"); }

    std::optional<ReportsCrib> m_crib;
};

QTEST_MAIN(TestResultsWindow)
#include "tst_resultswindow.moc"
