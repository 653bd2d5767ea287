#include "tests/platform/report/ReportCrib.h"

#include "platform/report/CsvWriter.h"
#include "platform/report/DataSource.h"
#include "platform/report/PageWriter.h"
#include "platform/report/Report.h"
#include "platform/system/Clock.h"

#include <QPainter>
#include <QPdfWriter>
#include <QProcess>

namespace {

const QByteArray tools =
    simpleTemplate("<from table=\"Tools\"/><sort by=\"{Tools.ID}\"/>", "{Tools.Description} {Tools.PricePer:currency}",
                   "<pageheader><line><cell in=\"a\">{?title}, {?selection}</cell></line></pageheader>");

void addTools(ReportCrib &crib, int count)
{
    crib.fill(
        "INSERT INTO Types (ID, Description) VALUES (1, 'T'); INSERT INTO Locations (ID, Description) VALUES (1, 'L')");
    crib.fill(
        QStringLiteral(
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1)"
            " INSERT INTO Tools (Type, Location, Description, PricePer) SELECT 1, 1, 'Reamer ' || i, i / 4.0 FROM n")
            .arg(count)
            .toUtf8());
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

/// What a program of the PDF tools prints; nothing where it is not installed.
QByteArray printedBy(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    return process.waitForFinished() ? process.readAllStandardOutput() : QByteArray();
}

/// A device that is full from the start, where the system has one.
bool openFullDevice(QFile &file)
{
    file.setFileName(QStringLiteral("/dev/full"));
    return file.exists() && file.open(QIODevice::WriteOnly);
}

}

class TestReport : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_crib = std::make_unique<ReportCrib>(); }
    void cleanup() { m_crib.reset(); }

    void opensByName_data();
    void opensByName();
    void saysWhatIsWrong_data();
    void saysWhatIsWrong();
    void databaseFailures();
    void damagedDatabase();
    void fillsInTitleAndSelection();
    void oneStepAtATime();
    void cancelledRunLeavesFilesAlone();
    void cancelsBetweenSteps();
    void pagesOutside();
    void findsTexts();
    void writesPdf();
    void pdfShowsWhatTheScreenShows();
    void writesCsv();
    void refusesTargets();
    void fullDisk();
    void printerThatDoesNotStart();

private:
    std::unique_ptr<ReportCrib> m_crib;
};

void TestReport::opensByName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("code");
    QTest::newRow("name") << "Tools.rpt" << 0;
    QTest::newRow("place in the folder") << "FOLDER\\Tools.rpt" << 0;
    QTest::newRow("with the system's separator") << "FOLDER/Tools.rpt" << 0;
    QTest::newRow("ending in capitals") << "TOOLS2.RPT" << 0;
    QTest::newRow("absent") << "FOLDER\\Absent.rpt" << int(ResultCode::reportNotFound);
    for (const char *name : {"", "FOLDER\\", "Tools.xml", "sub\\Tools.rpt", "FOLDER\\sub/Tools.rpt", "..\\Tools.rpt",
                             "..rpt", "a..rpt", "/etc/Tools.rpt", "C:\\Tools.rpt", "a\tb.rpt", "FOLDER2\\Tools.rpt"})
        QTest::newRow(name) << name << int(ResultCode::invalidFileName);
}

void TestReport::opensByName()
{
    QFETCH(QString, name);
    m_crib->addTemplate("Tools.rpt", tools);
    m_crib->addTemplate("TOOLS2.RPT", tools);
    Report report(m_crib->database.get());
    QTEST(report.open(name.replace("FOLDER", m_crib->folder.path()), {}), "code");
}

void TestReport::saysWhatIsWrong_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("formula");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("detail");
    QTest::newRow("template") << QByteArray("<report version=\"1\">\n<data>\n<x/>") << "" << 20525
                              << "Test.rpt, line 3: unknown element <x>";
    QTest::newRow("table") << tools + QByteArray() << "{Scrap.ID} = 1" << 20509
                           << "{Scrap.ID} is no column of the report's tables";
    QTest::newRow("formula") << tools << "{Tools.ID} = " << 20515 << "formula, character 14: a value expected";
    QTest::newRow("limit") << tools << QString(70, '(') << 20500
                           << "formula, character 66: too many brackets within each other";
    QTest::newRow("parameter") << simpleTemplate("<from table=\"Tools\"/>", "{Tools.ID}{?color}") << "" << 20553
                               << "Test.rpt, line 1: unknown parameter {?color}";
    QTest::newRow("sum") << simpleTemplate("<from table=\"Tools\"/>", "\n{sum(Tools.Description)}") << "" << 20521
                         << "Test.rpt, line 1: {Tools.Description} is no number";
    QTest::newRow("no room") << simpleTemplate("<from table=\"Tools\"/>", "{Tools.ID}",
                                               "<pageheader>" + QByteArray("<line size=\"24\"/>").repeated(40)
                                                   + "</pageheader>")
                             << "" << 20525 << "Test.rpt: the pages' header and footer leave no room for rows";
}

void TestReport::saysWhatIsWrong()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, formula);
    QFETCH(int, code);
    QFETCH(QString, detail);
    m_crib->addTemplate("Test.rpt", content);
    m_crib->addTemplate("Tools.rpt", tools);
    Report report(m_crib->database.get());
    // The message on standard error, too
    QTest::ignoreMessage(QtWarningMsg, qPrintable(QStringLiteral("report error %1: %2").arg(code).arg(detail)));
    QCOMPARE(report.open("Test.rpt", formula), code);
    QCOMPARE(report.lastDetail(), detail);
    QCOMPARE(report.pageCount(), 0);
    QCOMPARE(report.open("Tools.rpt", {}), 0);
    QCOMPARE(report.lastDetail(), QString());
}

void TestReport::databaseFailures()
{
    m_crib->addTemplate("Tools.rpt", tools);
    QCOMPARE(Report(nullptr).open("Tools.rpt", {}), int(ResultCode::cannotOpenDatabase));
    Report report(m_crib->database.get());
    m_crib->fill("DROP TABLE Tools");
    QCOMPARE(report.open("Tools.rpt", {}), int(ResultCode::tableNotFound));
    QVERIFY(QFile::remove(m_crib->folder.filePath("crib.mdb")));
    QCOMPARE(report.open("Tools.rpt", {}), int(ResultCode::cannotOpenDatabase));
}

void TestReport::damagedDatabase()
{
    m_crib->addTemplate("Tools.rpt", tools);
    addTools(*m_crib, 5000);
    m_crib->database.reset();
    const QString path = m_crib->folder.filePath("crib.mdb");
    QByteArray content = contentOf(path);
    for (int page = 0; page < content.size(); page += 4096)
        if (content.mid(page, 4096).contains("Reamer 2500"))
            content.replace(page, 4096, QByteArray(4096, '\xff'));
    write(path, content);
    m_crib->database = Workspace::first().openDatabase(path);
    Report report(m_crib->database.get());
    QCOMPARE(report.open("Tools.rpt", {}), int(ResultCode::databaseError));
    QCOMPARE(report.recordCount(), 0);
}

void TestReport::fillsInTitleAndSelection()
{
    m_crib->addTemplate("Tools.rpt", QByteArray(tools).replace("version=\"1\"", "version=\"1\" title=\"All tools\""));
    Report report(m_crib->database.get());
    QCOMPARE(report.open("Tools.rpt", {}), 0);
    QCOMPARE(report.title(), "All tools");
    QCOMPARE(report.layout(), 0);
    QCOMPARE(report.find("All tools, All records", 0).size(), 1);
    QCOMPARE(report.open("Tools.rpt", " {Tools.ID}\n= 1", {{"title", "Query Results"}}), 0);
    QCOMPARE(report.layout(), 0);
    QCOMPARE(report.find("Query Results, {Tools.ID} = 1", 0).size(), 1);
}

void TestReport::oneStepAtATime()
{
    addTools(*m_crib, 100);
    m_crib->addTemplate("Tools.rpt", tools);
    Report report(m_crib->database.get());
    int busy = 0, painted = -1;
    report.setProgress([&](double) {
        busy = report.open("Tools.rpt", {});
        QImage image(10, 10, QImage::Format_RGB32);
        QPainter painter(&image);
        painted = report.paint(painter, 0);
    });
    QCOMPARE(report.open("Tools.rpt", {}), 0);
    QCOMPARE(busy, int(ResultCode::jobBusy));
    QCOMPARE(painted, int(ResultCode::invalidPageNumber));
    QCOMPARE(report.layout(), 0);
    QCOMPARE(report.writePdf(m_crib->folder.filePath("a.pdf")), 0);
    QCOMPARE(painted, 0); // a preview goes on being shown meanwhile
    QCOMPARE(busy, int(ResultCode::jobBusy));
}

void TestReport::cancelledRunLeavesFilesAlone()
{
    addTools(*m_crib, 2000);
    m_crib->addTemplate("Tools.rpt", tools);
    const QString pdf = m_crib->folder.filePath("a.pdf");
    write(pdf, "before");
    Report report(m_crib->database.get());
    QCOMPARE(report.open("Tools.rpt", {}), 0);
    const QStringList files = QDir(m_crib->folder.path()).entryList();
    int calls = 0;
    report.setProgress([&](double) {
        if (++calls == 5)
            report.cancel();
    });
    QCOMPARE(report.writePdf(pdf), int(ResultCode::cancelled));
    QCOMPARE(report.writeCsv(m_crib->folder.filePath("a.csv")), 0);
    calls = 4;
    QCOMPARE(report.writeCsv(m_crib->folder.filePath("b.csv")), int(ResultCode::cancelled));
    QCOMPARE(contentOf(pdf), "before");
    QStringList expected = files + QStringList("a.csv");
    expected.sort();
    QStringList found = QDir(m_crib->folder.path()).entryList();
    found.sort();
    QCOMPARE(found, expected);
    QCOMPARE(report.writePdf(pdf), 0);
    QVERIFY(contentOf(pdf).startsWith("%PDF"));
}

void TestReport::cancelsBetweenSteps()
{
    addTools(*m_crib, 2000);
    m_crib->addTemplate("Tools.rpt", tools);
    Report report(m_crib->database.get());
    QCOMPARE(report.open("Tools.rpt", {}), 0);
    report.cancel();
    QCOMPARE(report.layout(1), int(ResultCode::cancelled));
    QCOMPARE(report.layout(), 0);
    QVERIFY(report.isLaidOut());
}

void TestReport::pagesOutside()
{
    addTools(*m_crib, 200);
    m_crib->addTemplate("Tools.rpt", tools);
    Report report(m_crib->database.get());
    QCOMPARE(report.open("Tools.rpt", {}), 0);
    QCOMPARE(report.layout(), 0);
    QCOMPARE(report.pageSize(), QSizeF(8.5 * 1440, 11 * 1440));
    const int pages = report.pageCount();
    QVERIFY(pages > 1);
    QImage image(10, 10, QImage::Format_RGB32);
    QPainter painter(&image);
    QCOMPARE(report.paint(painter, -1), int(ResultCode::invalidPageNumber));
    QCOMPARE(report.paint(painter, pages), int(ResultCode::invalidPageNumber));
    QCOMPARE(report.paint(painter, pages - 1), 0);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter printer(&buffer);
    printer.setPageLayout(report.pageLayout());
    for (const auto &[first, last] : {std::pair(-1, 0), {1, 0}, {0, pages}, {pages, pages}})
        QCOMPARE(report.print(printer, first, last), int(ResultCode::invalidPageNumber));
    QCOMPARE(report.print(printer, 1, 1), 0);
    QCOMPARE(buffer.data().count("/Type /Page\n"), 1);
}

void TestReport::findsTexts()
{
    addTools(*m_crib, 200);
    m_crib->addTemplate("Tools.rpt", tools);
    Report report(m_crib->database.get());
    QCOMPARE(report.open("Tools.rpt", {}), 0);
    QCOMPARE(report.layout(), 0);
    int hits = 0;
    for (int page = 0; page < report.pageCount(); ++page)
        for (const QRectF &place : report.find("reamer 19", page)) {
            QVERIFY(QRectF(QPointF(), report.pageSize()).contains(place));
            ++hits;
        }
    QCOMPARE(hits, 11);
    QVERIFY(report.find("", 0).isEmpty());
    QVERIFY(report.find("reamer", 99).isEmpty());

    // Also where it is broken into lines.
    m_crib->execute("Update Tools set Description='" + QString("Hand reamer ").repeated(20) + "'");
    QCOMPARE(report.open("Tools.rpt", "{Tools.ID} = 1"), 0);
    QCOMPARE(report.layout(), 0);
    QCOMPARE(report.find(QString("reamer hand ").repeated(15), 0).size(), 1);
}

void TestReport::writesPdf()
{
    addTools(*m_crib, 500);
    m_crib->execute("UPDATE Tools SET Description = '\u00c4xte & S\u00f6hne' WHERE ID = 1");
    m_crib->addTemplate("Tools.rpt", tools);
    Report report(m_crib->database.get());
    QCOMPARE(report.open("Tools.rpt", {}, {{"title", "My title"}}), 0);
    const QString pdf = m_crib->folder.filePath("a.pdf");
    QCOMPARE(report.writePdf(pdf), 0);
    const QByteArray content = contentOf(pdf);
    QVERIFY(content.startsWith("%PDF"));
    QCOMPARE(content.count("/Type /Page\n"), report.pageCount());
    QVERIFY(content.contains("/ToUnicode")); // so that its text can be selected
    if (QStandardPaths::findExecutable("pdftotext").isEmpty())
        QSKIP("pdftotext is not installed");
    const QString text = QString::fromUtf8(printedBy("pdftotext", {"-layout", pdf, "-"}));
    QVERIFY(text.contains("\u00c4xte & S\u00f6hne $0.25"));
    for (int tool = 2; tool <= 500; ++tool)
        QVERIFY2(text.contains(QStringLiteral("Reamer %1 $").arg(tool)), qPrintable(QString::number(tool)));
    QVERIFY(printedBy("pdfinfo", {pdf}).contains("My title"));
}

void TestReport::pdfShowsWhatTheScreenShows()
{
    addTools(*m_crib, 40);
    m_crib->addTemplate("Tools.rpt", QByteArray(tools).replace("<detail>", "<detail shade=\"#8090a0\">"));
    Report report(m_crib->database.get());
    QCOMPARE(report.open("Tools.rpt", {}), 0);
    const QString pdf = m_crib->folder.filePath("a.pdf");
    QCOMPARE(report.writePdf(pdf), 0);
    const QSize size(425, 550);
    printedBy("pdftoppm",
              {"-png", "-scale-to-x", QString::number(size.width()), "-scale-to-y", QString::number(size.height()),
               "-f", "1", "-l", "1", "-singlefile", pdf, m_crib->folder.filePath("page")});
    const QImage printed(m_crib->folder.filePath("page.png"));
    if (printed.isNull())
        QSKIP("pdftoppm is not installed");
    QCOMPARE(printed.size(), size);
    QImage shown(size, QImage::Format_RGB32);
    shown.fill(Qt::white);
    QPainter painter(&shown);
    painter.scale(size.width() / report.pageSize().width(), size.height() / report.pageSize().height());
    QCOMPARE(report.paint(painter, 0), 0);
    painter.end();
    // Smoothed, so that only what stands elsewhere or not at all makes a difference.
    const auto coarse = [](const QImage &image) {
        return image.scaled(image.size() / 10, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    };
    const QImage a = coarse(printed), b = coarse(shown);
    int marked = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            marked += qGray(b.pixel(x, y)) < 240;
            QVERIFY2(qAbs(qGray(a.pixel(x, y)) - qGray(b.pixel(x, y))) < 50,
                     qPrintable(QStringLiteral("%1, %2").arg(x).arg(y)));
        }
    QVERIFY(marked > 200);
}

void TestReport::writesCsv()
{
    m_crib->fill("INSERT INTO CheckOutIn (Tool_Id, CheckOutDesc, CheckOutPartNo, DateOut, Active, JobOrOH) VALUES"
                 " (1, 'Bit, \"long\"', '=1+1', '2024-02-03 04:05:06', -1, -7), (2, '\u00c4xte' || char(10) || 'two', "
                 "'@x', NULL, 0, NULL), (3, '', '-12', '', 0, 1.5)");
    m_crib->addTemplate("Loans.rpt",
                        simpleTemplate("<from table=\"CheckOutIn\"/><sort by=\"{CheckOutIn.Tool_Id}\"/>",
                                       "{CheckOutIn.CheckOutDesc}{CheckOutIn.CheckOutPartNo}{CheckOutIn.DateOut:short "
                                       "date}{CheckOutIn.Active:yes/no}{CheckOutIn.JobOrOH:currency}"));
    Report report(m_crib->database.get());
    QCOMPARE(report.open("Loans.rpt", {}), 0);
    const QString csv = m_crib->folder.filePath("a.csv");
    QCOMPARE(report.writeCsv(csv), 0);
    QCOMPARE(contentOf(csv),
             QByteArray("\xEF\xBB\xBF"
                        "CheckOutIn.Tool_Id,CheckOutIn.CheckOutDesc,CheckOutIn.CheckOutPartNo,CheckOutIn.DateOut,"
                        "CheckOutIn.Active,CheckOutIn.JobOrOH\r\n"
                        "1,\"Bit, \"\"long\"\"\",'=1+1,2024-02-03 04:05:06,-1,-7\r\n"
                        "2,\"Äxte\ntwo\",'@x,,0,\r\n"
                        "3,,'-12,,0,1.5\r\n"));
}

void TestReport::refusesTargets()
{
    addTools(*m_crib, 3);
    m_crib->addTemplate("Tools.rpt", tools);
    Report report(m_crib->database.get());
    QCOMPARE(report.writePdf(m_crib->folder.filePath("a.pdf")), int(ResultCode::reportNotFound)); // nothing is open
    QCOMPARE(report.open("Tools.rpt", {}), 0);
    const QString existing = m_crib->folder.filePath("a.pdf");
    write(existing, "before");
    for (const QString &absent : {m_crib->folder.filePath("no/a.pdf"), m_crib->folder.path(), QString()}) {
        QCOMPARE(report.writePdf(absent), int(ResultCode::fileError));
        QCOMPARE(report.writeCsv(absent), int(ResultCode::fileError));
    }
    QCOMPARE(report.writePdf(existing, false), int(ResultCode::fileExists));
    QCOMPARE(report.writeCsv(existing, false), int(ResultCode::fileExists));
    QCOMPARE(contentOf(existing), "before");
    QCOMPARE(report.writePdf(existing), 0);
}

void TestReport::fullDisk()
{
    addTools(*m_crib, 5000);
    Template report = TemplateReader::read(tools, "Tools.rpt");
    Formula all;
    const Records records = DataSource(*m_crib->database, report, all).read([](double) {});
    BandComposer composer(report, records, {}, Clock::now());
    Layout layout(report, records, composer);
    QVERIFY(layout.advance(QDeadlineTimer::Forever));
    const auto codeOf = [](const std::function<void(QFile &, const Progress &)> &writing) {
        QFile full;
        int pages = 0;
        if (!openFullDevice(full))
            return int(ResultCode::diskFull);
        try {
            writing(full, [&](double) { ++pages; });
        } catch (const ReportError &error) {
            return error.code();
        }
        return int(ResultCode::ok);
    };
    QCOMPARE(codeOf([&](QFile &file, const Progress &progress) {
                 PageWriter(layout, composer).writePdf(file, report, "T", progress);
             }),
             int(ResultCode::diskFull));
    QCOMPARE(codeOf([&](QFile &file, const Progress &progress) { writeCsv(file, records, report.fields, progress); }),
             int(ResultCode::diskFull));
}

void TestReport::printerThatDoesNotStart()
{
    addTools(*m_crib, 3);
    m_crib->addTemplate("Tools.rpt", tools);
    Report report(m_crib->database.get());
    QCOMPARE(report.open("Tools.rpt", {}), 0);
    QPdfWriter printer(m_crib->folder.filePath("no/such/folder.pdf"));
    QCOMPARE(report.print(printer, 0, 0), int(ResultCode::invalidPrinter));
}

QTEST_MAIN(TestReport)
#include "tst_report.moc"
