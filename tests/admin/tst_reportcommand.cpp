#include "tests/platform/reportengine/ReportCrib.h"
#include "tests/support/AdminRun.h"

#include <QProcess>
#include <QTextDocumentFragment>

class TestReportCommand : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        ProgramFolder::setPath(m_folder.path());
        for (const char *name : {"ToolsByType.rpt", "LoanSheet.rpt", "ToolsScrapped.rpt"})
            QVERIFY(QFile::copy(QString(PROGRAM_DATA "/templates/") + name, path(name)));
        writeFile(path("Odd.rpt"), "<report version=\"1\">\n<picture/></report>");
        writeFile(path("kept.pdf"), "kept");
        writeFile(path("Few.rpt"), simpleTemplate("<from table=\"Tools\"/>", "{Tools.ID}"));
        writeFile(path("Same.rpt"),
                  simpleTemplate("<from table=\"Employee\"/>", "{Employee.EmpID}")
                      .replace("1\">", "1\" title=\"Employees\">"));
        QVERIFY(QDir::setCurrent(m_folder.path()));
        QCOMPARE(AdminRun({"sample", m_places(path("crib.mdb")), "--scale", "small"}).errors, "");
    }

    void failuresChangeNothing_data()
    {
        const auto report = [](const QString &formula, const QString &target, const QString &words) {
            row(qPrintable(words), QStringList{"report", "crib.mdb", "ToolsByType.rpt", formula, target}, 1, words);
        };
        report("{Tools.Colour} = 1", "new.csv", "error 20509: {Tools.Colour}");
        report("", "kept.pdf", "error 20514: ");
        const auto entered = [](const QString &file, const QString &module, int status, const QString &words) {
            const QStringList arguments{"template", file, "crib.mdb", "--module", module, "--default"};
            row(qPrintable(words), arguments, status, words);
        };
        entered("None.rpt", "Employee", 1, "error 20504: ");
        entered("Odd.rpt", "Tools Type", 1, "error 20525: Odd.rpt, line 2: unknown element <picture>");
        entered("Few.rpt", "Tools Type", 1, "ask for Types and Locations");
        entered("Same.rpt", "Employee", 1, "another report \"Employees\"");
        entered(QFileInfo(PROGRAM_DATA "/templates/Employees.rpt").filePath(), "Employee", 1, "copy it to ");
        entered("Few.rpt", "Tool Type", 2, "the modules are 'Tools CheckedOut', ");
    }

    void failuresChangeNothing()
    {
        const auto [arguments, status, words] = fetched<QStringList, int, QString>();
        const auto state = [this] {
            return AdminRun({"sql", "crib.mdb", "SELECT * FROM Reports"}).out + contentOf(path("kept.pdf"))
                + QDir(m_folder.path()).entryList().join(' ');
        };
        const QString before = state();
        const AdminRun run(arguments);
        QCOMPARE(run.status, status);
        QVERIFY2(run.errors.contains(words), qPrintable(run.errors));
        QCOMPARE(state(), before);
    }

    void exampleOfTheManualWorks()
    {
        const QString text = QString::fromUtf8(contentOf(PROGRAM_BIN "/manual/report-templates.html"));
        const auto example = [&text](const QString &id) {
            const QString begin = "<pre id=\"" + id + "\">";
            const QString shown = text.section(begin, 1).section("</pre>", 0, 0);
            return QTextDocumentFragment::fromHtml("<pre>" + shown + "</pre>").toPlainText();
        };
        for (const QString name : {"DearTools", "BinLabels", "ScrapReasonsChart"}) {
            writeFile(path(name + ".rpt"), example(name).toUtf8());
            QCOMPARE(AdminRun({"report", path("crib.mdb"), name + ".rpt", "", path(name + ".pdf")}).errors, "");
        }
        const AdminRun run({"report", path("crib.mdb"), "DearTools.rpt", "", path("dear.pdf")});
        QCOMPARE(run.errors, "");
        const QString dear = "SELECT ID FROM Tools WHERE PricePer >= 500";
        const auto tools = AdminRun({"sql", path("crib.mdb"), dear}).out.count("\r\n") - 1;
        QVERIFY(tools > 0);
        QCOMPARE(run.out, QString("%1 records\n").arg(tools));
        QStringList offer = QProcess::splitCommand(example("offer").simplified().replace('\'', '"')).sliced(1);
        offer.replaceInStrings("dorvak.mdb", path("crib.mdb"));
        QCOMPARE(AdminRun(offer).out,
                 "The module 'Tools Type' offers DearTools.rpt now, as \"Tools from 500 on\".\nIt is the default.\n");
        const QString defaults = "SELECT FileName FROM Reports WHERE Module = 'Tools Type' AND [Default] = True";
        QCOMPARE(AdminRun({"sql", path("crib.mdb"), defaults}).out, "FileName\r\nDearTools.rpt\r\n");
    }

    void programNeedsNoDisplay()
    {
        QProcess program;
        program.setProcessEnvironment({});
        program.start(PROGRAM_BIN "/vorlane-admin",
                      {"report", path("crib.mdb"), "ToolsScrapped.rpt", "{Scrap.ID} < 0", path("alone.pdf")});
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.readAllStandardOutput(), "0 records\n");
        QCOMPARE(program.readAllStandardError(), "");
        QCOMPARE(program.exitCode(), 0);
        program.start(PROGRAM_BIN "/vorlane-admin", {"sql", path("none.mdb"), "SELECT 1"});
        QVERIFY(program.waitForFinished());
        QVERIFY(program.readAllStandardError().startsWith("error 3024: "));
        QCOMPARE(program.exitCode(), 1);
    }

private:
    QString path(const QString &name) const { return m_folder.filePath(name); }

    QTemporaryDir m_folder;
    EmptyPlaces m_places;
};

QTEST_MAIN(TestReportCommand)
#include "tst_reportcommand.moc"
