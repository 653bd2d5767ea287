#include "bench/Case.h"

#include "bench/Crib.h"
#include "db/Schema.h"
#include "db/Session.h"
#include "desk/DeskWindow.h"
#include "explorer/frmFind.h"
#include "platform/reportengine/Report.h"
#include "platform/system/Clock.h"
#include "queries/QueryKind.h"
#include "queries/ResultsKind.h"
#include "queries/ResultsWindow.h"
#include "transactions/LoanChoices.h"
#include "transactions/frmCheckIn.h"
#include "transactions/frmCheckOut.h"

#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QImage>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPainter>

namespace {

QByteArray text(int number) { return QByteArray::number(number); }

// Whatever waits to be painted; views lay themselves out in a first round of events.
void paint()
{
    QApplication::processEvents();
    QApplication::processEvents();
}

// Trees

void readFolder(Floor &floor, int id)
{
    if (id != 0)
        floor.drain("SELECT Description FROM Types WHERE ID = " + text(id) + " ORDER BY Description");
    floor.read("SELECT * FROM Types WHERE Parent = " + text(id) + " ORDER BY Description",
               [&](sqlite3_stmt *row) { readFolder(floor, sqlite3_column_int(row, 0)); });
}

void readTypes(Crib &crib)
{
    crib.floor().number("SELECT Count(*) AS cnt FROM Types");
    readFolder(crib.floor(), 0);
    crib.floor().drain("Select * from types where parent = 0 ORDER BY description");
}

// The view lets the explorer be painted before it is built.
void readToolsOut(Crib &crib)
{
    crib.explorer().repaint();
    constexpr auto descriptions = "SELECT Distinct Description COLLATE NOCASE FROM Tools WHERE Out=-1";
    crib.floor().drain(descriptions);
    crib.floor().drain(descriptions); // the list of the root's contents
}

constexpr auto scrapKinds = "SELECT distinct Scrap.LineItemTypeID, LineItemType.Code FROM Scrap"
                            " INNER JOIN LineItemType ON Scrap.LineItemTypeID = LineItemType.\"index\"";

void readScrap(Crib &crib)
{
    Floor &floor = crib.floor();
    floor.drain(scrapKinds);
    floor.read("SELECT distinct JoborOH,LineItemTypeID FROM Scrap", [&](sqlite3_stmt *row) {
        if (sqlite3_column_int(row, 1) == Schema::overheadCharge)
            floor.drain("Select Operation.Description from Operation Where Operation.OperNo="
                        + text(sqlite3_column_int(row, 0)));
    });
    floor.drain(scrapKinds);
}

// Lists

void readTools(Floor &floor, int type)
{
    const QByteArray ofType = " AND Tools.Type=" + text(type);
    floor.drain("SELECT Tools.*, Locations.description as locdesc, Types.description as typedesc, 0 as Employee"
                " FROM Tools, Locations, Types WHERE Tools.Type=Types.ID and Tools.Location=Locations.ID"
                " AND Tools.out=0"
                + ofType);
    floor.drain("SELECT Tools.*, Locations.description as locdesc, Types.description as typedesc, CheckOutIn.Employee"
                " FROM CheckOutIn, Tools, Locations, Types WHERE CheckOutIn.tool_id=Tools.id"
                " AND Tools.location=Locations.ID AND Tools.type=Types.ID"
                " AND CheckOutIn.active=-1 and tools.out=-1"
                + ofType);
}

template<int Crib::*type>
void readList(Crib &crib)
{
    readTools(crib.floor(), crib.*type);
}

template<int Crib::*type>
void list(Crib &crib)
{
    crib.click(crib.*type);
}

template<int Crib::*type>
void readListAndRepaint(Crib &crib)
{
    readTools(crib.floor(), crib.*type);
    crib.explorer().ui.lstToolList->repaint();
    crib.explorer().ui.lstToolList->viewport()->repaint();
}

template<int Crib::*type>
void listAndPaint(Crib &crib)
{
    crib.click(crib.*type);
    paint();
}

template<int Crib::*type>
void showList(Crib &crib)
{
    crib.view(0);
    listAndPaint<type>(crib);
}

void showRoot(Crib &crib)
{
    crib.view(0);
    crib.click(0);
    paint();
}

// Search

constexpr auto soughtText = "tap"; // some 2,000 hits at the largest scale
constexpr char partOfName[] = "*tap*";
constexpr char anyName[] = "*"; // every type and tool, 42,000 at the largest scale

void readPath(Floor &floor, int id)
{
    while (id != 0) {
        int parent = 0;
        floor.read("SELECT * FROM types WHERE id=" + text(id),
                   [&](sqlite3_stmt *row) { parent = sqlite3_column_int(row, 2); });
        id = parent;
    }
}

void readHits(Crib &crib)
{
    Floor &floor = crib.floor();
    const QByteArray condition = QByteArray(" WHERE description LIKE '%") + soughtText + "%'";
    floor.read("SELECT * FROM types" + condition,
               [&](sqlite3_stmt *row) { readPath(floor, sqlite3_column_int(row, 0)); });
    floor.read("SELECT * FROM tools" + condition,
               [&](sqlite3_stmt *row) { readPath(floor, sqlite3_column_int(row, 1)); });
    frmFind::instance().ui.lstFind->viewport()->repaint();
}

template<const char *text>
void openSearch(Crib &crib)
{
    showRoot(crib);
    frmFind &form = frmFind::instance();
    form.Startup();
    form.ui.txtFind->setText(text);
    form.show();
    paint();
}

void search(Crib &)
{
    frmFind::instance().ui.cmdStart->click();
    paint();
}

// Loans

constexpr int lentTool = 7; // by the floor

void lend(Crib &crib)
{
    Floor &floor = crib.floor();
    floor.drain("Select * from Tools where id =" + text(lentTool));
    floor.run("Update tools set out=-1 where id=" + text(lentTool));
    floor.run("INSERT INTO CheckOutIn (Tool_Id,JobOrOH,LineItemTypeID,Employee,DateOut,Active,CheckOutDesc,"
              "CheckOutPartNo) VALUES ("
              + text(lentTool)
              + ",26001,4,'1001','2026-01-16 10:11:12',-1,'Jobber Drill, Cobalt, 5.5 mm','CL1234-05')");
}

void takeBack(Crib &crib)
{
    crib.floor().run("Update CheckOutIn set DateIn='2026-01-16 11:12:13', Active=0 where Tool_Id=" + text(lentTool)
                     + " And Active=-1");
    crib.floor().run("Update tools set out=0 where id=" + text(lentTool));
}

void openCheckOut(Crib &crib)
{
    frmCheckOut::unload();
    crib.selectToolInStock(crib.bigType);
    frmCheckOut &form = frmCheckOut::instance();
    for (BoundCombo *box : {form.ui.dbcEmp, form.ui.dbcJobType, form.ui.dbcJob})
        box->setText(box->itemText(0));
}

void checkOut(Crib &) { frmCheckOut::instance().ui.cmdOK->click(); }

void openCheckIn(Crib &crib)
{
    frmCheckIn::unload();
    openCheckOut(crib);
    checkOut(crib);
    frmCheckIn::instance();
}

void checkIn(Crib &) { frmCheckIn::instance().ui.cmdOk->click(); }

void openAndReturn(Crib &crib)
{
    openCheckIn(crib);
    checkIn(crib);
    frmCheckOut::unload();
    crib.selectToolInStock(crib.bigType);
}

// The counter

void lendAtOnce(Crib &crib)
{
    Floor &floor = crib.floor();
    floor.run("BEGIN IMMEDIATE");
    floor.drain("Select * from CheckOutIn where Tool_Id=" + text(lentTool) + " and Active=-1");
    lend(crib);
    floor.run("COMMIT");
}

void takeBackAtOnce(Crib &crib)
{
    Floor &floor = crib.floor();
    floor.run("BEGIN IMMEDIATE");
    floor.drain("Select * from Tools where id =" + text(lentTool));
    floor.drain("Select * from CheckOutIn where Tool_Id=" + text(lentTool) + " and Active=-1");
    takeBack(crib);
    floor.run("COMMIT");
}

std::optional<Desk> desk;
QString scannedTool;

// A person and a job are at hand, and nothing was read twice.
void openDesk(Crib &)
{
    static int minutes = 0;
    Clock::setSource([when = QDateTime({2026, 1, 17}, {0, 0}).addSecs(60 * ++minutes)] { return when; });
    if (desk)
        return;
    desk.emplace();
    desk->take({Code::Employee, openRecordset(LoanChoices::employees()).field(0).toInteger()});
    desk->take({Code::Job, openRecordset(LoanChoices::jobs()).field(u"Jobno").toInteger()});
    scannedTool = openRecordset("Select ID from Tools where Out=0 and ID > 100").text(u"ID");
}

void scanTool(Crib &) { desk->scan(scannedTool); }

void openDeskWithToolIn(Crib &crib)
{
    openDesk(crib);
    if (openRecordset("Select Out from Tools where ID=" + scannedTool).field(0).toBool())
        scanTool(crib);
    openDesk(crib);
}

void openDeskWithToolOut(Crib &crib)
{
    openDeskWithToolIn(crib);
    scanTool(crib);
    openDesk(crib);
}

void openDeskAnew(Crib &crib)
{
    desk.reset();
    crib.renew();
    openDesk(crib);
}

// A count of the whole crib, all locations below one of them; 5,000 tools were seen.

DeskWindow *counter = nullptr; // to the end: no window outlives the application
QList<qint64> notCounted;

void scanInCount(Crib &)
{
    emit counter->ui.txtScan->scanned('T' + QString::number(notCounted.takeLast()));
    paint();
}

void openCount(Crib &crib)
{
    if (counter)
        return;
    crib.renew();
    const QString location = openRecordset("Select Min(ID) as top from Locations where Parent=0").text(u"top");
    execute("Update Locations set Parent=" + location + " where Parent=0 and ID<>" + location);
    for (Recordset tools = openRecordset("Select ID from Tools where Out=0"); !tools.atEnd(); tools.moveNext())
        notCounted.append(tools.field(0).toInteger());
    QJsonObject seen;
    for (int i = 0; i < 5000; ++i)
        seen[QString::number(notCounted.takeFirst())] =
            QJsonObject{{"result", "right"}, {"at", "2026-01-17 08:00:00"}, {"description", "Tool"}};
    QFile kept(crib.folder() + "/stocktake-" + location + ".json");
    if (!kept.open(QIODevice::WriteOnly)
        || kept.write(QJsonDocument(QJsonObject{{"version", 1}, {"seen", seen}}).toJson(QJsonDocument::Compact)) < 0)
        qFatal("The count cannot be kept.");
    kept.close();
    counter = new DeskWindow;
    counter->show();
    for (const QString &code : {QString("COUNT"), 'L' + location})
        emit counter->ui.txtScan->scanned(code);
    paint();
}

void openDialog(Crib &) { frmCheckOut::instance(); }

// Start

void close(Crib &) { frmTree::unload(); }

void open(Crib &crib)
{
    crib.explorer().Startup(false);
    paint();
}

// Deletion

void gather(Floor &floor, int folder, QByteArrayList &folders, QByteArrayList &tools)
{
    folders.append(text(folder));
    floor.read("SELECT id FROM tools WHERE type=" + text(folder),
               [&](sqlite3_stmt *row) { tools.append(text(sqlite3_column_int(row, 0))); });
    floor.read("SELECT id FROM types WHERE parent=" + text(folder),
               [&](sqlite3_stmt *row) { gather(floor, sqlite3_column_int(row, 0), folders, tools); });
}

void removeRows(Crib &crib)
{
    QByteArrayList folders, tools;
    gather(crib.floor(), crib.drills, folders, tools);
    crib.floor().run("BEGIN IMMEDIATE");
    crib.floor().run("DELETE FROM CheckOutIn WHERE tool_id in (" + tools.join(',') + ")");
    crib.floor().run("DELETE FROM tools WHERE id in (" + tools.join(',') + ")");
    crib.floor().run("DELETE FROM types WHERE id in (" + folders.join(',') + ")");
    crib.floor().run("COMMIT");
}

void deleteSubtree(Crib &crib)
{
    if (const QString problem = clsTools().Delete(clsTools::Kind::types, {crib.drills}, {}); !problem.isEmpty())
        qFatal("%s", qPrintable(problem));
}

void renew(Crib &crib) { crib.renew(); }

// What the query form of loans asks

void readLoans(Crib &crib)
{
    crib.floor().drain("SELECT CheckOutIn.CheckOutDesc, CheckOutIn.CheckOutPartNo, CheckOutIn.ID, CheckOutIn.DateOut,"
                       " CheckOutIn.DateIn, upper(employee.lastname) || ' ' || upper(employee.firstname) as EmpName,"
                       " iif(lineItemTypeid=5,operation.description,'') AS OhDesc,"
                       " iif(lineItemTypeid=4,JobOrOh,'') AS JobNo"
                       " FROM (CheckOutIn LEFT JOIN Employee ON CheckOutIn.Employee = Employee.EmpID)"
                       " LEFT JOIN Operation ON CheckOutIn.JobOrOH = Operation.OperNo"
                       " WHERE CheckOutIn.ID <= 100000");
}

Recordset loans()
{
    return openRecordset(QueryKind::frmQueryCheckedOut.statement + QString(" where CheckOutIn.ID <= 100000"));
}

void openLoans(Crib &) { loans(); }

void showLoans(Crib &)
{
    const ResultsKind &kind = ResultsKind::frmReportToolsOutQresults;
    ResultsWindow::open(kind, {&QueryKind::frmQueryCheckedOut}, loans());
    paint();
    delete ResultsWindow::opened(kind);
}

// The form's layout with as many boxes, which do nothing.
void showBareForm(Crib &)
{
    QDialog form;
    Ui::QueryForm ui;
    ui.setupUi(&form);
    for (int row = 1; row <= 7; ++row) {
        for (int column = 0; column < 4; ++column) {
            if (column % 2 == 0) {
                ui.criteria->addWidget(new QCheckBox("Criterion"), row, column);
                continue;
            }
            auto *box = new QComboBox;
            box->setEditable(true);
            ui.criteria->addWidget(box, row, column);
        }
    }
    form.show();
    paint();
}

void showForm(Crib &)
{
    QueryForm form(QueryKind::frmQueryCheckedOut);
    form.show();
    paint();
}

void readChoices(Crib &crib)
{
    for (const char *statement : {
             "Select distinct CheckOutDesc COLLATE NOCASE from CheckOutIn order by CheckOutDesc COLLATE NOCASE",
             "SELECT distinct EmpId, upper(employee.lastname) || ' ' || upper(employee.firstname) as EmpName"
             " FROM Employee INNER JOIN CheckOutIn ON Employee.EmpID=CheckOutIn.Employee"
             " order by upper(employee.lastname) || ' ' || upper(employee.firstname)",
             "Select distinct CheckOutPartNo COLLATE NOCASE from CheckOutIn Where CheckOutPartNo <> ''"
             " order by CheckOutPartNo COLLATE NOCASE",
             "SELECT distinct CheckOutIn.JobOrOH FROM CheckOutIn WHERE (((CheckOutIn.LineItemTypeId)=4))"
             " ORDER BY CheckOutIn.JobOrOh desc",
             "SELECT distinct Operation.Description COLLATE NOCASE FROM Operation"
             " INNER JOIN CheckOutIn ON Operation.OperNo = CheckOutIn.JobOrOH"
             " WHERE (((CheckOutIn.LineItemTypeId)=5)) ORDER BY Operation.Description COLLATE NOCASE",
             "SELECT DISTINCT strftime('%m/%d/%Y',DateIn) AS ShortDateIn FROM CheckOutIn"
             " WHERE (((CheckOutIn.DateIn) Is Not Null)) ORDER BY strftime('%m/%d/%Y',DateIn)",
             "SELECT DISTINCT strftime('%m/%d/%Y',DateOut) AS ShortDateOut FROM CheckOutIn"
             " WHERE (((CheckOutIn.DateOut) Is Not Null)) ORDER BY strftime('%m/%d/%Y',DateOut)",
         })
        crib.floor().drain(statement);
}

void openChoices(Crib &)
{
    for (const char *statement : {
             "Select distinct CheckOutDesc from CheckOutIn order by CheckOutDesc",
             "SELECT distinct EmpId, ucase([employee.lastname]) & \" \" & ucase([employee.firstname])as EmpName"
             " FROM Employee INNER JOIN CheckOutIn ON Employee.EmpID=CheckOutIn.Employee"
             " order by ucase([employee.lastname]) & \" \" & ucase([employee.firstname])",
             "Select distinct CheckOutPartNo from CheckOutIn Where CheckOutPartNo <> '' order by CheckOutPartNo",
             "SELECT distinct CheckOutIn.JobOrOH FROM CheckOutIn WHERE (((CheckOutIn.LineItemTypeId)=4))"
             " ORDER BY CheckOutIn.JobOrOh desc",
             "SELECT distinct Operation.Description FROM Operation"
             " INNER JOIN CheckOutIn ON Operation.OperNo = CheckOutIn.JobOrOH"
             " WHERE (((CheckOutIn.LineItemTypeId)=5)) ORDER BY Operation.Description",
             "SELECT DISTINCT Format([CheckOutIn].[DateIn],'Short Date') AS ShortDateIn FROM CheckOutIn"
             " WHERE (((CheckOutIn.DateIn) Is Not Null)) ORDER BY Format([CheckOutIn].[DateIn],'Short Date')",
             "SELECT DISTINCT Format([CheckOutIn].[DateOut],'Short Date') AS ShortDateOut FROM CheckOutIn"
             " WHERE (((CheckOutIn.DateOut) Is Not Null)) ORDER BY Format([CheckOutIn].[DateOut],'Short Date')",
         })
        openRecordset(statement);
}

// Reports

constexpr char printedLoans[] = "{CheckOutIn.ID} <= 30000";
constexpr char loansOfOneTool[] = "{CheckOutIn.Tool_Id} = 7"; // some thirty
constexpr char reportName[] = "Bench.rpt";

void writeTemplate(Crib &crib)
{
    QFile file(crib.folder() + '/' + reportName);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("The template cannot be written.");
    file.write(R"(<report version="1" title="Loans" paper="Letter" margin="36" font="Liberation Sans" size="9">
<data><from table="CheckOutIn"/><join table="Employee" on="CheckOutIn.Employee = Employee.EmpID"/></data>
<columns><column name="desc" width="34" wrap="yes"/><column name="part" width="16"/><column name="out" width="11"/></columns>
<group by="{CheckOutIn.LineItemTypeId}"><header><line bold="yes"><cell in="desc">Kind {CheckOutIn.LineItemTypeId}</cell></line></header></group>
<group by="{CheckOutIn.Employee}" sort="{Employee.LastName}" keep="2"><header><line bold="yes"><cell in="desc">{Employee.LastName:upper}</cell></line></header>
<footer><line><cell in="desc">Loans: {count()}</cell></line></footer></group>
<group by="{CheckOutIn.JobOrOH}"><header><line><cell in="desc">{CheckOutIn.JobOrOH}</cell></line></header></group>
<detail><line><cell in="desc">{CheckOutIn.CheckOutDesc}</cell><cell in="part">{CheckOutIn.CheckOutPartNo}</cell><cell in="out">{CheckOutIn.DateOut:short date}</cell></line></detail>
<pagefooter><line><cell in="desc">Page {#page} of {#pages}</cell></line></pagefooter>
</report>)");
}

void require(int code, const Report &report)
{
    if (code != 0)
        qFatal("report error %d %s", code, qPrintable(report.lastDetail()));
}

template<const char *formula, const char *name = reportName>
void showFirstPage(Crib &)
{
    constexpr int slice = 20; // milliseconds
    Report report(&Session::database());
    require(report.open(name, formula), report);
    do
        require(report.layout(slice), report);
    while (report.pageCount() == 0);
    QImage screen(816, 1056, QImage::Format_RGB32);
    QPainter painter(&screen);
    painter.scale(1 / 15.0, 1 / 15.0); // twips
    require(report.paint(painter, 0), report);
}

// Shipped templates, over all there is.
constexpr char everything[] = "";
constexpr char lastLent[] = "LastLent.rpt";
constexpr char loansByEmployee[] = "LoansByEmployee.rpt";
constexpr char stockValue[] = "StockValue.rpt";
constexpr char scrapCostByJob[] = "ScrapCostByJob.rpt";
constexpr char scrapCostByMonth[] = "ScrapCostByMonth.rpt";

void writePdf(Crib &crib)
{
    Report report(&Session::database());
    require(report.open(reportName, printedLoans), report);
    require(report.writePdf(crib.folder() + "/bench.pdf"), report);
}

template<void (frmTree::*show)()>
void build(Crib &crib)
{
    (crib.explorer().*show)();
}

template<int option>
void view(Crib &crib)
{
    crib.view(option);
}

constexpr Case cases[] = {
    {"type-tree",
     "build the type tree with its model",
     "max",
     0.3,
     1.3,
     {readTypes},
     {build<&frmTree::ViewByType>, view<0>}},
    {"tools-out-tree",
     "build the tree of tools out",
     "max",
     1.3,
     2,
     {readToolsOut},
     {build<&frmTree::ViewByCheckedOut>, view<2>}},
    {"scrap-tree",
     "build the tree of scrapped tools",
     "max",
     1.3,
     2,
     {readScrap},
     {build<&frmTree::ViewByScrap>, view<3>}},
    {"list-500",
     "list a node of 500 tools",
     "max",
     1.3,
     2,
     {readList<&Crib::bigType>, view<0>},
     {list<&Crib::bigType>, showRoot}},
    {"click-500",
     "click to painted list, 500 rows",
     "max",
     1.5,
     2.5,
     {readListAndRepaint<&Crib::bigType>, showList<&Crib::bigType>},
     {listAndPaint<&Crib::bigType>, showRoot}},
    {"click-5000",
     "click to painted list, 5,000 rows",
     "max",
     1.5,
     2.5,
     {readListAndRepaint<&Crib::hugeType>, showList<&Crib::hugeType>},
     {listAndPaint<&Crib::hugeType>, showRoot}},
    {"search", "search with 2,000 hits", "max", 1.2, 2, {readHits}, {search, openSearch<partOfName>}},
    {"search-all", "search with 42,000 hits", "max", 1, 2, {}, {search, openSearch<anyName>}},
    {"check-out", "check a tool out", "shop", 1.1, 1.3, {lend, takeBack}, {checkOut, openCheckOut}, Case::Wall, 5},
    {"check-in", "check a tool in", "shop", 1.1, 1.3, {takeBack, lend}, {checkIn, openCheckIn}, Case::Wall, 5},
    {"desk-out",
     "a scan at the counter that lends",
     "max",
     1.1,
     1.3,
     {lendAtOnce, takeBackAtOnce},
     {scanTool, openDeskWithToolIn},
     Case::Wall,
     5},
    {"desk-in",
     "a scan at the counter that takes back",
     "max",
     1.1,
     1.3,
     {takeBackAtOnce, lendAtOnce},
     {scanTool, openDeskWithToolOut},
     Case::Wall,
     5},
    {"desk-first", "first scan at the counter", "max", 0.1, 0.2, {}, {scanTool, openDeskAnew}, Case::Wall},
    {"query-rows", "read the 100,000 rows of a query", "shop", 1.6, 2.5, {readLoans}, {openLoans}},
    {"query-grid", "show the 100,000 rows of a query in its grid", "shop", 1.6, 2.5, {readLoans}, {showLoans}},
    {"query-form", "open a query form, its lists not yet read", "max", 1.2, 2, {showBareForm}, {showForm}},
    {"query-choices", "read the lists of a query form", "max", 0.3, 1.2, {readChoices}, {openChoices}},
    {"report-page",
     "first page of a report of 30,000 rows",
     "shop",
     0.3,
     1,
     {},
     {showFirstPage<printedLoans>, writeTemplate}},
    {"report-part",
     "first page of 30,000 rows out of 1,000,000",
     "max",
     0.2,
     0.4,
     {},
     {showFirstPage<printedLoans>, writeTemplate}},
    {"report-few",
     "a page of one tool's loans out of 1,000,000",
     "max",
     0.03,
     0.06,
     {},
     {showFirstPage<loansOfOneTool>, writeTemplate}},
    {"last-lent", "last loans of 32,000 tools", "max", 1, 2, {}, {showFirstPage<everything, lastLent>}},
    {"loans-by-employee", "1,000,000 loans by employee", "max", 2, 4, {}, {showFirstPage<everything, loansByEmployee>}},
    {"stock-value", "value of 32,000 tools in stock", "max", 0.3, 0.6, {}, {showFirstPage<everything, stockValue>}},
    {"scrap-by-job", "cost of 20,000 scraps by job", "max", 0.2, 0.4, {}, {showFirstPage<everything, scrapCostByJob>}},
    {"scrap-by-month",
     "cost of 20,000 scraps by month",
     "max",
     0.2,
     0.4,
     {},
     {showFirstPage<everything, scrapCostByMonth>}},
    {"report-pdf", "whole report of 30,000 rows as PDF", "shop", 5, 12, {}, {writePdf, writeTemplate}},
    {"delete",
     "delete a subtree of 5,000 tools and their loans",
     "max",
     1.05,
     1.2,
     {removeRows, renew},
     {deleteSubtree, renew},
     Case::Wall},
    // Last, as it lays all locations below one
    {"desk-count", "a scan in a count of the whole crib", "max", 0.05, 0.1, {}, {scanInCount, openCount}},
};

}

std::span<const Case> allCases() { return cases; }

std::span<const Case> serverCases()
{
    static constexpr Case cases[] = {
        {"start", "open the explorer on 10,000 types", "max", 1, 2, {}, {open, close}, Case::Wall},
        {"click",
         "click to painted list, 500 rows",
         "max",
         0.15,
         0.3,
         {},
         {listAndPaint<&Crib::bigType>, showRoot},
         Case::Wall},
        {"search", "search with 2,000 hits", "max", 0.3, 0.6, {}, {search, openSearch<partOfName>}, Case::Wall},
        {"tools-out",
         "build the tree of tools out",
         "max",
         0.15,
         0.3,
         {},
         {build<&frmTree::ViewByCheckedOut>, view<2>},
         Case::Wall},
        {"scrapped",
         "build the tree of scrapped tools",
         "max",
         0.3,
         0.6,
         {},
         {build<&frmTree::ViewByScrap>, view<3>},
         Case::Wall},
        {"lend-dialog", "open the check-out dialog", "max", 0.1, 0.2, {}, {openDialog, openAndReturn}, Case::Wall},
        {"lend", "check a tool out", "max", 0.1, 0.2, {}, {checkOut, openCheckOut}, Case::Wall},
        {"return", "check a tool in", "max", 0.1, 0.2, {}, {checkIn, openCheckIn}, Case::Wall},
    };
    return cases;
}
