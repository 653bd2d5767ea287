#include "db/Schema.h"
#include "platform/engine/Workspace.h"
#include "platform/system/ProgramFolder.h"
#include "tests/support/AdminRun.h"
#include "tests/support/DataRows.h"
#include "tests/support/Files.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

class TestAdmin : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QCOMPARE(AdminRun({"create", path("crib.mdb")}).status, 0);
    }

    void wrongUsageExitsWithTwo_data()
    {
        columns<QStringList, QString>("arguments", "words");
        row("unknown command", QStringList{"destroy"}, "There is no command 'destroy'.");
        row("missing operand", QStringList{"sql", "crib.mdb"}, "sql takes FILE, STATEMENT; given: 1.");
        row("operand too many", QStringList{"create", "new.mdb", "other.mdb"}, "create takes FILE; given: 2.");
        row("unknown option", QStringList{"check", "crib.mdb", "--repair"}, "repair");
        row("unknown kind of output", QStringList{"report", "crib.mdb", "Tools.rpt", "", "out.txt"}, "out.txt");
        row("no module", QStringList{"template", "Tools.rpt", "crib.mdb"}, "--module is missing");
    }

    void wrongUsageExitsWithTwo()
    {
        QFETCH(QStringList, arguments);
        const AdminRun run(arguments);
        QCOMPARE(run.status, 2);
        QCOMPARE(run.out, "");
        QVERIFY2(run.errors.contains("usage: vorlane-admin " + arguments.value(0))
                     || run.errors.contains("usage: vorlane-admin COMMAND"),
                 qPrintable(run.errors));
        QFETCH(QString, words);
        QVERIFY2(run.errors.section('\n', 0, 0).contains(words), qPrintable(run.errors));
    }

    void everyCommandHasHelp()
    {
        const AdminRun overview({"--help"});
        QCOMPARE(overview.status, 0);
        QCOMPARE(AdminRun({"--version"}).out, "vorlane-admin " + ProgramFolder::version() + '\n');
        for (const QString usage :
             {"create FILE", "sample FILE [--scale small|shop|max]", "sql FILE STATEMENT", "check FILE [--fix]",
              "backup FILE COPY", "report FILE TEMPLATE FORMULA OUT.pdf|OUT.csv",
              "template FILE DATABASE --module NAME [--default]"}) {
            QVERIFY2(overview.out.contains(usage), qPrintable(usage));
            const AdminRun help({usage.section(' ', 0, 0), "--help"});
            QCOMPARE(help.status, 0);
            QVERIFY2(help.out.startsWith("usage: vorlane-admin " + usage + '\n'), qPrintable(help.out));
        }
    }

    void failureLeavesNoHalfFile_data()
    {
        columns<QStringList>("arguments");
        row("create over a file", QStringList{"create", "text.mdb"});
        row("sample over a file", QStringList{"sample", "text.mdb"});
        row("backup over a file", QStringList{"backup", "crib.mdb", "text.mdb"});
        row("create in a missing folder", QStringList{"create", "absent/new.mdb"});
        row("backup to a missing folder", QStringList{"backup", "crib.mdb", "absent/new.mdb"});
        row("backup of a file that is no database", QStringList{"backup", "text.mdb", "new.mdb"});
        row("backup of nothing", QStringList{"backup", "nothing.mdb", "new.mdb"});
    }

    void failureLeavesNoHalfFile()
    {
        QFETCH(QStringList, arguments);
        writeFile(path("text.mdb"), QByteArray(5000, 'x'));
        for (qsizetype i = 1; i < arguments.size(); ++i)
            arguments[i] = path(arguments[i]);

        const AdminRun run(arguments);
        QCOMPARE(run.status, 1);
        const bool exists = QByteArray(QTest::currentDataTag()).contains(" over a file");
        QVERIFY2(run.errors.startsWith(exists ? "error 3204: " : "error 3"), qPrintable(run.errors));
        QCOMPARE(files(), (QStringList{"crib.mdb", "text.mdb"}));
        QCOMPARE(contentOf(path("text.mdb")), QByteArray(5000, 'x'));
    }

    void selectIsPrintedAsCsv()
    {
        const auto sql = [this](const QString &statement) { return AdminRun({"sql", path("crib.mdb"), statement}); };
        QCOMPARE(sql("INSERT INTO Types (Description) VALUES ('Drills, \"long\"')").out, "1 rows affected\n");
        sql("INSERT INTO Types (Description) VALUES ('two\nlines')");
        sql("INSERT INTO Types (Description) VALUES ('Jäger''s')");
        QCOMPARE(sql(" select ID, Description as [the name] from Types order by ID").out,
                 "ID,the name\r\n1,\"Drills, \"\"long\"\"\"\r\n2,\"two\nlines\"\r\n3,Jäger's\r\n");

        QCOMPARE(sql("SELECT * FROM Job").out, "JobNo,Shipped\r\n");
    }

    void programRunsByItself()
    {
        QProcess program;
        program.start(QString(PROGRAM_BIN) + "/vorlane-admin",
                      {"sql", path("crib.mdb"), "SELECT Code FROM LineItemType ORDER BY Code"});
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.readAllStandardOutput(), "Code\r\nJob\r\nOverhead\r\n");
        QCOMPARE(program.readAllStandardError(), "");
        QCOMPARE(program.exitCode(), 0);

        program.start(QString(PROGRAM_BIN) + "/vorlane-admin", {"sql", path("none.mdb"), "SELECT 1"});
        QVERIFY(program.waitForFinished());
        QVERIFY(program.readAllStandardError().startsWith("error 3024: "));
        QCOMPARE(program.exitCode(), 1);
    }

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    QStringList files() const { return QDir(m_folder->path()).entryList(QDir::Files, QDir::Name); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(TestAdmin)
#include "tst_admin.moc"
