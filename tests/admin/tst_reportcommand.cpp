#include "tests/platform/report/ReportCrib.h"
#include "tests/support/AdminRun.h"
#include "tests/support/DataRows.h"

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
        writeFile(path("text.mdb"), QByteArray(5000, 'x'));
        writeFile(path("kept.pdf"), "kept");
        QCOMPARE(AdminRun({"sample", path("crib.mdb"), "--scale", "small"}).errors, "");
    }

    void failuresBearTheirNumber_data()
    {
        columns<QStringList, QString>("operands", "error");
        const QString all;
        row("no template", QStringList{"crib.mdb", "Nothing.rpt", all, "new.pdf"}, "20504: there is no file");
        row("field", QStringList{"crib.mdb", "ToolsByType.rpt", "{Tools.Colour} = 1", "new.csv"},
            "20509: {Tools.Colour}");
        row("target exists", QStringList{"crib.mdb", "ToolsByType.rpt", all, "kept.pdf"}, "20514: ");
    }

    void failuresBearTheirNumber()
    {
        auto [operands, error] = fetched<QStringList, QString>("operands", "error");
        const QStringList before = QDir(m_folder.path()).entryList();
        operands[0] = path(operands[0]);
        operands[3] = path(operands[3]);
        const AdminRun run(QStringList("report") + operands);
        QCOMPARE(run.status, 1);
        QVERIFY2(run.errors.startsWith("error " + error) && run.errors.count('\n') == 1, qPrintable(run.errors));
        QCOMPARE(QDir(m_folder.path()).entryList(), before);
        QCOMPARE(contentOf(path("kept.pdf")), "kept");
    }

    void exampleOfTheManualWorks()
    {
        const QString text = QString::fromUtf8(contentOf(PROGRAM_BIN "/manual/report-templates.html"));
        const auto example = [&text](const QString &id) {
            const QString begin = "<pre id=\"" + id + "\">";
            const QString shown = text.section(begin, 1).section("</pre>", 0, 0);
            return QTextDocumentFragment::fromHtml("<pre>" + shown + "</pre>").toPlainText();
        };
        writeFile(path("DearTools.rpt"), example("DearTools").toUtf8());
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

    void templatesWithFaultsAreNotEntered_data()
    {
        columns<QString, QString, int, QString>("file", "module", "status", "words");
        row("a fault", "Odd.rpt", "Tools Type", 1, "error 20525: Odd.rpt, line 2: ");
        row("a table too few", "Few.rpt", "Tools Type", 1, "ask for Types and Locations");
        row("the title of another", "Same.rpt", "Employee", 1, "another report \"Employees\"");
        row("elsewhere", QFileInfo(PROGRAM_DATA "/templates/Employees.rpt").filePath(), "Employee", 1, "copy it to ");
        row("an unknown module", "Few.rpt", "Tool Type", 2, "the modules are 'Tools CheckedOut', ");
    }

    void templatesWithFaultsAreNotEntered()
    {
        writeFile(path("Few.rpt"), simpleTemplate("<from table=\"Tools\"/>", "{Tools.ID}"));
        writeFile(path("Same.rpt"),
                  simpleTemplate("<from table=\"Employee\"/>", "{Employee.EmpID}")
                      .replace("1\">", "1\" title=\"Employees\">"));
        const QStringList reports{"sql", path("crib.mdb"), "SELECT * FROM Reports"};
        const QString before = AdminRun(reports).out;
        const auto [file, module] = fetched<QString, QString>("file", "module");
        const AdminRun run({"template", file, path("crib.mdb"), "--module", module, "--default"});
        QTEST(run.status, "status");
        QFETCH(QString, words);
        QVERIFY2(run.errors.contains(words), qPrintable(run.errors));
        QCOMPARE(AdminRun(reports).out, before);
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
};

QTEST_MAIN(TestReportCommand)
#include "tst_reportcommand.moc"
