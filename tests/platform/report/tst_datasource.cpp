#include "tests/platform/report/ReportCrib.h"
#include "tests/support/DataRows.h"

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
        QCOMPARE(read.records.firstOpening(0), 0);
        QCOMPARE(read.records.firstOpening(2), 1);
        QCOMPARE(read.records.firstClosing(2), 0);
        QCOMPARE(read.records.run(0, 3).first, 3);
        QCOMPARE(read.records.run(0, 3).last, 4);
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

    void numbersOverGroupsEqualTheStatements()
    {
        ReportCrib crib;
        scrapRandomly(crib);
        const Read read(
            crib,
            simpleTemplate(
                scrap, "{sum(Scrap.PricePer)}{count()}{count(Scrap.Description)}",
                "<group by=\"{Scrap.LineItemTypeId}\"/><group by=\"{Scrap.Reason}\"><footer><line><cell "
                "in=\"a\">{count()}{count(Scrap.Employee)}{sum(Scrap.PricePer)}"
                "{avg(Scrap.PricePer)}{min(Scrap.Description)}{max(Scrap.ScrapDate)}</cell></line></footer></group>"));
        // Texts have no minimum in the engine's language that knows our order.
        const Recordset expected = crib.database->openNative(
            "SELECT count(*), count(Employee), sum(PricePer), avg(PricePer), NULL, max(ScrapDate), LineItemTypeId, "
            "Reason FROM Scrap GROUP BY LineItemTypeId, Reason ORDER BY LineItemTypeId, Reason");
        int row = 0;
        for (int group = 0; group < expected.recordCount(); ++group) {
            for (int number : {0, 1, 5})
                QCOMPARE(read.records.aggregate(number, row).toText(), expected.at(group, number).toText());
            for (int number : {2, 3})
                QVERIFY(qAbs(read.records.aggregate(number, row).toNumber() - expected.at(group, number).toNumber())
                        < 1e-9);
            for (int i = read.records.run(1, row).first; i <= read.records.run(1, row).last; ++i) {
                const Value &description = read.records.record(i)[read.report.fields.find("Scrap", "Description")];
                QVERIFY(description.toText().isEmpty()
                        || compareText(description.toText(), read.records.aggregate(4, row).toText()) >= 0);
            }
            row = read.records.run(1, row).last + 1;
        }
        QCOMPARE(row, 300);
        const Recordset total =
            crib.database->openNative("SELECT sum(PricePer), count(*), count(nullif(Description, '')) FROM Scrap");
        QVERIFY(qAbs(read.records.aggregate(6, 100).toNumber() - total.at(0, 0).toNumber()) < 1e-9);
        QCOMPARE(read.records.aggregate(7, 0).toText(), total.at(0, 1).toText());
        QCOMPARE(read.records.aggregate(8, 299).toText(), total.at(0, 2).toText());
    }

    void refusesByCode_data()
    {
        columns<QByteArray, QString, int, QString>("content", "formula", "code", "words");
        const auto row = [](const char *name, const QByteArray &content, const QString &formula, int code,
                            const QString &words) { ::row(name, content, formula, code, words); };
        const QByteArray from = "<from table=\"Tools\"/>";
        const QByteArray id = "{Tools.ID}";
        row("good", simpleTemplate(from + "<join table=\"Types\" kind=\"inner\" on=\"Tools.Type = Types.ID\"/>", id),
            "{types.DESCRIPTION} = 'x'", ResultCode::ok, "");
        row("table missing", simpleTemplate("<from table=\"Tool\"/>", "{Tool.ID}"), "", ResultCode::tableNotFound,
            "line 1: the database has no table Tool");
        row("table with a quote", simpleTemplate("<from table=\"x') union select 1 --\"/>", id), "",
            ResultCode::tableNotFound, "");
        row("table twice", simpleTemplate(from + "<join table=\"tools\" on=\"Tools.Type = tools.ID\"/>", id), "",
            ResultCode::cannotLoadReport, "second table");
        row("joined to a later one",
            simpleTemplate(from
                               + "<join table=\"Types\" on=\"Types.ID = Locations.ID\"/><join table=\"Locations\" "
                                 "on=\"Tools.Location = Locations.ID\"/>",
                           id),
            "", ResultCode::cannotLoadReport, "not joined");
        row("column of the template", simpleTemplate(from, "\n{Tools.Colour}"), "", ResultCode::invalidFieldName,
            "line 1: {Tools.Colour}");
        row("table of the formula", simpleTemplate(from, id), "{Scrap.ID} = 1", ResultCode::invalidFieldName,
            "{Scrap.ID}");
        row("kind in the formula", simpleTemplate(from, id), "{Tools.ID} = 'x'", ResultCode::errorInFormula,
            "{Tools.ID}");
        row("kind in a condition", simpleTemplate(from, id, "<nodata when=\"{Tools.ID} = 'x'\"/>"), "",
            ResultCode::cannotLoadReport, "line 1: {Tools.ID}");
        row("sum over texts", simpleTemplate(from, "{sum(Tools.Description)}"), "", ResultCode::invalidSummaryField,
            "{Tools.Description}");
        row("date format of a number", simpleTemplate(from, "{Tools.ID:short date}"), "", ResultCode::cannotLoadReport,
            "format");
        row("money format of a count", simpleTemplate(from, "{count(Tools.Description):currency}"), "", ResultCode::ok,
            "");
        row("month of a text", simpleTemplate(from, id, "<group by=\"{Tools.Description}\" per=\"month\"/>"), "",
            ResultCode::cannotLoadReport, "no date");
    }

    void refusesByCode()
    {
        const auto [content, formula, words] = fetched<QByteArray, QString, QString>("content", "formula", "words");
        ReportCrib crib;
        QString detail;
        QTEST(codeOf([&] { Read(crib, content, formula); }, &detail), "code");
        QVERIFY2(detail.contains(words), qPrintable(detail));
    }

    void readsToTheEndsOfTheNumbers()
    {
        ReportCrib crib;
        crib.fill("INSERT INTO CheckOutIn (ID, Tool_Id) VALUES (-9223372036854775808, 1), (9223372036854775807, 2)");
        const QByteArray content = simpleTemplate("<from table=\"CheckOutIn\"/>", "{CheckOutIn.Tool_Id}");
        QCOMPARE(Read(crib, content).texts(), QStringList({"1", "2"}));
        QCOMPARE(Read(crib, content, "{CheckOutIn.ID} = 9223372036854775807").texts(), QStringList("2"));
    }

    void canBeCancelledDuringASlowJoin()
    {
        ReportCrib crib;
        crib.fill("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 2000) "
                  "INSERT INTO Job (JobNo) SELECT i FROM n");
        crib.fill("INSERT INTO Types (Description) SELECT 'x' FROM Job");
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
                  " INSERT INTO CheckOutIn (ID, Tool_Id, Employee) SELECT i * 7 - 1000, i, '1' FROM n");
        const QByteArray content = simpleTemplate(loans, "{CheckOutIn.Tool_Id}");
        const Read read(crib, content, "{CheckOutIn.Tool_Id} > 10");
        QCOMPARE(read.records.count(), 49'990);
        QStringList tools = read.texts(read.report.fields.find("CheckOutIn", "Tool_Id"));
        QCOMPARE(tools.removeDuplicates(), 0);
        const auto cancel = [](double done) {
            if (done > 0.3)
                throw ReportError(ResultCode::cancelled, {});
        };
        QVERIFY_EXCEPTION_THROWN(Read(crib, content, {}, cancel), ReportError);
        crib.execute("DELETE FROM CheckOutIn"); // no lock is left behind
    }

    void readsListedRecordsOnly()
    {
        ReportCrib crib;
        crib.fill("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 30000)"
                  " INSERT INTO CheckOutIn (ID, Tool_Id, Active) SELECT i, i * 2, i % 2 - 1 FROM n");
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
        QVERIFY(pulses < 5);
    }

private:
    static void scrapRandomly(ReportCrib &crib)
    {
        QRandomGenerator random(7);
        const auto oneOf = [&](const QStringList &values) { return values[random.bounded(values.size())]; };
        QStringList rows;
        for (int i = 0; i < 300; ++i)
            rows.append(QStringLiteral("(%1, %2, %3, %4, '2024-%5-01 12:30:15', %6)")
                            .arg(oneOf({"'Drill'", "'drill 10'", "'\u00c4xte'", "'axt'", "''", "NULL", "'9'"}),
                                 oneOf({"1", "2", "77", "NULL"}), oneOf({"4", "5"}), oneOf({"1", "2", "3", "NULL"}),
                                 oneOf({"01", "02", "11"}), QString::number(random.bounded(40000) / 100.0)));
        crib.fill(("INSERT INTO Scrap (Description, Employee, LineItemTypeId, Reason, ScrapDate, PricePer) VALUES "
                   + rows.join(','))
                      .toUtf8());
    }
};

QTEST_APPLESS_MAIN(TestDataSource)
#include "tst_datasource.moc"
