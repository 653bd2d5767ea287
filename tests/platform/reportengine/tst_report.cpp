#include "tests/platform/reportengine/ReportCrib.h"

#include "platform/reportengine/CsvWriter.h"
#include "platform/reportengine/DataSource.h"
#include "platform/reportengine/PageWriter.h"
#include "platform/reportengine/Report.h"
#include "platform/system/Clock.h"

#include <QPdfWriter>

namespace {

const QByteArray tools = simpleTemplate(
    "<from table=\"Tools\"/><sort by=\"{Tools.ID}\"/>", "{Tools.Description} {Tools.PricePer:currency}",
    "<pageheader><line><cell in=\"a\">{?title}, {?selection}</cell></line></pageheader><reportfooter><line "
    "when=\"{Tools.ID} = 1\"><cell in=\"a\">of one</cell></line></reportfooter>");

}

class TestReport : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_report.reset();
        m_crib.emplace();
        m_crib->addTemplate("Tools.rpt", tools);
        m_report.emplace(m_crib->database.get());
    }

    void opensByName_data()
    {
        row("name", "Tools.rpt", 0);
        row("place in the folder", "FOLDER\\Tools.rpt", 0);
        row("absent", "FOLDER\\Absent.rpt", ResultCode::reportNotFound);
        for (const char *name : {"", "FOLDER\\", "Tools.xml", "sub\\Tools.rpt", "..\\Tools.rpt", "a..rpt",
                                 "/etc/Tools.rpt", "C:\\Tools.rpt", "a\tb.rpt", "FOLDER2\\Tools.rpt"})
            row(name, name, ResultCode::invalidFileName);
    }

    void opensByName()
    {
        const auto [name, code] = fetched<QString, int>();
        QCOMPARE(m_report->open(QString(name).replace("FOLDER", m_crib->folder.path()), {}), code);
    }

    void failures()
    {
        m_crib->addTemplate("Odd.rpt", simpleTemplate("<from table=\"Tools\"/>", "{Tools.ID}{?color}"));
        QCOMPARE(m_report->open("Odd.rpt", {}), 20553);
        QCOMPARE(m_report->lastDetail(), "Odd.rpt, line 1: unknown parameter {?color}");
        QCOMPARE(Report(nullptr).open("Tools.rpt", {}), int(ResultCode::cannotOpenDatabase));
        m_crib->fill("DROP TABLE [Tools]");
        QCOMPARE(m_report->open("Tools.rpt", {}), int(ResultCode::tableNotFound));
        QVERIFY(QFile::remove(file("crib.mdb")));
        QCOMPARE(m_report->open("Tools.rpt", {}), int(ResultCode::cannotOpenDatabase));
    }

    void oneStepAtATime()
    {
        addTools(200);
        int busy = 0;
        m_report->setProgress([&](double) { busy = m_report->open("Tools.rpt", {}); });
        QCOMPARE(m_report->open("Tools.rpt", {}), 0);
        QCOMPARE(busy, int(ResultCode::jobBusy));
        QCOMPARE(m_report->layout(), 0);
        QPdfWriter printer(file("no/such/folder.pdf"));
        QCOMPARE(m_report->print(printer, 0, 0), int(ResultCode::invalidPrinter));
    }

    void cancelledRunLeavesFilesAlone()
    {
        addTools(2000);
        const QString pdf = file("a.pdf");
        writeFile(pdf, "before");
        QCOMPARE(m_report->open("Tools.rpt", {}), 0);
        const QStringList files = QDir(m_crib->folder.path()).entryList();
        int calls = 0;
        m_report->setProgress([&](double) {
            if (++calls == 5)
                m_report->cancel();
        });
        QCOMPARE(m_report->writePdf(pdf), int(ResultCode::cancelled));
        calls = 4;
        QCOMPARE(m_report->writeCsv(file("a.csv")), int(ResultCode::cancelled));
        QCOMPARE(contentOf(pdf), "before");
        QCOMPARE(QDir(m_crib->folder.path()).entryList(), files);
        QCOMPARE(m_report->writePdf(pdf), 0);
        const QByteArray written = contentOf(pdf);
        QVERIFY(written.startsWith("%PDF") && m_report->pageCount() > 1);
        QCOMPARE(written.count("/Type /Page\n"), m_report->pageCount());
        QVERIFY(written.contains("/ToUnicode")); // so that its text can be selected
    }

    void findsTexts()
    {
        addTools(20);
        QCOMPARE(m_report->open("Tools.rpt", {}, {{"title", "All tools"}}), 0);
        QCOMPARE(m_report->layout(), 0);
        QCOMPARE(m_report->find("reamer 1", 0).size(), 11);
        QCOMPARE(m_report->find("All tools, All records", 0).size(), 1);
        QCOMPARE(m_report->find("of one", 0).size(), 0);
        QVERIFY(m_report->find("", 0).isEmpty() && m_report->find("reamer", 99).isEmpty());

        // Also where it is broken into lines.
        m_crib->execute("Update Tools set Description='" + QString("Hand reamer ").repeated(20) + "'");
        QCOMPARE(m_report->open("Tools.rpt", "{Tools.ID} = 1"), 0);
        QCOMPARE(m_report->layout(), 0);
        QCOMPARE(m_report->find(QString("reamer hand ").repeated(15), 0).size(), 1);
        QCOMPARE(m_report->find("Number is 1", 0).size(), 1);
        QCOMPARE(m_report->find("of one", 0).size(), 1);
    }

    void writesCsv()
    {
        const QByteArray number = ServerDatabase::isWanted() ? "15" : "1.5"; // a file's columns take anything
        m_crib->fill("INSERT INTO CheckOutIn (Tool_Id, CheckOutDesc, CheckOutPartNo, DateOut, Active, JobOrOH) VALUES"
                     " (1, 'Bit, \"long\"', '=1+1', '2024-02-03 04:05:06', -1, -7),"
                     " (2, '\u00c4xte\ntwo', '@x', NULL, 0, NULL), (3, '', '-12', NULL, 0, "
                     + number + ')');
        m_crib->addTemplate("Loans.rpt",
                            simpleTemplate("<from table=\"CheckOutIn\"/><join table=\"Tools\" on=\"Tools.ID = "
                                           "CheckOutIn.Tool_Id\"/><sort by=\"{CheckOutIn.Tool_Id}\"/>",
                                           "{CheckOutIn.CheckOutDesc}{CheckOutIn.CheckOutPartNo}{CheckOutIn.DateOut:"
                                           "short date}{CheckOutIn.Active:yes/no}{CheckOutIn.JobOrOH:currency}"));
        QCOMPARE(m_report->open("Loans.rpt", {}), 0);
        const QString csv = file("a.csv");
        QCOMPARE(m_report->writeCsv(csv), 0);
        QCOMPARE(contentOf(csv),
                 QByteArray("\xEF\xBB\xBF"
                            "CheckOutIn.Tool_Id,CheckOutIn.CheckOutDesc,CheckOutIn.CheckOutPartNo,CheckOutIn.DateOut,"
                            "CheckOutIn.Active,CheckOutIn.JobOrOH,Tools.ID\r\n"
                            "1,\"Bit, \"\"long\"\"\",'=1+1,2024-02-03 04:05:06,-1,-7,\r\n"
                            "2,\"Äxte\ntwo\",'@x,,0,,\r\n"
                            "3,,'-12,,0,"
                            + number + ",\r\n"));
    }

    void refusesTargets()
    {
        addTools(3);
        QCOMPARE(m_report->writePdf(file("a.pdf")), int(ResultCode::reportNotFound)); // nothing is open
        QCOMPARE(m_report->open("Tools.rpt", {}), 0);
        const QString existing = file("a.pdf");
        writeFile(existing, "before");
        for (const QString &absent : {file("no/a.pdf"), m_crib->folder.path(), QString()}) {
            QCOMPARE(m_report->writePdf(absent), int(ResultCode::fileError));
            QCOMPARE(m_report->writeCsv(absent), int(ResultCode::fileError));
        }
        QCOMPARE(m_report->writePdf(existing, false), int(ResultCode::fileExists));
        QCOMPARE(m_report->writeCsv(existing, false), int(ResultCode::fileExists));
        QCOMPARE(contentOf(existing), "before");
        QCOMPARE(m_report->writePdf(existing), 0);
    }

    void fullDisk()
    {
        addTools(5000);
        Template report = TemplateReader::read(tools, "Tools.rpt");
        Formula all;
        const GroupedRecords records = DataSource(*m_crib->database, report, all).read([](double) {});
        BandComposer composer(report, records, {}, Clock::now());
        Pagination layout(report, records, composer);
        QVERIFY(layout.advance(QDeadlineTimer::Forever));
        QFile full("/dev/full");
        if (!full.open(QIODevice::WriteOnly))
            QSKIP("there is no device that is full");
        const auto progress = [](double) {};
        PageWriter writer(layout, composer);
        QCOMPARE(codeOf([&] { writer.writePdf(full, report, "T", progress); }), int(ResultCode::diskFull));
        QCOMPARE(codeOf([&] { writeCsv(full, records, report.fields, progress); }), int(ResultCode::diskFull));
    }

private:
    void addTools(int count)
    {
        m_crib->fill("INSERT INTO Types (ID, Description) VALUES (1, 'T');"
                     "INSERT INTO Locations (ID, Description) VALUES (1, 'L')");
        const QString reamers =
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) INSERT INTO "
            "[Tools] ([Type], [Location], [Description], [PricePer]) SELECT 1, 1, 'Reamer ' || i, i / 4.0 FROM n";
        m_crib->fill(reamers.arg(count));
    }
    QString file(const QString &name) const { return m_crib->folder.filePath(name); }

    std::optional<ReportCrib> m_crib;
    std::optional<Report> m_report;
};

QTEST_MAIN(TestReport)
#include "tst_report.moc"
