#include "reports/ResultsWindow.h"
#include "tests/support/DataRows.h"

#include "platform/reportcontrol/PreviewWindow.h"
#include "platform/reportcontrol/ReportControl.h"
#include "reports/QueryKind.h"
#include "reports/ResultsKind.h"
#include "tests/reports/ReportsCrib.h"
#include "tests/support/ModelTexts.h"
#include "tests/support/ScriptedUser.h"

#include <QClipboard>
#include <QHeaderView>

class TestResultsWindow : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_crib = std::make_unique<ReportsCrib>(); }
    void cleanup() { m_crib.reset(); }

    void columnsOfEachWindow_data()
    {
        columns<const ResultsKind *, QString, QString, QString>("kind", "statement", "headings", "firstRow");
        row("loans", &ResultsKind::frmReportToolsOutQresults, loans(),
            "Check Out ID|Decription|Part Number|Employee|Job #|OH Operation|Check Out Date|Check In Date",
            "1|Drill|P-1|MILLER ANNA|1250||2026-03-01 08:00:00|2026-03-02 09:30:00");
        row("scrapped tools", &ResultsKind::frmReportToolsScrapQresults, QString(QueryKind::frmQueryScrap.statement),
            "Scrap ID|Description|Part Number|Employee|Job #|OH Operation|Scrap Date|Scrap Reason",
            "16384|Chisel|C-1|MILLER ANNA|1250||2026-03-03 14:00:00|Broken");
        row("junk tools", &ResultsKind::frmReportToolsJunkQresults, "Select * FROM Scrap",
            "Scrap ID|Job #|Employee|Date|Description|Part Number|Manufacturer|Price|Scrap Date|Notes",
            "16384|1250|17|2026-03-03 00:00:00|Chisel|C-1|||2026-03-03 14:00:00|");
        row("employees", &ResultsKind::frmEmpQresults, "Select * FROM Employee",
            "Employee #|Last Name|First Name|Status", "17|Miller|Anna|Active");
        const QString headings = "Tool Description|Part Number|Type|Location|Manufacturer";
        row("tools by type and location", &ResultsKind::frmReportAllToolsQresults,
            QString(QueryKind::frmQueryTypeLoc.statement), headings, "Drill|P-1|Wrenches|Cabinet A|Hilti");
        row("all tools, whose rows have no such fields", &ResultsKind::frmReportAllToolsQresults, "Select * FROM Tools",
            headings, "Drill|P-1|Wrenches|Cabinet A|Hilti");
    }

    void columnsOfEachWindow()
    {
        QFETCH(const ResultsKind *, kind);
        QFETCH(QString, statement);
        ResultsWindow &window = open(*kind, statement);
        QCOMPARE(window.objectName(), kind->name);
        QCOMPARE(window.windowTitle(), kind->caption);
        QVERIFY(window.findChild<BoundGrid *>(kind->grid));
        const QAbstractItemModel *rows = window.ui.dbgCustFound->model();
        QStringList headings, firstRow;
        for (int column = 0; column < rows->columnCount(); ++column) {
            headings.append(rows->headerData(column, Qt::Horizontal).toString());
            firstRow.append(rows->index(0, column).data().toString());
        }
        QTEST(headings.join('|'), "headings");
        QTEST(firstRow.join('|'), "firstRow");
        QCOMPARE(window.ui.Label1->text(), QString::number(rows->rowCount()) + "  Records Found Matching Query.");
    }

    void defaultTemplateIsChosen()
    {
        ResultsWindow &window = open(ResultsKind::frmReportToolsOutQresults, loans());
        QCOMPARE(window.ui.dbcReport->text(), "Tools Checked Out");
        QCOMPARE(window.ui.lbldesc->text(), "Loans of each employee");
        QVERIFY(window.ui.cmdPrintScr->isEnabled() && window.ui.cmdPrintSel->isEnabled());
        QCOMPARE(window.ui.dbcReport->count(), 5);
        QCOMPARE(window.ui.dbcReport->itemText(0), "Loan Sheet");
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
        QVERIFY(!window.ui.cmdPrintScr->isEnabled());
        window.ui.dbcReport->setText("Tools Scrapped");
        QVERIFY(window.ui.cmdPrintScr->isEnabled());
    }

    void templateTextDecidesAboutPrinting()
    {
        ResultsWindow &window = open(ResultsKind::frmReportToolsOutQresults, loans());
        window.ui.dbcReport->setText({});
        QVERIFY(!window.ui.cmdPrintScr->isEnabled() && !window.ui.cmdPrintSel->isEnabled());
        QCOMPARE(window.ui.lbldesc->text(), QString());
        QTest::keyClicks(window.ui.dbcReport, "none");
        QVERIFY(window.ui.cmdPrintScr->isEnabled() && window.ui.lbldesc->text().isEmpty());
        window.ui.dbcReport->setCurrentIndex(1);
        QVERIFY(window.ui.cmdPrintScr->isEnabled() && window.ui.cmdPrintSel->isEnabled());
        QCOMPARE(window.ui.lbldesc->text(), "Tools that are out, the longest first");
    }

    void sorting_data()
    {
        columns<const ResultsKind *, QString, QList<int>, QString>("kind", "statement", "clicks", "ids");
        const ResultsKind *out = &ResultsKind::frmReportToolsOutQresults;
        row("the first column does nothing", out, loans(), QList<int>{0}, "1 2 3 4");
        row("by last name", out, loans(), QList<int>{3}, "2 1 3 4");
        row("by the last click only", out, loans(), QList<int>{3, 7}, "2 3 1 4");
        row("a second click changes nothing", out, loans(), QList<int>{5, 7, 7}, "2 3 1 4");
        const ResultsKind *junk = &ResultsKind::frmReportToolsJunkQresults;
        row("junk ascending", junk, "Select * FROM Scrap", QList<int>{1}, "16386 16385 16384");
        row("junk descending", junk, "Select * FROM Scrap", QList<int>{1, 1}, "16384 16385 16386");
        row("junk ascending again", junk, "Select * FROM Scrap", QList<int>{1, 1, 1}, "16386 16385 16384");
        row("another heading begins ascending", junk, "Select * FROM Scrap where Job > 0", QList<int>{2, 1},
            "16385 16384");
        row("tools are not sorted", &ResultsKind::frmReportAllToolsQresults, "Select * FROM Tools", QList<int>{0, 4},
            "1 2 3");
    }

    void sorting()
    {
        QFETCH(const ResultsKind *, kind);
        QFETCH(QString, statement);
        QFETCH(QList<int>, clicks);
        ResultsWindow &window = open(*kind, statement);
        for (const int column : clicks)
            clickHeading(window, column);
        QStringList ids;
        const Recordset &rows = window.ui.dbgCustFound->rows();
        for (int row = 0; row < rows.recordCount(); ++row)
            ids.append(rows.at(row, rows.fieldIndex(u"ID")).toText());
        QTEST(ids.join(' '), "ids");
    }

    void headingsOfTheSuiteThatFail()
    {
        ResultsWindow &window = open(ResultsKind::frmReportToolsOutQresults, loans());
        clickHeading(window, 3);
        const QStringList before = textsOf(window.ui.dbgCustFound->model());
        for (const int column : {1, 2}) { // Decription, Part Number
            ScriptedUser user(QMessageBox::Ok);
            clickHeading(window, column);
            QCOMPARE(user.texts(), QStringList("Too few parameters. Expected 1."));
            QCOMPARE(user.seen[0].icon, QMessageBox::Critical);
            QCOMPARE(textsOf(window.ui.dbgCustFound->model()), before);
            QCOMPARE(window.ui.dbgCustFound->horizontalHeader()->sortIndicatorSection(), 3);
        }
    }

    void selectedRowsMakeTheFormula_data()
    {
        columns<const ResultsKind *, QString, QString>("kind", "statement", "formula");
        row("loans", &ResultsKind::frmReportToolsOutQresults, loans(), "{CheckOutIn.id} = 2 or {CheckOutIn.id} = 1");
        row("scrapped tools", &ResultsKind::frmReportToolsScrapQresults, QString(QueryKind::frmQueryScrap.statement),
            "{Scrap.id} = 16385 or {Scrap.id} = 16384");
        row("junk tools by job", &ResultsKind::frmReportToolsJunkQresults, "Select * FROM Scrap",
            "{Job.JobNo} = 900 or {Job.Jobno} = 1250");
        row("employees", &ResultsKind::frmEmpQresults, "Select * FROM Employee",
            "{Employee.Empid} = 18 or {Employee.Empid} = 17");
        row("tools", &ResultsKind::frmReportAllToolsQresults, QString(QueryKind::frmQueryTypeLoc.statement),
            "{Tools.ID} = 2 OR {Tools.ID} = 1");
    }

    void selectedRowsMakeTheFormula()
    {
        QFETCH(const ResultsKind *, kind);
        QFETCH(QString, statement);
        ResultsWindow &window = open(*kind, statement);
        ScriptedUser user(QMessageBox::Ok, 2);
        window.ui.cmdPrintSel->click();
        QCOMPARE(user.texts(), QStringList("No Records Selected!"));
        // In the order of selection, without what was taken out again.
        select(window, {2, 1});
        window.ui.dbgCustFound->selectionModel()->select(window.ui.dbgCustFound->model()->index(2, 0),
                                                         QItemSelectionModel::Deselect | QItemSelectionModel::Rows);
        select(window, {0});
        window.ui.cmdPrintSel->click();
        QTEST(control(window)->selectionFormula, "formula");
        QCOMPARE(control(window)->windowTitle, "Selected Records");
    }

    void thousandsOfRowsAreSelected()
    {
        m_crib->insert(ReportsCrib::loans, QStringList(3000, "1,'P-1','Saw',17,1250,4,#2026-03-04 11:00:00#,Null"));
        ResultsWindow &window = open(ResultsKind::frmReportToolsOutQresults, loans());
        select(window, {3003});
        QTest::keyClick(window.ui.dbgCustFound, Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(window.ui.dbgCustFound->selectedRows().size(), 3004);
        ScriptedUser user(QMessageBox::Ok);
        window.ui.cmdPrintSel->click();
        QVERIFY(control(window)->selectionFormula.startsWith("{CheckOutIn.id} = 3004 or {CheckOutIn.id} = 1 or "));
        QVERIFY(control(window)->selectionFormula.endsWith(" or {CheckOutIn.id} = 3003"));
    }

    void numbersThatDoNotFit_data()
    {
        columns<const ResultsKind *, QString, QString>("kind", "statement", "message");
        row("above 16 bits", &ResultsKind::frmReportToolsOutQresults,
            QueryKind::frmQueryCheckedOut.statement + QString(" where CheckOutIn.ID = 40000"), "Overflow");
        row("none at all", &ResultsKind::frmReportToolsJunkQresults, "Select * FROM Scrap where Job Is Null",
            "A selected record has no Job.");
    }

    void numbersThatDoNotFit()
    {
        QFETCH(const ResultsKind *, kind);
        QFETCH(QString, statement);
        QFETCH(QString, message);
        m_crib->run({"INSERT INTO CheckOutIn (ID,Tool_Id,Active) VALUES(40000,1,0)"});
        ResultsWindow &window = open(*kind, statement);
        ScriptedUser user(QMessageBox::Ok);
        select(window, {0});
        window.ui.cmdPrintSel->click();
        QCOMPARE(user.texts(), QStringList(message));
        QVERIFY(user.seen[0].detail.contains("Report Shown"));
        QVERIFY(!control(window)->preview());
    }

    void shownRowsArePrinted()
    {
        m_crib->addTemplate("ToolsCheckedOut.rpt", "<from table=\"CheckOutIn\"/>", "{CheckOutIn.ID}");
        ResultsWindow &window = open(ResultsKind::frmReportToolsOutQresults, loans(), "{CheckOutIn.ID} in 1 to 3");
        window.ui.cmdPrintScr->click();
        const ReportControl &crpMain = *control(window);
        QCOMPARE(crpMain.windowTitle, "Query Results");
        QCOMPARE(crpMain.reportFile, m_crib->folder.path() + "\\ToolsCheckedOut.rpt");
        QCOMPARE(crpMain.selectionFormula, "{CheckOutIn.ID} in 1 to 3");
        QCOMPARE(crpMain.destination, int(ReportControl::toPreview));
        QPointer<PreviewWindow> preview = crpMain.preview();
        QVERIFY(preview && preview->isVisible());
        QCOMPARE(preview->windowTitle(), "Query Results");
        QVERIFY(window.isVisible());
        ScriptedUser user(QMessageBox::Ok);
        preview->ui.mnuFilePrint->trigger();
        QVERIFY2(user.texts().value(0).startsWith("20526:  No Default Printer."), "this machine has a printer");

        window.ui.cmdCancel->click();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!preview);
    }

    void placeOfThePreview_data()
    {
        columns<QSize, QRect>("frame", "place");
        row("four fifths, centred from top to bottom, left of the middle otherwise", QSize(1000, 700),
            QRect(65, 70, 800, 560));
        row("rounded, halves of the rest cut off", QSize(1003, 701), QRect(65, 70, 802, 561));
        row("half a pixel to the even neighbour, down", QSize(500, 303), QRect(32, 30, 400, 242));
        row("half a pixel to the even neighbour, up", QSize(700, 404), QRect(46, 40, 560, 323));
    }

    void placeOfThePreview()
    {
        QFETCH(QSize, frame);
        m_crib->frame.resize(frame);
        m_crib->addTemplate("ToolsCheckedOut.rpt", "<from table=\"CheckOutIn\"/>", "{CheckOutIn.ID}");
        ResultsWindow &window = open(ResultsKind::frmReportToolsOutQresults, loans());
        window.ui.cmdPrintScr->click();
        const ReportControl &crpMain = *control(window);
        const QRect place(crpMain.windowLeft, crpMain.windowTop, crpMain.windowWidth, crpMain.windowHeight);
        QTEST(place, "place");
    }

    void failedRunIsExplained()
    {
        ResultsWindow &window = open(ResultsKind::frmReportToolsOutQresults, loans());
        ScriptedUser user(QMessageBox::Ok, 2);
        window.ui.cmdPrintScr->click();
        m_crib->addTemplate("ToolsCheckedOut.rpt", "<from table=\"CheckOutIn\"/>\n<sort/>", "x");
        window.ui.cmdPrintScr->click();
        QCOMPARE(user.texts()[0], "20504:  Report Not Found.  You have specified a report that does not exist.");
        QVERIFY(user.seen[1].detail.contains("line 2"));
        QVERIFY(window.isVisible());
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

    void redo()
    {
        QPointer<ResultsWindow> window =
            &open(ResultsKind::frmReportToolsOutQresults, loans(), {}, &QueryKind::frmQueryCheckedOut);
        m_crib->addTemplate("ToolsCheckedOut.rpt", "<from table=\"CheckOutIn\"/>", "{CheckOutIn.ID}");
        window->ui.cmdPrintScr->click();
        const QPointer<PreviewWindow> preview = control(*window)->preview();
        QVERIFY(preview);
        bool asked = false;
        whenModal<QueryForm>([&](QueryForm &form) {
            asked = form.objectName() == "frmQueryCheckedOut";
            QVERIFY(!preview || !preview->isVisible());
            QVERIFY(!ResultsWindow::opened(ResultsKind::frmReportToolsOutQresults));
        });
        window->ui.cmdRedo->click();
        QVERIFY(asked);
    }

    void windowIsDeletedWhenClosed()
    {
        QPointer<ResultsWindow> window = &open(ResultsKind::frmEmpQresults, "Select * FROM Employee");
        QTest::keyClick(window, Qt::Key_Escape);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!window);
        QVERIFY(!ResultsWindow::opened(ResultsKind::frmEmpQresults));
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

    std::unique_ptr<ReportsCrib> m_crib;
};

QTEST_MAIN(TestResultsWindow)
#include "tst_resultswindow.moc"
