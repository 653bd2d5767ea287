#include "reports/ResultsWindow.h"

#include "platform/reportcontrol/PreviewWindow.h"
#include "platform/reportcontrol/ReportControl.h"
#include "reports/QueryKind.h"
#include "reports/ResultsKind.h"
#include "tests/reports/ReportsCrib.h"
#include "tests/support/ScriptedUser.h"

#include <QClipboard>
#include <QHeaderView>

class TestResultsWindow : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_crib = std::make_unique<ReportsCrib>(); }
    void cleanup() { m_crib.reset(); }

    void columns_data();
    void columns();
    void defaultTemplateIsChosen();
    void withoutDefaultTemplate();
    void templateTextDecidesAboutPrinting();
    void sorting_data();
    void sorting();
    void headingsOfTheSuiteThatFail_data();
    void headingsOfTheSuiteThatFail();
    void selectedRowsMakeTheFormula_data();
    void selectedRowsMakeTheFormula();
    void thousandsOfRowsAreSelected();
    void numbersThatDoNotFit_data();
    void numbersThatDoNotFit();
    void shownRowsArePrinted();
    void placeOfThePreview_data();
    void placeOfThePreview();
    void failedRunIsExplained();
    void selectedRowsAreCopied();
    void redo();
    void windowIsDeletedWhenClosed();

private:
    ResultsWindow &open(const ResultsKind &kind, const QString &statement, const QString &formula = {},
                        const QueryKind *form = nullptr)
    {
        ResultsWindow::open(kind, {.form = form, .findsql = statement, .findCrp = formula}, openRecordset(statement));
        return *ResultsWindow::opened(kind);
    }
    static QString loans() { return QueryKind::frmQueryCheckedOut.statement + QString(" where CheckOutIn.ID > 0"); }
    static QStringList shown(const ResultsWindow &window, int column)
    {
        const QAbstractItemModel *rows = window.ui.dbgCustFound->model();
        QStringList texts;
        for (int row = 0; row < rows->rowCount(); ++row)
            texts.append(rows->index(row, column).data().toString());
        return texts;
    }
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

void TestResultsWindow::columns_data()
{
    QTest::addColumn<const ResultsKind *>("kind");
    QTest::addColumn<QString>("statement");
    QTest::addColumn<QString>("headings");
    QTest::addColumn<QString>("firstRow");

    QTest::newRow("loans") << &ResultsKind::frmReportToolsOutQresults << loans()
                           << "Check Out ID|Decription|Part Number|Employee|Job #|OH Operation|Check Out Date|Check In "
                              "Date"
                           << "1|Drill|P-1|MILLER ANNA|1250||2026-03-01 08:00:00|2026-03-02 09:30:00";
    QTest::newRow("scrapped tools") << &ResultsKind::frmReportToolsScrapQresults
                                    << QString(QueryKind::frmQueryScrap.statement)
                                    << "Scrap ID|Description|Part Number|Employee|Job #|OH Operation|Scrap Date|Scrap "
                                       "Reason"
                                    << "16384|Chisel|C-1|MILLER ANNA|1250||2026-03-03 14:00:00|Broken";
    QTest::newRow("junk tools") << &ResultsKind::frmReportToolsJunkQresults << "Select * FROM Scrap"
                                << "Scrap ID|Job #|Employee|Date|Description|Part Number|Manufacturer|Price|Scrap "
                                   "Date|Notes"
                                << "16384|1250|17|2026-03-03 00:00:00|Chisel|C-1|||2026-03-03 14:00:00|";
    QTest::newRow("employees") << &ResultsKind::frmEmpQresults << "Select * FROM Employee"
                               << "Employee #|Last Name|First Name|Status"
                               << "17|Miller|Anna|Active";
    const QString headings = "Tool Description|Part Number|Type|Location|Manufacturer";
    QTest::newRow("tools by type and location")
        << &ResultsKind::frmReportAllToolsQresults << QString(QueryKind::frmQueryTypeLoc.statement) << headings
        << "Drill|P-1|Wrenches|Cabinet A|Hilti";
    QTest::newRow("all tools, whose rows have no such fields")
        << &ResultsKind::frmReportAllToolsQresults << "Select * FROM Tools" << headings
        << "Drill|P-1|Wrenches|Cabinet A|Hilti";
}

void TestResultsWindow::columns()
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

void TestResultsWindow::defaultTemplateIsChosen()
{
    ResultsWindow &window = open(ResultsKind::frmReportToolsOutQresults, loans());
    QCOMPARE(window.ui.dbcReport->text(), "Tools Checked Out");
    QCOMPARE(window.ui.lbldesc->text(), "Loans of each employee");
    QVERIFY(window.ui.cmdPrintScr->isEnabled() && window.ui.cmdPrintSel->isEnabled());
    QCOMPARE(window.ui.dbcReport->count(), 3);
    QCOMPARE(window.ui.dbcReport->itemText(0), "Loan Sheet");
}

void TestResultsWindow::withoutDefaultTemplate()
{
    m_crib->run({"Update Reports set Default=0 where Module='Tools Scrapped'"});
    ScriptedUser user;
    user.answers(QMessageBox::Ok);
    ResultsWindow &window = open(ResultsKind::frmReportToolsScrapQresults, QueryKind::frmQueryScrap.statement);
    QCOMPARE(user.texts(),
             QStringList("You do not have a Default Report specified for this Module or the Default "
                         "Report is missing!"));
    QCOMPARE(user.seen[0].caption, "No Default Report");
    QCOMPARE(user.seen[0].icon, QMessageBox::Critical);
    QCOMPARE(window.ui.dbcReport->text() + window.ui.lbldesc->text(), QString());
    QVERIFY(!window.ui.cmdPrintScr->isEnabled());
    window.ui.dbcReport->setText("Tools Scrapped");
    QVERIFY(window.ui.cmdPrintScr->isEnabled());
}

void TestResultsWindow::templateTextDecidesAboutPrinting()
{
    ResultsWindow &window = open(ResultsKind::frmReportToolsOutQresults, loans());
    window.ui.dbcReport->setText({});
    QVERIFY(!window.ui.cmdPrintScr->isEnabled() && !window.ui.cmdPrintSel->isEnabled());
    QCOMPARE(window.ui.lbldesc->text(), QString());
    window.ui.dbcReport->setCurrentIndex(1);
    QVERIFY(window.ui.cmdPrintScr->isEnabled() && window.ui.cmdPrintSel->isEnabled());
    QCOMPARE(window.ui.lbldesc->text(), "Tools that are out, the longest first");
}

void TestResultsWindow::sorting_data()
{
    QTest::addColumn<const ResultsKind *>("kind");
    QTest::addColumn<QString>("statement");
    QTest::addColumn<QList<int>>("clicks");
    QTest::addColumn<QString>("ids");

    const ResultsKind *out = &ResultsKind::frmReportToolsOutQresults;
    QTest::newRow("the first column does nothing") << out << loans() << QList<int>{0} << "1 2 3 4";
    QTest::newRow("by last name") << out << loans() << QList<int>{3} << "2 1 3 4";
    QTest::newRow("by the last click only") << out << loans() << QList<int>{3, 7} << "2 3 1 4";
    QTest::newRow("a second click changes nothing") << out << loans() << QList<int>{5, 7, 7} << "2 3 1 4";
    const ResultsKind *junk = &ResultsKind::frmReportToolsJunkQresults;
    QTest::newRow("junk ascending") << junk << "Select * FROM Scrap" << QList<int>{1} << "16386 16385 16384";
    QTest::newRow("junk descending") << junk << "Select * FROM Scrap" << QList<int>{1, 1} << "16384 16385 16386";
    QTest::newRow("junk ascending again")
        << junk << "Select * FROM Scrap" << QList<int>{1, 1, 1} << "16386 16385 16384";
    QTest::newRow("another heading begins ascending")
        << junk << "Select * FROM Scrap where Job > 0" << QList<int>{2, 1} << "16385 16384";
    QTest::newRow("tools are not sorted")
        << &ResultsKind::frmReportAllToolsQresults << "Select * FROM Tools" << QList<int>{0, 4} << "1 2 3";
}

void TestResultsWindow::sorting()
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

void TestResultsWindow::headingsOfTheSuiteThatFail_data()
{
    QTest::addColumn<int>("column");
    QTest::newRow("Decription") << 1;
    QTest::newRow("Part Number") << 2;
}

void TestResultsWindow::headingsOfTheSuiteThatFail()
{
    QFETCH(int, column);
    ResultsWindow &window = open(ResultsKind::frmReportToolsOutQresults, loans());
    clickHeading(window, 3);
    const QStringList before = shown(window, 0);
    ScriptedUser user;
    user.answers(QMessageBox::Ok);
    clickHeading(window, column);
    QCOMPARE(user.texts(), QStringList("Too few parameters. Expected 1."));
    QCOMPARE(user.seen[0].icon, QMessageBox::Critical);
    QCOMPARE(shown(window, 0), before);
    QCOMPARE(window.ui.dbgCustFound->horizontalHeader()->sortIndicatorSection(), 3);
}

void TestResultsWindow::selectedRowsMakeTheFormula_data()
{
    QTest::addColumn<const ResultsKind *>("kind");
    QTest::addColumn<QString>("statement");
    QTest::addColumn<QString>("formula");
    QTest::newRow("loans") << &ResultsKind::frmReportToolsOutQresults << loans()
                           << "{CheckOutIn.id} = 2 or {CheckOutIn.id} = 1";
    QTest::newRow("scrapped tools") << &ResultsKind::frmReportToolsScrapQresults
                                    << QString(QueryKind::frmQueryScrap.statement)
                                    << "{Scrap.id} = 16385 or {Scrap.id} = 16384";
    QTest::newRow("junk tools by job") << &ResultsKind::frmReportToolsJunkQresults << "Select * FROM Scrap"
                                       << "{Job.JobNo} = 900 or {Job.Jobno} = 1250";
    QTest::newRow("employees") << &ResultsKind::frmEmpQresults << "Select * FROM Employee"
                               << "{Employee.Empid} = 18 or {Employee.Empid} = 17";
    QTest::newRow("tools") << &ResultsKind::frmReportAllToolsQresults << QString(QueryKind::frmQueryTypeLoc.statement)
                           << "{Tools.ID} = 2 OR {Tools.ID} = 1";
}

void TestResultsWindow::selectedRowsMakeTheFormula()
{
    QFETCH(const ResultsKind *, kind);
    QFETCH(QString, statement);
    ResultsWindow &window = open(*kind, statement);
    ScriptedUser user;
    user.answers(QMessageBox::Ok, 2);
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

void TestResultsWindow::thousandsOfRowsAreSelected()
{
    m_crib->run(QStringList(3000, ReportsCrib::loan("Saw", "17", 1250, 4, "2026-03-04 11:00:00", {})));
    ResultsWindow &window = open(ResultsKind::frmReportToolsOutQresults, loans());
    select(window, {3003});
    QTest::keyClick(window.ui.dbgCustFound, Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(window.ui.dbgCustFound->selectedRows().size(), 3004);
    ScriptedUser user;
    user.answers(QMessageBox::Ok);
    window.ui.cmdPrintSel->click();
    QVERIFY(control(window)->selectionFormula.startsWith("{CheckOutIn.id} = 3004 or {CheckOutIn.id} = 1 or "));
    QVERIFY(control(window)->selectionFormula.endsWith(" or {CheckOutIn.id} = 3003"));
}

void TestResultsWindow::numbersThatDoNotFit_data()
{
    QTest::addColumn<const ResultsKind *>("kind");
    QTest::addColumn<QString>("statement");
    QTest::addColumn<QString>("message");
    QTest::newRow("above 16 bits") << &ResultsKind::frmReportToolsOutQresults
                                   << QueryKind::frmQueryCheckedOut.statement + QString(" where CheckOutIn.ID = 40000")
                                   << "Overflow";
    QTest::newRow("none at all") << &ResultsKind::frmReportToolsJunkQresults << "Select * FROM Scrap where Job Is Null"
                                 << "A selected record has no Job.";
}

void TestResultsWindow::numbersThatDoNotFit()
{
    QFETCH(const ResultsKind *, kind);
    QFETCH(QString, statement);
    QFETCH(QString, message);
    m_crib->run({"INSERT INTO CheckOutIn (ID,Tool_Id,Active) VALUES(40000,1,0)"});
    ResultsWindow &window = open(*kind, statement);
    ScriptedUser user;
    user.answers(QMessageBox::Ok);
    select(window, {0});
    window.ui.cmdPrintSel->click();
    QCOMPARE(user.texts(), QStringList(message));
    QVERIFY(!control(window)->preview());
}

void TestResultsWindow::shownRowsArePrinted()
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
    ScriptedUser user;
    user.answers(QMessageBox::Ok);
    preview->ui.mnuFilePrint->trigger();
    QVERIFY2(user.texts().value(0).startsWith("20526:  No Default Printer."), "this machine has a printer");

    window.ui.cmdCancel->click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!preview);
}

void TestResultsWindow::placeOfThePreview_data()
{
    QTest::addColumn<QSize>("frame");
    QTest::addColumn<QRect>("place");
    QTest::newRow("four fifths, centred from top to bottom, left of the middle otherwise")
        << QSize(1000, 700) << QRect(65, 70, 800, 560);
    QTest::newRow("rounded, halves of the rest cut off") << QSize(1003, 701) << QRect(65, 70, 802, 561);
    QTest::newRow("half a pixel to the even neighbour, down") << QSize(500, 303) << QRect(32, 30, 400, 242);
    QTest::newRow("half a pixel to the even neighbour, up") << QSize(700, 404) << QRect(46, 40, 560, 323);
}

void TestResultsWindow::placeOfThePreview()
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

void TestResultsWindow::failedRunIsExplained()
{
    ResultsWindow &window = open(ResultsKind::frmReportToolsOutQresults, loans());
    ScriptedUser user;
    user.answers(QMessageBox::Ok);
    window.ui.cmdPrintScr->click();
    QCOMPARE(user.texts(), QStringList("20504:  Report Not Found.  You have specified a report that does not exist."));
    QVERIFY(window.isVisible());
}

void TestResultsWindow::selectedRowsAreCopied()
{
    m_crib->run({"Update Tools set Manufacturer='Two\tcells' where ID=3"});
    ResultsWindow &window = open(ResultsKind::frmReportAllToolsQresults, "Select * FROM Tools");
    select(window, {2, 0});
    QTest::keyClick(window.ui.dbgCustFound, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text(),
             "Tool Description\tPart Number\tType\tLocation\tManufacturer\n"
             "Drill\tP-1\tWrenches\tCabinet A\tHilti\n"
             "Saw\tP-3\tTorque wrenches\tCabinet A\tTwo cells\n");
}

void TestResultsWindow::redo()
{
    QPointer<ResultsWindow> window =
        &open(ResultsKind::frmReportToolsOutQresults, loans(), {}, &QueryKind::frmQueryCheckedOut);
    bool asked = false;
    whenModal<QueryForm>([&](QueryForm &form) {
        asked = form.objectName() == "frmQueryCheckedOut";
        QVERIFY(!ResultsWindow::opened(ResultsKind::frmReportToolsOutQresults));
    });
    window->ui.cmdRedo->click();
    QVERIFY(asked);
}

void TestResultsWindow::windowIsDeletedWhenClosed()
{
    QPointer<ResultsWindow> window = &open(ResultsKind::frmEmpQresults, "Select * FROM Employee");
    QTest::keyClick(window, Qt::Key_Escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!window);
    QVERIFY(!ResultsWindow::opened(ResultsKind::frmEmpQresults));
}

QTEST_MAIN(TestResultsWindow)
#include "tst_resultswindow.moc"
