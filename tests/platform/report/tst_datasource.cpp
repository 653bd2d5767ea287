#include "tests/platform/report/ReportCrib.h"

#include "platform/report/DataSource.h"
#include "platform/text/TextCompare.h"

#include <QRandomGenerator>

namespace {

const QByteArray loans =
    "<from table=\"CheckOutIn\"/><join table=\"Employee\" on=\"CheckOutIn.Employee = Employee.EmpID\"/>"
    "<join table=\"Operation\" on=\"CheckOutIn.JobOrOH = Operation.OperNo\"/>";
const QByteArray scrap = "<from table=\"Scrap\"/><join table=\"Employee\" on=\"Scrap.Employee = Employee.EmpID\"/>"
                         "<join table=\"ScrapReasons\" on=\"Scrap.Reason = ScrapReasons.ID\"/>"
                         "<join table=\"Operation\" on=\"Scrap.JobOrOH = Operation.OperNo\"/>";
const QByteArray tools = "<from table=\"Tools\"/><join table=\"Types\" kind=\"inner\" on=\"Tools.Type = Types.ID\"/>"
                         "<join table=\"Locations\" kind=\"inner\" on=\"Tools.Location = Locations.ID\"/>";

const QString loanStatement =
    "SELECT CheckOutIn.ID FROM (CheckOutIn LEFT JOIN Employee ON CheckOutIn.Employee = Employee.EmpID)"
    " LEFT JOIN Operation ON CheckOutIn.JobOrOH = Operation.OperNo where ";
const QString scrapStatement = "SELECT Scrap.ID FROM ((Scrap LEFT JOIN Employee ON Scrap.Employee = Employee.EmpID)"
                               " LEFT JOIN ScrapReasons ON Scrap.Reason = ScrapReasons.ID)"
                               " LEFT JOIN Operation ON Scrap.JobOrOH = Operation.OperNo where ";
const QString toolStatement = "select tools.id FROM (Tools INNER JOIN Types ON Tools.Type = Types.ID)"
                              " INNER JOIN Locations ON Tools.Location = Locations.ID where ";

/// Records in print order, of a template and a formula read against the crib.
struct Read {
    Read(
        ReportCrib &crib, const QByteArray &content, const QString &formula = {},
        const Progress &progress = [](double) {})
        : report(TemplateReader::read(content, "Test.rpt"))
    {
        Formula selection = Formula::parse(formula, report.fields);
        records = DataSource(*crib.database, report, selection).read(progress);
    }
    QStringList texts(int field = 0) const
    {
        QStringList texts;
        for (int row = 0; row < records.count(); ++row)
            texts.append(records.record(row)[field].toText());
        return texts;
    }

    Template report;
    Records records;
};

}

class TestDataSource : public QObject
{
    Q_OBJECT

private slots:
    void printsTheRowsThatTheStatementShows_data();
    void printsTheRowsThatTheStatementShows();
    void ordersByGroupsThenFields();
    void groupsByPeriod();
    void numbersOverGroupsEqualTheStatements();
    void numbersOverNothing();
    void refusesByCode_data();
    void refusesByCode();
    void readsLargeTablesInParts();
    void readsListedRecordsOnly();
    void tooManyRecords();

private:
    static void fillRandomly(ReportCrib &crib);
};

void TestDataSource::fillRandomly(ReportCrib &crib)
{
    QRandomGenerator random(7);
    const auto oneOf = [&](const QStringList &values) { return values[random.bounded(values.size())]; };
    const auto day = [&] {
        return QStringLiteral("'20%1-%2-%3 %4'")
            .arg(random.bounded(22, 25))
            .arg(random.bounded(1, 13), 2, 10, QChar('0'))
            .arg(random.bounded(1, 4), 2, 10, QChar('0'))
            .arg(oneOf({"00:00:00", "12:30:15", "23:59:59"}));
    };
    const QStringList texts{"'Drill'", "'drill 10'", "'\u00c4xte'", "'axt'", "'Zange'", "'\u00e9tau'",
                            "'Etau'",  "'ETAU'",     "''",          "NULL",  "'10'",    "'9'"};
    QStringList statements;
    for (const char *names : {"1, 'Adams', 'Jo'", "2, 'adams', NULL", "3, 'M\u00fcller', 'Al'", "4, 'Zorn', 'Bo'"})
        statements.append(QStringLiteral("INSERT INTO Employee (EmpID, LastName, FirstName) VALUES (%1)").arg(names));
    for (const char *operation : {"10, 'Set-up'", "11, 'inspection'", "12, 'Rework'"})
        statements.append(QStringLiteral("INSERT INTO Operation (OperNo, Description) VALUES (%1)").arg(operation));
    for (const char *reason : {"'Broken'", "'lost'", "'Worn'"})
        statements.append(QStringLiteral("INSERT INTO ScrapReasons (Description) VALUES (%1)").arg(reason));
    for (int i = 0; i < 6; ++i) {
        statements.append(QStringLiteral("INSERT INTO Types (Description) VALUES ('Type %1')").arg(i));
        statements.append(QStringLiteral("INSERT INTO Locations (Description) VALUES ('place %1')").arg(i));
    }
    for (int i = 0; i < 300; ++i) {
        statements.append(QStringLiteral("INSERT INTO CheckOutIn (Tool_Id, Employee, JobOrOH, LineItemTypeId, DateOut, "
                                         "DateIn, Active, CheckOutDesc, CheckOutPartNo)"
                                         " VALUES (1, %1, %2, %3, %4, %5, %6, %7, %8)")
                              .arg(oneOf({"'1'", "'2'", "'3'", "'4'", "'99'", "NULL"}),
                                   QString::number(random.bounded(8, 16)), oneOf({"4", "5", "NULL"}), day(),
                                   random.bounded(3) ? day() : "NULL", oneOf({"-1", "0"}), oneOf(texts), oneOf(texts)));
        statements.append(QStringLiteral("INSERT INTO Scrap (Description, PartNumber, Manufacturer, Employee, JobOrOH, "
                                         "LineItemTypeId, Reason, ScrapDate, PricePer, Job, Date)"
                                         " VALUES (%1, %2, %3, %4, %5, %6, %7, %8, %9, 5, NULL)")
                              .arg(oneOf(texts), oneOf(texts), oneOf(texts), oneOf({"1", "2", "3", "77", "NULL"}),
                                   QString::number(random.bounded(8, 16)), oneOf({"4", "5"}),
                                   oneOf({"1", "2", "3", "NULL"}), day(),
                                   QString::number(random.bounded(40000) / 100.0)));
        statements.append(QStringLiteral("INSERT INTO Tools (Type, Location, Description, PartNumber, Manufacturer, "
                                         "PricePer, Out) VALUES (%1, %2, %3, %4, %5, %6, %7)")
                              .arg(random.bounded(1, 7))
                              .arg(random.bounded(1, 7))
                              .arg(oneOf({"'Drill'", "'tap'"}), oneOf(texts), oneOf(texts),
                                   oneOf({"10", "25", "12.5", "0.1", "NULL"}), oneOf({"-1", "0"})));
    }
    crib.fill(("BEGIN;" + statements.join(';') + ";COMMIT").toUtf8());
}

void TestDataSource::printsTheRowsThatTheStatementShows_data()
{
    QTest::addColumn<QString>("statement");
    QTest::addColumn<QString>("formula");
    // What the query forms build for a statement and for the report beside it
    const auto row = [](const QString &head, const char *where, const char *formula) {
        QTest::newRow(where) << QString(head + where) << formula;
    };
    const QString &l = loanStatement, &s = scrapStatement, &t = toolStatement;
    row(l, "CheckOutIn.CheckOutDesc between 'axt' and '\u00c9tau'",
        "{CheckOutIn.CheckOutDesc} in 'axt' to '\u00c9tau'");
    row(l, "CheckOutIn.CheckOutDesc between 'zange' and 'Drill'", "{CheckOutIn.CheckOutDesc} in 'zange' to 'Drill'");
    row(l, "CheckOutIn.CheckOutDesc = '\u00e4XTE'", "{CheckOutIn.CheckOutDesc} = '\u00e4XTE'");
    row(l, "CheckOutIn.CheckOutDesc = ''", "{CheckOutIn.CheckOutDesc} = ''");
    row(l, "CheckOutIn.CheckOutPartNo between '' and '9'", "{CheckOutIn.CheckOutPartNo} in '' to '9'");
    row(l, "Employee.LastName between '' and 'adams'", "{Employee.LastName} in '' to 'adams'");
    row(l, "Employee.EmpId = 2", "{Employee.EmpId} = 2");
    row(l, "CheckOutIn.JobOrOh between 14 and 10 and CheckOutIn.LineItemTypeId=4",
        "{CheckOutIn.JobOrOh} in 14 to 10 and {CheckOutIn.LineItemTypeId} = 4");
    row(l, "CheckOutIn.JobOrOh = 12.5", "{CheckOutIn.JobOrOh} = 12.5");
    row(l, "Operation.description between 'i' and 'RO'", "{Operation.description} in 'i' to 'RO'");
    row(l, "Operation.description = 'REWORK'", "{Operation.description} = 'REWORK'");
    row(l, "format(CheckOutIn.DateIn,'short date') between #2023-02-01# and #2024-05-02#",
        "{CheckOutIn.DateIn} in date(2023,02,01) to date(2024,05,02)");
    row(l, "format(CheckOutIn.DateIn,'short date') between #2024-05-02# and #2023-02-01#",
        "{CheckOutIn.DateIn} in date(2024,05,02) to date(2023,02,01)");
    row(l, "format(CheckOutIn.DateOut,'short date') = #2023-06-02#", "{CheckOutIn.DateOut}= date(2023,06,02)");
    row(l, "CheckOutIn.LineItemTypeId = 4 and format(CheckOutIn.DateIn,'short date') = #2023-06-02#",
        "{CheckOutIn.LineItemTypeId} = 4 and {CheckOutIn.DateIn} = date(2023,06,02)");
    row(l, "CheckOutIn.Active = true", "{CheckOutIn.Active} = true");
    row(s, "Scrap.PartNumber <> 'etau'", "{Scrap.PartNumber} <> 'etau'");
    row(s, "ScrapReasons.Description between 'BROKEN' and 'Lost'", "{ScrapReasons.Description} in 'BROKEN' to 'Lost'");
    row(s, "Scrap.Manufacturer = 'DRILL 10' and Employee.LastName between 'a' and 'm'",
        "{Scrap.Manufacturer} = 'DRILL 10' and {Employee.LastName} in 'a' to 'm'");
    row(s, "Scrap.PricePer between 300 and 12.5", "{Scrap.PricePer} in 300 to 12.5");
    row(t,
        "locations.description = 'Place 1' OR  locations.description = 'place 2' OR  locations.description = 'PLACE 4' "
        "and tools.Manufacturer = 'axt'",
        "{locations.description} = 'Place 1' OR  {locations.description} = 'place 2' OR  {locations.description} = "
        "'PLACE 4' and {tools.manufacturer} = 'axt'");
    row(t, "tools.PartNumber = '10' and types.description = 'Type 1' OR  types.description = 'type 3'",
        "{tools.PartNumber} = '10' and {types.description} = 'Type 1' OR  {types.description} = 'type 3'");
    row(t, "PricePer between 10 and 25", "{tools.PricePer} in 10 to 25");
    row(t, "PricePer = 0.1", "{tools.PricePer} = 0.1");
}

void TestDataSource::printsTheRowsThatTheStatementShows()
{
    QFETCH(QString, statement);
    QFETCH(QString, formula);
    ReportCrib crib;
    fillRandomly(crib);
    const Recordset shown = crib.database->openRecordset(statement);
    QStringList expected;
    for (int row = 0; row < shown.recordCount(); ++row)
        expected.append(shown.at(row, 0).toText());
    QVERIFY(!expected.isEmpty() || formula.contains("12.5"));
    expected.sort();

    const bool isTool = statement.startsWith("select");
    const QByteArray table = isTool ? "Tools" : statement.contains("ScrapReasons") ? "Scrap" : "CheckOutIn";
    const Read read(crib,
                    simpleTemplate((isTool                 ? tools
                                        : table == "Scrap" ? scrap
                                                           : loans)
                                       + "<sort by=\"{" + table + ".ID}\"/>",
                                   "{" + table + ".ID}"),
                    formula);
    QStringList printed = read.texts(read.report.fields.find(table, "ID"));
    printed.sort();
    QCOMPARE(printed, expected);
}

void TestDataSource::ordersByGroupsThenFields()
{
    ReportCrib crib;
    crib.fill("INSERT INTO Employee (EmpID, LastName) VALUES (1, 'Zorn'), (2, 'adams'), (3, 'Adams')");
    crib.fill("INSERT INTO CheckOutIn (Tool_Id, Employee, CheckOutDesc, DateOut) VALUES"
              " (1, '1', 'b', '2024-01-01 00:00:00'), (2, '3', 'b', '2024-01-02 00:00:00'), (3, '2', 'B', '2024-01-03 "
              "00:00:00'),"
              " (4, '2', NULL, '2024-01-04 00:00:00'), (5, '3', 'B', '2024-01-05 00:00:00'), (6, '8', 'x', NULL)");
    const Read read(
        crib,
        simpleTemplate(
            loans + "<sort by=\"{CheckOutIn.CheckOutDesc}\"/><sort by=\"{CheckOutIn.DateOut}\" order=\"descending\"/>",
            "{CheckOutIn.Tool_Id}", "<group by=\"{CheckOutIn.Employee}\" sort=\"{Employee.LastName}\"/>"));
    // Without a name first, then both of name Adams by number; within them texts without regard to case, the latest
    // first.
    QCOMPARE(read.texts(read.report.fields.find("CheckOutIn", "Tool_Id")), QStringList({"6", "4", "3", "5", "2", "1"}));
    QCOMPARE(read.records.firstOpening(0), 0);
    QCOMPARE(read.records.firstOpening(2), 1);
    QCOMPARE(read.records.firstClosing(2), 0);
    QCOMPARE(read.records.run(0, 3).first, 3);
    QCOMPARE(read.records.run(0, 3).last, 4);
}

void TestDataSource::groupsByPeriod()
{
    ReportCrib crib;
    crib.fill("INSERT INTO Scrap (ScrapDate, ToolID) VALUES ('2024-02-10 10:00:00', 1), ('2024-01-31 23:59:59', 3), "
              "('2023-02-01 00:00:00', 4),"
              " ('2024-02-09 00:00:00', 2), (NULL, 5)");
    for (const auto &[period, tools, runs] :
         {std::tuple("day", "54321", 5), {"month", "54312", 4}, {"year", "54132", 3}}) {
        const Read read(crib,
                        simpleTemplate("<from table=\"Scrap\"/>", "{Scrap.ToolID}",
                                       QByteArray("<group by=\"{Scrap.ScrapDate}\" per=\"") + period + "\"/>"));
        QCOMPARE(read.texts(1).join(""), tools);
        int opened = 0;
        for (int row = 0; row < read.records.count(); ++row)
            opened += read.records.firstOpening(row) == 0;
        QCOMPARE(opened, runs);
    }
}

void TestDataSource::numbersOverGroupsEqualTheStatements()
{
    ReportCrib crib;
    fillRandomly(crib);
    const Read read(
        crib,
        simpleTemplate(
            scrap, "{sum(Scrap.PricePer)}{count()}{count(Scrap.Employee)}",
            "<group by=\"{Scrap.LineItemTypeId}\"/><group by=\"{Scrap.Reason}\"><footer><line><cell "
            "in=\"a\">{count()}{count(Scrap.Employee)}{sum(Scrap.PricePer)}"
            "{avg(Scrap.PricePer)}{min(Scrap.Description)}{max(Scrap.ScrapDate)}</cell></line></footer></group>"));
    // Texts have no minimum in the engine's language that knows our order.
    const Recordset expected = crib.database->openNative(
        "SELECT count(*), count(Employee), sum(PricePer), avg(PricePer), NULL, max(ScrapDate), LineItemTypeId, Reason"
        " FROM Scrap GROUP BY LineItemTypeId, Reason ORDER BY LineItemTypeId, Reason");
    int row = 0;
    for (int group = 0; group < expected.recordCount(); ++group) {
        for (int number : {0, 1, 5})
            QCOMPARE(read.records.aggregate(number, row).toText(), expected.at(group, number).toText());
        for (int number : {2, 3})
            QVERIFY(qAbs(read.records.aggregate(number, row).toNumber() - expected.at(group, number).toNumber())
                    < 1e-9);
        for (int i = read.records.run(1, row).first; i <= read.records.run(1, row).last; ++i) {
            const Value &description = read.records.record(i)[read.report.fields.find("Scrap", "Description")];
            QVERIFY(description.isNull()
                    || compareText(description.toText(), read.records.aggregate(4, row).toText()) >= 0);
        }
        row = read.records.run(1, row).last + 1;
    }
    QCOMPARE(row, 300);
    const Recordset total = crib.database->openNative("SELECT sum(PricePer), count(*), count(Employee) FROM Scrap");
    QVERIFY(qAbs(read.records.aggregate(6, 100).toNumber() - total.at(0, 0).toNumber()) < 1e-9);
    QCOMPARE(read.records.aggregate(7, 0).toText(), total.at(0, 1).toText());
    QCOMPARE(read.records.aggregate(8, 299).toText(), total.at(0, 2).toText());
}

void TestDataSource::numbersOverNothing()
{
    ReportCrib crib;
    const QByteArray content = simpleTemplate(scrap, "{sum(Scrap.PricePer)}{count()}{max(Scrap.Description)}");
    QCOMPARE(Read(crib, content).records.aggregate(1, -1).toText(), "0");
    QVERIFY(Read(crib, content).records.aggregate(0, -1).isNull());
    crib.fill("INSERT INTO Scrap (Description) VALUES (NULL)");
    const Read one(crib, content);
    QVERIFY(one.records.aggregate(0, 0).isNull() && one.records.aggregate(2, 0).isNull());
    QCOMPARE(one.records.aggregate(1, 0).toText(), "1");
}

void TestDataSource::refusesByCode_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("formula");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("words");
    const auto row = [](const char *name, const QByteArray &content, const QString &formula, int code,
                        const QString &words) { QTest::newRow(name) << content << formula << code << words; };
    const QByteArray from = "<from table=\"Tools\"/>";
    const QByteArray id = "{Tools.ID}";
    row("good", simpleTemplate(tools, id), "{types.DESCRIPTION} = 'x'", ResultCode::ok, "");
    row("table missing", simpleTemplate("<from table=\"Tool\"/>", "{Tool.ID}"), "", ResultCode::tableNotFound,
        "line 1: the database has no table Tool");
    row("joined table missing", simpleTemplate(from + "<join table=\"Kinds\" on=\"Tools.Type = Kinds.ID\"/>", id), "",
        ResultCode::tableNotFound, "Kinds");
    row("table with a quote", simpleTemplate("<from table=\"x') union select 1 --\"/>", id), "",
        ResultCode::tableNotFound, "");
    row("table twice", simpleTemplate(from + "<join table=\"tools\" on=\"Tools.Type = tools.ID\"/>", id), "",
        ResultCode::cannotLoadReport, "second table");
    row("joined to itself", simpleTemplate(from + "<join table=\"Types\" on=\"Types.Parent = Types.ID\"/>", id), "",
        ResultCode::cannotLoadReport, "not joined");
    row("joined to a later one",
        simpleTemplate(from
                           + "<join table=\"Types\" on=\"Types.ID = Locations.ID\"/><join table=\"Locations\" "
                             "on=\"Tools.Location = Locations.ID\"/>",
                       id),
        "", ResultCode::cannotLoadReport, "not joined");
    row("column of the template", simpleTemplate(from, "\n{Tools.Colour}"), "", ResultCode::invalidFieldName,
        "line 1: {Tools.Colour}");
    row("table of the template", simpleTemplate(from, "{Types.ID}"), "", ResultCode::invalidFieldName, "{Types.ID}");
    row("column of the formula", simpleTemplate(from, id), "{Tools.Colour} = 'red'", ResultCode::invalidFieldName,
        "{Tools.Colour}");
    row("table of the formula", simpleTemplate(from, id), "{Scrap.ID} = 1", ResultCode::invalidFieldName, "{Scrap.ID}");
    row("kind in the formula", simpleTemplate(from, id), "{Tools.ID} = 'x'", ResultCode::errorInFormula, "{Tools.ID}");
    row("kind in a condition", simpleTemplate(from, id, "<nodata when=\"{Tools.ID} = 'x'\"/>"), "",
        ResultCode::cannotLoadReport, "line 1: {Tools.ID}");
    row("kind in the fixed formula", simpleTemplate(from + "<where>{Tools.Out} = date(2024,1,1)</where>", id), "",
        ResultCode::cannotLoadReport, "{Tools.Out}");
    row("sum over texts", simpleTemplate(from, "{sum(Tools.Description)}"), "", ResultCode::invalidSummaryField,
        "{Tools.Description}");
    row("average over dates", simpleTemplate("<from table=\"Scrap\"/>", "{avg(Scrap.Date)}"), "",
        ResultCode::invalidSummaryField, "{Scrap.Date}");
    row("date format of a number", simpleTemplate(from, "{Tools.ID:short date}"), "", ResultCode::cannotLoadReport,
        "format");
    row("money format of a text", simpleTemplate(from, "{max(Tools.Description):currency}"), "",
        ResultCode::cannotLoadReport, "format");
    row("money format of a count", simpleTemplate(from, "{count(Tools.Description):currency}"), "", ResultCode::ok, "");
    row("month of a text", simpleTemplate(from, id, "<group by=\"{Tools.Description}\" per=\"month\"/>"), "",
        ResultCode::cannotLoadReport, "no date");
}

void TestDataSource::refusesByCode()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, formula);
    QFETCH(QString, words);
    ReportCrib crib;
    int code = ResultCode::ok;
    QString detail;
    try {
        const Read read(crib, content, formula);
    } catch (const ReportError &error) {
        code = error.code();
        detail = error.detail();
    }
    QTEST(code, "code");
    QVERIFY2(detail.contains(words), qPrintable(detail));
}

void TestDataSource::readsLargeTablesInParts()
{
    ReportCrib crib;
    crib.fill("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 50000)"
              " INSERT INTO CheckOutIn (ID, Tool_Id, Employee) SELECT i * 7 - 1000, i, '1' FROM n");
    const QByteArray content = simpleTemplate(loans, "{CheckOutIn.Tool_Id}");
    double reached = -1;
    int reports = 0;
    const Read read(crib, content, "{CheckOutIn.Tool_Id} > 10", [&](double done) {
        QVERIFY(done > reached && done <= 1);
        reached = done;
        ++reports;
    });
    QCOMPARE(read.records.count(), 49'990);
    QStringList tools = read.texts(read.report.fields.find("CheckOutIn", "Tool_Id"));
    QCOMPARE(tools.removeDuplicates(), 0);
    QVERIFY(reports >= 3);
    const auto cancel = [](double done) {
        if (done > 0.3)
            throw ReportError(ResultCode::cancelled, {});
    };
    QVERIFY_EXCEPTION_THROWN(Read(crib, content, {}, cancel), ReportError);
    crib.execute("DELETE FROM CheckOutIn"); // no lock is left behind
}

void TestDataSource::readsListedRecordsOnly()
{
    ReportCrib crib;
    crib.fill("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 30000)"
              " INSERT INTO CheckOutIn (ID, Tool_Id, Active) SELECT i, i * 2, i % 2 - 1 FROM n");
    QStringList terms;
    for (int id = 25'000; id < 27'500; ++id)
        terms.append(QStringLiteral("{CheckOutIn.id} = %1").arg(id));
    const QString formula =
        terms.join(" or ") + " or {CheckOutIn.id} = 12.5 or {CheckOutIn.id} = 90000 or {CheckOutIn.id} = 3";
    const qint64 before = crib.database->counters().rowsFetched;
    const Read read(crib, simpleTemplate(loans + "<where>{CheckOutIn.Active} = false</where>", "{CheckOutIn.Tool_Id}"),
                    formula);
    QCOMPARE(read.records.count(), 1251);
    QVERIFY(crib.database->counters().rowsFetched - before < 2600);
}

void TestDataSource::tooManyRecords()
{
    ReportCrib crib;
    crib.fill("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 200001) INSERT INTO Types "
              "(Description) SELECT 'x' FROM n");
    const QByteArray content = simpleTemplate("<from table=\"Types\"/>", "{Types.ID}");
    QCOMPARE(Read(crib, content, "{Types.ID} > 1").records.count(), 200'000);
    try {
        const Read read(crib, content);
        QFAIL("read too many records");
    } catch (const ReportError &error) {
        QCOMPARE(error.code(), int(ResultCode::outOfMemory));
    }
}

QTEST_APPLESS_MAIN(TestDataSource)
#include "tst_datasource.moc"
