#include "tests/platform/reportengine/ReportCrib.h"

#include "platform/reportengine/DataSource.h"

#include <QRandomGenerator>

namespace {

const QByteArray loans =
    "<from table=\"CheckOutIn\"/><join table=\"Employee\" on=\"CheckOutIn.Employee = Employee.EmpID\"/>"
    "<join table=\"Operation\" on=\"CheckOutIn.JobOrOH = Operation.OperNo\"/>";

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
    GroupedRecords records;
};

}

class TestDataSource : public QObject
{
    Q_OBJECT

private slots:
    void ordersByGroupsThenFields()
    {
        ReportCrib crib;
        crib.fill("INSERT INTO Employee (EmpID, LastName) VALUES (1, 'Zorn'), (2, 'adams'), (3, 'Adams')");
        crib.fill("INSERT INTO CheckOutIn (Tool_Id, Employee, CheckOutDesc, DateOut) VALUES"
                  " (1, '1', 'b', '2024-01-01 00:00:00'), (2, '3', 'b', '2024-01-02 00:00:00'), (3, '2', 'B', "
                  "'2024-01-03 00:00:00'), (4, '2', NULL, '2024-01-04 00:00:00'), (5, '3', 'B', '2024-01-05 "
                  "00:00:00'), (6, '8', 'x', NULL)");
        const Read read(crib,
                        simpleTemplate(loans
                                           + "<sort by=\"{CheckOutIn.CheckOutDesc}\"/><sort "
                                             "by=\"{CheckOutIn.DateOut}\" order=\"descending\"/>",
                                       "{CheckOutIn.Tool_Id}",
                                       "<group by=\"{CheckOutIn.Employee}\" sort=\"{Employee.LastName}\"/>"));
        // Without a name first, then both of name Adams by number; within them texts without regard to case, the latest
        // first.
        QCOMPARE(read.texts(read.report.fields.find("CheckOutIn", "Tool_Id")),
                 QStringList({"6", "4", "3", "5", "2", "1"}));
        QCOMPARE(read.records.run(0, 3).first, 3);
        QCOMPARE(read.records.run(0, 3).last, 4);
    }

    void foldsWhatPrintsAlike()
    {
        ReportCrib crib;
        crib.fill("INSERT INTO Scrap (Job, Employee, PricePer, Notes, ScrapDate) VALUES (1, 1, 0.1, 'b', NULL), "
                  "(2, 1, 5, '', '2024-01-01 00:00:00'), (1, 1, 0.2, 'A', '2024-05-05 00:00:00'), (1, 2, NULL, NULL, "
                  "'2023-01-01 00:00:00'), (2, 1, -7, 'c', '2024-01-01 00:00:00'), (1, 1, 1e9, 'c', NULL)");
        Template report = TemplateReader::read(
            R"(<report version="1"><data><from table="Scrap"/></data><columns><column name="c" width="1"/></columns>
            <group by="{Scrap.Job}"><footer><line><cell in="c" when="{Scrap.Employee} = 1">{sum(Scrap.PricePer)}
            {avg(Scrap.PricePer)} {min(Scrap.Notes)} {max(Scrap.ScrapDate)} {count(Scrap.Notes)} {count()}</cell></line>
            </footer></group><reportfooter><line><cell in="c">{sum(Scrap.PricePer)} {min(Scrap.PricePer)} {count()}</cell>
            </line></reportfooter></report>)",
            "Test.rpt");
        Formula all = Formula::parse({}, report.fields);
        const DataSource source(*crib.database, report, all);
        const GroupedRecords folded = source.read([](double) {}), each = source.read([](double) {}, true);
        QCOMPARE(folded.count(), 3); // of job 1 two employees'
        QCOMPARE(folded.recordCount(), 6);
        QCOMPARE(each.recordCount(), 6);
        for (int number = 0; number < report.aggregates.size(); ++number)
            for (const auto &[row, same] : {std::pair(0, 0), {2, 5}})
                QCOMPARE(folded.aggregate(number, row).toText(), each.aggregate(number, same).toText());
    }

    void groupsByPeriod()
    {
        ReportCrib crib;
        crib.fill("INSERT INTO Scrap (ScrapDate, ToolID) VALUES ('2024-02-10 10:00:00', 1), ('2024-01-31 23:59:59', "
                  "3), ('2023-02-01 00:00:00', 4), ('2024-02-09 00:00:00', 2), (NULL, 5)");
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

    void lastPartnersAndPaths_data()
    {
        row("all", "", "1 2025-05-05 00:00:00 Hall\\Cabinet, 2  Hall\\Cabinet, 3 2024-03-03 00:00:00 Hall");
        row("not since a date", "{CheckOutIn.DateOut} < date(2025,1,1)", "3 2024-03-03 00:00:00 Hall");
        row("listed", "{Tools.ID} = 1 or {Tools.ID} = 3",
            "1 2025-05-05 00:00:00 Hall\\Cabinet, 3 2024-03-03 00:00:00 Hall");
        row("by path", "{Locations.Path} = 'hall\\cabinet' and {Employee.LastName} = 'Zorn'",
            "1 2025-05-05 00:00:00 Hall\\Cabinet");
    }

    void lastPartnersAndPaths()
    {
        const auto [formula, expected] = fetched<QString, QString>();
        ReportCrib crib;
        crib.fill(
            "INSERT INTO Types (ID, Description) VALUES (1, 'Drills'); INSERT INTO Locations (ID, Description, "
            "Parent) VALUES (1, 'Hall', 0), (2, 'Cabinet', 1); INSERT INTO Tools (ID, Description, Type, Location)"
            " VALUES (1, 'a', 1, 2), (2, 'b', 1, 2), (3, 'c', 1, 1); INSERT INTO Employee (EmpID, LastName) "
            "VALUES (1, 'adams'), (2, 'Zorn'); INSERT INTO CheckOutIn (Tool_Id, DateOut, Employee, Active) VALUES "
            "(1, '2024-01-01 00:00:00', '1', 0), (1, '2025-05-05 00:00:00', '2', 0), (1, '2023-01-01 00:00:00', "
            "'1', 0), (3, '2024-03-03 00:00:00', '2', 0)");
        const Read read(
            crib,
            simpleTemplate("<from table=\"Tools\"/><join table=\"Locations\" on=\"Tools.Location = "
                           "Locations.ID\"/><join table=\"CheckOutIn\" on=\"CheckOutIn.Tool_Id = Tools.ID\" "
                           "last=\"{CheckOutIn.DateOut}\"/><join table=\"Employee\" on=\"CheckOutIn.Employee = "
                           "Employee.EmpID\"/>",
                           "{Tools.ID}{Locations.Path}{Employee.LastName}"),
            formula);
        const QStringList tools = read.texts(read.report.fields.find("Tools", "ID")),
                          dates = read.texts(read.report.fields.find("CheckOutIn", "DateOut")),
                          paths = read.texts(read.report.fields.find("Locations", "Path"));
        QStringList shown;
        for (int i = 0; i < tools.size(); ++i)
            shown.append(tools[i] + ' ' + dates[i] + ' ' + paths[i]);
        QCOMPARE(shown.join(", "), expected);
    }

    void lastPartnersOfManyRows()
    {
        ReportCrib crib;
        crib.fill("INSERT INTO Types (ID, Description) VALUES (1, 'x')");
        crib.fill("INSERT INTO Locations (ID, Description) VALUES (1, 'x')");
        crib.fill("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 4000) "
                  "INSERT INTO [Tools] ([ID], [Description], [Type], [Location]) SELECT i, 'x', 1, 1 FROM n");
        std::vector<int> years(4001);
        QStringList loans;
        for (int i = 0; i < 9000; ++i) {
            const int tool = i % 3500 + 1, year = 2010 + i * 7 % 13;
            years[tool] = std::max(years[tool], year);
            loans.append(QString("(%1, 0, '%2-01-01 00:00:00')").arg(tool).arg(year));
        }
        crib.fill("INSERT INTO CheckOutIn (Tool_Id, Active, DateOut) VALUES " + loans.join(','));
        const QByteArray content =
            simpleTemplate("<from table=\"Tools\"/><join table=\"CheckOutIn\" on=\"CheckOutIn.Tool_Id = Tools.ID\" "
                           "last=\"{CheckOutIn.DateOut}\"/>",
                           "{Tools.ID} {CheckOutIn.DateOut}");
        for (const auto &[formula, most] : {std::pair("", 3000), {"{CheckOutIn.DateOut} < date(2020,1,1)", 2020}}) {
            const Read read(crib, content, formula);
            QStringList expected;
            for (int id = 1; id <= 4000; ++id)
                if (years[id] < most && (years[id] > 0 || most > 2020))
                    expected.append(QString::number(id) + ' ' + (years[id] > 0 ? QString::number(years[id]) : ""));
            QStringList shown;
            for (int row = 0; row < read.records.count(); ++row)
                shown.append(
                    read.records.record(row)[read.report.fields.find("Tools", "ID")].toText() + ' '
                    + read.records.record(row)[read.report.fields.find("CheckOutIn", "DateOut")].toText().left(4));
            QCOMPARE(shown, expected);
        }
    }

    void refusesByCode_data()
    {
        const QByteArray from = "<from table=\"Tools\"/>";
        const QByteArray id = "{Tools.ID}";
        row("good", simpleTemplate(from + "<join table=\"Types\" kind=\"inner\" on=\"Tools.Type = Types.ID\"/>", id),
            "{types.DESCRIPTION} = 'x'", ResultCode::ok, "");
        row("table missing", simpleTemplate("<from table=\"Tool\"/>", "{Tool.ID}"), "", ResultCode::tableNotFound,
            "line 1: the database has no table Tool");
        row("table with a quote", simpleTemplate("<from table=\"x') union select 1 --\"/>", id), "",
            ResultCode::tableNotFound, "");
        row("joined to a later one",
            simpleTemplate(from
                               + "<join table=\"Types\" on=\"Types.ID = Locations.ID\"/><join table=\"Locations\" "
                                 "on=\"Tools.Location = Locations.ID\"/>",
                           id),
            "", ResultCode::cannotLoadReport, "not joined");
        row("column of the template", simpleTemplate(from, "\n{Tools.Colour}"), "", ResultCode::invalidFieldName,
            "line 1: {Tools.Colour}");
        row("last by a column of another table",
            simpleTemplate(from + "<join table=\"Types\" on=\"Tools.Type = Types.ID\" last=\"{Tools.ID}\"/>", id), "",
            ResultCode::cannotLoadReport, "last");
        row("chart of dates",
            simpleTemplate(
                "<from table=\"Scrap\"/>", "{Scrap.ID}",
                "<reportheader><chart value=\"{max(Scrap.ScrapDate)}\"><label>x</label></chart></reportheader>"
                "<group by=\"{Scrap.Job}\"/>"),
            "", ResultCode::cannotLoadReport, "no number");
        row("kind in a condition", simpleTemplate(from, id, "<nodata when=\"{Tools.ID} = 'x'\"/>"), "",
            ResultCode::cannotLoadReport, "line 1: {Tools.ID}");
        row("sum over texts", simpleTemplate(from, "{sum(Tools.Description)}"), "", ResultCode::invalidSummaryField,
            "{Tools.Description}");
        row("date format of a number", simpleTemplate(from, "{Tools.ID:short date}"), "", ResultCode::cannotLoadReport,
            "format");
        row("month of a text", simpleTemplate(from, id, "<group by=\"{Tools.Description}\" per=\"month\"/>"), "",
            ResultCode::cannotLoadReport, "no date");
    }

    void refusesByCode()
    {
        const auto [content, formula, code, words] = fetched<QByteArray, QString, int, QString>();
        ReportCrib crib;
        QString detail;
        QCOMPARE(codeOf([&] { Read(crib, content, formula); }, &detail), code);
        QVERIFY2(detail.contains(words), qPrintable(detail));
    }

    void canBeCancelledDuringASlowJoin()
    {
        ReportCrib crib;
        crib.fill("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 2000) "
                  "INSERT INTO [Job] ([JobNo]) SELECT i FROM n");
        crib.fill("INSERT INTO Types (Description) SELECT 'x' FROM [Job]");
        int pulses = 0;
        const auto cancel = [&](double) {
            if (++pulses == 9)
                throw ReportError(ResultCode::cancelled, {});
        };
        // A table without a counter, and no index that could help.
        const QByteArray content = simpleTemplate(
            "<from table=\"Job\"/><join table=\"Types\" on=\"Job.JobNo = Types.Description\"/>", "{Job.JobNo}");
        QCOMPARE(codeOf([&] { Read(crib, content, {}, cancel); }), int(ResultCode::cancelled));
        crib.execute("DELETE FROM Types"); // no lock is left behind
    }

    void readsLargeTablesInOrder()
    {
        ReportCrib crib;
        crib.fill("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 50000)"
                  " INSERT INTO [CheckOutIn] ([ID], [Tool_Id], [Employee]) SELECT i * 7 - 1000, i, '1' FROM n");
        // To the very ends of the numbers
        const bool wide = !ServerDatabase::isWanted();
        crib.fill(QString("INSERT INTO CheckOutIn (ID, Tool_Id) VALUES (%1, 50001), (%2, 50002)")
                      .arg(wide ? INT64_MIN : INT32_MIN)
                      .arg(wide ? INT64_MAX : INT32_MAX));
        const Read read(crib, simpleTemplate(loans, "{CheckOutIn.Tool_Id}"), "{CheckOutIn.Tool_Id} > 10");
        QCOMPARE(read.records.count(), 49'992);
        QStringList tools = read.texts(read.report.fields.find("CheckOutIn", "Tool_Id"));
        QCOMPARE(tools.removeDuplicates(), 0);
    }

    void readsListedRecordsOnly()
    {
        ReportCrib crib;
        crib.fill("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 30000)"
                  " INSERT INTO [CheckOutIn] ([ID], [Tool_Id], [Active]) SELECT i, i * 2, i % 2 - 1 FROM n");
        QStringList terms;
        for (int id = 25'000; id < 27'500; ++id)
            terms.append(QStringLiteral("{CheckOutIn.id} = %1").arg(id));
        const QString formula = terms.join(" or ")
            + " or {CheckOutIn.id} = 12.5 or {CheckOutIn.id} = 90000 or {CheckOutIn.id} = 3 or " + terms.first();
        int pulses = 0;
        const Read read(crib,
                        simpleTemplate(loans + "<where>{CheckOutIn.Active} = false</where>", "{CheckOutIn.Tool_Id}"),
                        formula, [&](double) { ++pulses; });
        QCOMPARE(read.records.count(), 1251);
        QVERIFY(pulses < 5 || ServerDatabase::isWanted()); // where they tell the time
    }

    void databaseLeavesOutNothingThatMatches()
    {
        ReportCrib crib;
        QRandomGenerator random(7);
        const auto any = [&](const QStringList &list) { return list[random.bounded(int(list.size()))]; };
        const QStringList texts{"Drill", "drill ", "DRILL", "it''s",  "\"", "[x]", "%", "17",
                                " 17",   "017",    "1e1",   "$17.00", "é",  "",    "#"};
        const QStringList numbers{"0", "-1", "17", "16.5", "-0.125", "1000000000", "99999.99"};
        const QStringList days{"2026-02-28", "2026-03-01", "1999-12-31"};
        QStringList scrap, employees;
        for (int i = 0; i < 300; ++i) {
            const auto orNull = [&](const QString &value) { return random.bounded(6) ? value : "NULL"; };
            scrap << '(' + orNull('\'' + any(texts) + '\'') + ',' + orNull(any(numbers)) + ','
                    + orNull(any({"16", "17", "18"})) + ','
                    + orNull('\'' + any(days) + any({" 00:00:00'", " 23:59:59'"})) + ')';
        }
        for (const auto number : {"16", "17", "90"})
            employees << QString("(%1, '%2', 'x')").arg(number, any(texts));
        crib.fill("INSERT INTO Scrap (Notes, PricePer, Employee, ScrapDate) VALUES " + scrap.join(','));
        crib.fill("INSERT INTO Employee (EmpID, LastName, FirstName) VALUES " + employees.join(','));

        const QByteArray content = simpleTemplate(
            "<from table=\"Scrap\"/><join table=\"Employee\" on=\"Scrap.Employee = Employee.EmpID\"/>",
            "{Scrap.ID} {Scrap.Notes} {Scrap.PricePer} {Scrap.Employee} {Scrap.ScrapDate} {Employee.LastName}");
        const Read all(crib, content);
        const auto constant = [&](const QString &field) {
            if (field == "ScrapDate")
                return "date(" + any(days).replace('-', ',').replace(",0", ",") + ')';
            return field == "PricePer" || field == "Employee" || random.bounded(3) == 0 ? any(numbers)
                                                                                        : '\'' + any(texts) + '\'';
        };
        const auto term = [&] {
            const QString field = any({"Notes", "PricePer", "Employee", "ScrapDate", "LastName"});
            const QString name = (field == "LastName" ? "{Employee." : "{Scrap.") + field + '}';
            if (random.bounded(4) > 0)
                return name + any({" = ", " <> ", " < ", " <= ", " > ", " >= "}) + constant(field);
            const bool isText = field == "Notes" || field == "LastName";
            const auto end = [&] { return isText ? '\'' + any(texts) + '\'' : constant(field); };
            const QString first = end();
            return name + " in " + first + " to " + end();
        };
        int found = 0;
        for (int round = 0; round < 200; ++round) {
            QString formula = term();
            for (int more = random.bounded(4); more > 0; --more)
                formula = any({formula, '(' + formula + ')'}) + any({" and ", " or "}) + term();
            Template report = all.report;
            Formula asked = Formula::parse(formula, report.fields);
            asked.bind(report.fields);
            QStringList expected;
            for (int row = 0; row < all.records.count(); ++row)
                if (asked.matches(all.records.record(row)))
                    expected.append(all.records.record(row)[0].toText());
            QVERIFY2(Read(crib, content, formula).texts() == expected, qPrintable(formula));
            found += expected.isEmpty() ? 0 : 1;
        }
        QVERIFY(found > 50);
    }
};

QTEST_APPLESS_MAIN(TestDataSource)
#include "tst_datasource.moc"
