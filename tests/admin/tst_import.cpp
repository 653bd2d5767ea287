#include "admin/Tally.h"
#include "platform/engine/Workspace.h"
#include "tests/support/AdminRun.h"
#include "tests/support/DataRows.h"
#include "tests/support/Files.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

/// Old files are written by a script, which knows the changes that the cases name.
class TestImport : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void everythingArrives_data()
    {
        row("Jet 3", QStringList{"--version", "3"});
        row("Jet 4", QStringList{});
        row("encrypted, with a password", QStringList{"--key", "1234abcd", "--password", "Geheim ß"});
        row("Jet 3, the same", QStringList{"--version", "3", "--key", "1234abcd", "--password", "Geheim ß"});
        row("map on pages of its own", QStringList{"--loans", "20000"});
    }

    void everythingArrives()
    {
        const auto [made] = fetched<QStringList>();
        const AdminRun run = imported(made + QStringList{"Tools@77", "Scrap@9"}, {"--report", path("report.txt")});
        QVERIFY2(run.status == 1, qPrintable(run.errors));
        QVERIFY2(!run.out.contains("does not exist"), qPrintable(run.out));
        QCOMPARE(contentOf(path("report.txt")), run.out.toUtf8());
        for (const char *words :
             {"Open loans                                     1\n", "Tools                    1.2655",
              "The column Tools.Weight is not", "In Employee.EmpID 1 numbers were texts"})
            QVERIFY2(run.out.contains(words), qPrintable(words + run.out));

        const QString loans = QString::number(made.contains("--loans") ? 20002 : 2);
        const bool isJet3 = made.contains("3");
        const QList<QStringList> values{
            {"SELECT group_concat(ID || Description || Parent) FROM Types", "1Drills0,2Taps1,9Spare0"},
            {"SELECT group_concat(quote(Type || Manufacturer)) FROM Tools", "'1Corvane','2',NULL"},
            {"SELECT group_concat(quote(PricePer)) || group_concat(Out) FROM Tools", "2.5,-1.2345,NULL-1,0,0"},
            {"SELECT group_concat(Weight = 0.1 OR Weight = -1e-7 OR Weight = 1180591620717411303424.0) FROM Tools",
             "1,1,1"},
            {"SELECT group_concat(ifnull(hex(Picture) = replace(hex(zeroblob(40)), '00', '0001'), 'n')) || "
             "count(Picture) FROM Tools",
             "1,0,02"},
            {"SELECT length(PartNumber) || substr(Description, 250) FROM Tools WHERE ID = 7", "200d"},
            {"SELECT count(*) FROM CheckOutIn", loans},
            {"SELECT group_concat(DateOut || ifnull(DateIn, '')) FROM CheckOutIn WHERE ID < 3",
             "2000-01-01 06:00:002000-01-01 12:00:00,2023-03-16 00:00:00"},
            {"SELECT group_concat(unicode(Notes) || length(Notes)) FROM Scrap",
             isJet3 ? "639001,109500" : "9379001,109500"},
            {"SELECT group_concat(EmpID || LastName) || hex(FirstName) FROM Employee WHERE EmpID < 8",
             "7Żak4164610078"},
            {"SELECT LastName FROM Employee WHERE EmpID = 8", "żółw €"},
            {"SELECT Description FROM Locations WHERE ID = 3", "Straße 5"},
            {"SELECT group_concat(name || seq) FROM sqlite_sequence WHERE name IN ('Tools', 'Scrap')",
             "Scrap16383,Tools77"},
            {"SELECT Since || Terms FROM Vendor", "1900-01-01 12:00:0030 days"},
        };
        const auto database = Workspace::first().openDatabase(path("new.mdb"));
        for (const QStringList &value : values)
            QCOMPARE(database->openNative(value[0]).at(0, 0).toText(), value[1]);
    }

    void refuses_data()
    {
        const auto refused = [](const char *words, int status, const QStringList &made) {
            row(words, made, status, words);
        };
        refused("has a password; it was not given.", 3, {"--password", "x"});
        refused("is damaged: 3 rows were found where 4 should be, in the table TOOLS.", 4, {"Tools#4"});
        refused("is not a whole crib: it lacks the column Tools.Out, the table Job, the table Operation (it lies in "
                "another file).",
                5, {"-Tools.Out", "-Job", "=Operation"});
        refused("Tools.PartNumber holds 0.5, no text, in row 1 (ID 1).", 5,
                {"Tools.PartNumber:double", "Tools.PartNumber[0]=0.5", "Tools.PartNumber[1]=None",
                 "Tools.PartNumber[2]=None"});
        refused("Job.JobNo holds 100.5, no whole number of 32 bits, in row 1.", 5, {"Job.JobNo[0]=100.5"});
        refused("Employee.EmpID holds \"7a\", no whole", 5, {"Employee.EmpID[0]='7a'"});
        refused("Scrap.ScrapDate holds 2.95847e+06, no date of the years 100 to 9999, in row 1 (ID 4).", 5,
                {"Scrap.ScrapDate[0]=2958465.999999"});
        refused("Tools.PricePer holds 0.12345, no amount of money", 5,
                {"Tools.PricePer:double", "Tools.PricePer[0]=0.12345"});
        refused("Employee.EmpID has the number 7 a second time in row 2", 5, {"Employee.EmpID[1]='7'"});
        refused("Employee.EmpID is empty in row 2", 5, {"Employee.EmpID[1]=None"});
        refused("these tools do not exist (--mend adds them): tool 2 \"Tap M8\" (type 99), tool 7 \"ddd", 5,
                {"Tools.Type[1]=99", "Tools.Location[2]=98"});
        refused("type and a location in the old program: tool 2 \"Tap M8\" (type 0)", 5, {"Tools.Type[1]=0"});
    }

    void refuses()
    {
        const auto [made, status, words] = fetched<QStringList, int, QString>();
        const AdminRun run = imported(made);
        QCOMPARE(run.status, status);
        QVERIFY2(run.errors.contains(words) && run.errors.startsWith('\'' + path("old.mdb") + "' "),
                 qPrintable(run.errors));
        QCOMPARE(files(), QStringList{"old.mdb"});
    }

    void everyPageMatters()
    {
        imported({}, {}, "sound.mdb");
        const QByteArray sound = contentOf(path("old.mdb"));
        // The map of free pages is not asked.
        for (int page = 0; page < sound.size() / 4096; page += page == 0 ? 2 : 1) {
            QByteArray damaged = sound;
            damaged.replace(page * 4096, 4096, QByteArray(4096, '\0'));
            writeFile(path("old.mdb"), damaged);
            const AdminRun run({"import", path("old.mdb"), path("new.mdb")});
            QVERIFY2(run.status == (page == 0 ? 3 : 4), qPrintable(QString("page %1: %2").arg(page).arg(run.errors)));
        }
        QCOMPARE(files(), (QStringList{"old.mdb", "sound.mdb"}));
    }

    void filesInTheWay()
    {
        QCOMPARE(imported({}, {"--password-file", path("absent")}).status, 2);
        writeFile(path("OLD.LDB"), "");
        QVERIFY(imported({}).errors.contains("is in use, for 'OLD.LDB' lies beside it"));
        QFile::remove(path("OLD.LDB"));
        writeFile(path("new.mdb"), "mine");
        QCOMPARE(imported({}).status, 6);
        QCOMPARE(contentOf(path("new.mdb")), "mine");
        QCOMPARE(AdminRun({"import", path("absent.mdb"), path("x.mdb")}).status, 3);
        writeFile(path("old.mdb"), QByteArray("\0\1\0\0Standard Jet DB\0\2", 21) + QByteArray(9000, ' '));
        const AdminRun run({"import", path("old.mdb"), path("x.mdb")});
        QVERIFY2(run.status == 3 && run.errors.contains("newer format"), qPrintable(run.errors));
    }

    void mends()
    {
        const AdminRun run =
            imported({"Tools.Type[1]=99", "Tools.Type[2]=99", "Types#9", "-JobVorlane"}, {"--mend", "--trust-rows"});
        QCOMPARE(run.status, 1);
        for (const char *words : {"There was no table JobVorlane; it is empty.",
                                  "The table Types has 3 rows, but its head "
                                  "counts 9",
                                  "Types 99 did not exist; it was added at the top for 2 of the tools."})
            QVERIFY2(run.out.contains(words), qPrintable(run.out));
        QCOMPARE(Workspace::first()
                     .openDatabase(path("new.mdb"))
                     ->openNative("SELECT group_concat(Description || Parent) FROM Types WHERE ID > 9")
                     .at(0, 0)
                     .toText(),
                 "(missing 99)0");
    }

    void charactersWithoutAMeaningAreCounted()
    {
        const AdminRun run =
            imported({"--version", "3", "--code-page", "1252", "Job.Name:text", "Job.Name[0]=b'\\x80\\x81\\xe4'"});
        QVERIFY2(run.out.contains("Characters that could not be read: 1."), qPrintable(run.out + run.errors));
        QCOMPARE(Workspace::first().openDatabase(path("new.mdb"))->openNative("SELECT Name FROM Job").at(0, 0).toText(),
                 "€\ufffdä");
    }

    void figuresTellTablesApart()
    {
        const std::vector<std::vector<JetValue>> rows{{qint64(1), QString("a")}, {qint64(2), QString("b")}};
        Tally one, turned, exchanged;
        for (size_t i : {0, 1}) {
            one.add(rows[i]);
            turned.add(rows[1 - i]);
            exchanged.add({rows[i][0], rows[1 - i][1]});
        }
        QVERIFY(!one.differenceTo(turned));
        QVERIFY(one.differenceTo(exchanged));
    }

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    QStringList files() const { return QDir(m_folder->path()).entryList(QDir::Files, QDir::Name); }

    /// Makes an old file and imports it, with its password where it has one.
    AdminRun imported(QStringList made, const QStringList &options = {}, const QString &file = "new.mdb")
    {
        QProcess script;
        script.start("python3", QStringList{TEST_DATA "/../support/make_jet.py", path("old.mdb")} + made);
        script.waitForFinished();
        if (script.exitCode() != 0)
            qFatal("%s", script.readAllStandardError().constData());
        const QByteArray old = contentOf(path("old.mdb"));
        QStringList arguments{"import", path("old.mdb"), path(file)};
        if (made.contains("--key")) {
            writeFile(path("password"), "Geheim ß\r\n");
            arguments += QStringList{"--password-file", path("password")};
        }
        const AdminRun run(arguments + options);
        if (contentOf(path("old.mdb")) != old)
            qFatal("the old file was changed");
        return run;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(TestImport)
#include "tst_import.moc"
