#include "tests/support/AdminRun.h"
#include "tests/support/CribDatabase.h"
#include "tests/support/DataRows.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

/// Into the crib of CribDatabase, and out of it.
class TestCsv : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_crib.reset(); // closes the session
        m_crib = std::make_unique<CribDatabase>();
        m_folder = std::make_unique<QTemporaryDir>();
    }

    void whatIsExportedIsReadBack()
    {
        m_crib->insert("Types (ID,Description,Parent)", {"7,'Drills, long',0", "6,'HSS; ä',7", "8,'M8/M10',0"});
        m_crib->insert("Locations (Description,Parent)", {"'=Shelf',1"});
        m_crib->insert("Employee (EmpID,LastName,FirstName,EmpStatus)", {"-5,'O''Neil, \"Pat\"','',Null"});
        m_crib->insert("Tools (Type,Location,Manufacturer,PartNumber,Description,PricePer,Out)",
                       {"7,3,Null,'','  two  blanks ',1.234,0", "6,1,'','=1+1','-2\" ''bit''',1234567.8,0",
                        "8,3,'''=x','''a\t','line\r\nline\nline',0,0",
                        "1,2,'" + QString(40, u'ß') + ";','+','a,b',Null,0"});
        QCOMPARE(AdminRun({"export", m_crib->path(), path("out")}).errors, "");
        QCOMPARE(contentOf(path("out/tools.csv")),
                 QByteArray("\xEF\xBB\xBF"
                            "Description,Manufacturer,Part Number,Price,Type,Location\r\n"
                            "\"  two  blanks \",,\"\",1.2340,\"Drills, long\",Cabinet A\\=Shelf\r\n"
                            "\"'-2\"\" 'bit'\",\"\",'=1+1,1234567.80,\"Drills, long\\HSS; ä\",Cabinet A\r\n"
                            "\"line\r\nline\nline\",''=x,\"'a\t\",0.00,\\M8/M10,Cabinet A\\=Shelf\r\n"
                            "\"a,b\",\""
                            + QByteArray("ß").repeated(40) + ";\",'+,,Wrenches,Cabinet B\r\n"));

        for (const QString table :
             {"Tools", "Types", "Locations", "Employee", "Job", "JobVorlane", "Operation", "ScrapReasons"})
            m_crib->run({"DELETE FROM " + table});
        for (const QString kind : {"types", "locations", "tools", "employees", "jobs", "operations", "reasons"})
            QCOMPARE(imported(kind, path("out/" + kind + ".csv")).errors, "");
        QCOMPARE(AdminRun({"export", m_crib->path(), path("again")}).errors, "");
        const QStringList files = QDir(path("out")).entryList(QDir::Files);
        QCOMPARE(files.size(), 7);
        for (const QString &file : files)
            QCOMPARE(contentOf(path("again/" + file)), contentOf(path("out/" + file)));
        QCOMPARE(m_crib->rows("SELECT Jobno FROM JobVorlane ORDER BY Jobno"),
                 (QStringList{"1250", "7001", "7002", "12500"}));
    }

    void takes_data()
    {
        const auto tools = [](const char *name, const QByteArray &file, const QStringList &stored, int status = 0) {
            row(name, file, stored, status);
        };
        tools("what a spreadsheet writes",
              "LOCATION;part_number;tool type;description;;Price\r\n Cabinet  A ; 1 2 ; Torque Wrenches;12\" bit;;\r\n"
              ";;;;;\r\nHall/Shelf A;;wrenches\\Long;x;;1.234\r\nshelf a;;LONG;\"y\nz\";;€ 1.234,50",
              {"12\" bit|1 2||Torque wrenches|Cabinet A", "x||1234|Long|Shelf A", "y\nz||1234.5|Long|Shelf A"}, 1);
        tools("Windows-1252, its last byte", "Type\tQuantity\tDescription\tLocation\nWrenches\t2\tx\tCabinet \xe4",
              {"x|||Wrenches|Cabinet ä", "x|||Wrenches|Cabinet ä"}, 1);
        tools("UTF-16", QByteArray("\xFF\xFE", 2) + utf16("Description,Type,Location\nÄ,Wrenches,Cabinet A"),
              {"Ä|||Wrenches|Cabinet A"});
    }

    void takes()
    {
        const auto [file, stored, status] = fetched<QByteArray, QStringList, int>();
        writeFile(path("in.csv"), file);
        QVERIFY(imported("tools", path("in.csv"), {"--dry-run"}).out.startsWith("Nothing was written"));
        QCOMPARE(m_crib->rows("SELECT * FROM Tools").size(), 0);
        const AdminRun run = imported("tools", path("in.csv"));
        QCOMPARE(run.errors, "");
        QCOMPARE(run.status, status);
        QCOMPARE(
            m_crib->rows("SELECT Tools.Description, PartNumber, PricePer, Types.Description, Locations.Description "
                         "FROM (Tools INNER JOIN Types ON Tools.Type = Types.ID) INNER JOIN Locations ON "
                         "Tools.Location = Locations.ID ORDER BY Tools.ID"),
            stored);
    }

    void refuses_data()
    {
        const auto refused = [](const char *words, const char *kind, const QByteArray &file, int status = 5) {
            row(words, words, kind, file, status);
        };
        const QByteArray headings = "Description,Type,Location,Price,Manufacturer,Quantity\n";
        refused("the heading \"Colour\" is unknown, the heading \"Type\" stands there twice, the heading \"Location\" "
                "is missing",
                "tools", "Description,Colour,Type,TYPE\n");
        refused("is empty", "jobs", "");
        refused("line 2 has other bytes", "jobs", QByteArray("Number\n\0", 8), 3);
        refused("as \"1,234\" in line 2; say which", "tools", headings + "x,Wrenches,Cabinet A,\"1,234\",,\n");
        refused("Faults: 6\n  line 2: there are 7 cells, but 6 headings\n  line 3, Description: may not be blank\n"
                "  line 3, Type: \"12\" is a number, which no type may be called\n  line 3, Location: there is a "
                "location \"cabinet b\" already, as \"Cabinet B\"\n  line 6, Price: \"1,5\" is no price from 0 to "
                "9999999.99, written with a decimal point\n  line 7: a quotation mark is not closed",
                "tools",
                headings + "x,,,,,,\n ,12,Cabinet A\\cabinet b,,,\n\nx,Wrenches,Cabinet A,1.25,,\n"
                    + "x,Wrenches,Cabinet A,\"1,5\",,\n\"x,\nWrenches,Cabinet A,,,\n");
        refused("aaa...\" has 256 characters, but may have 255", "tools",
                headings + "x,Wrenches,Cabinet A,0.5," + QByteArray(256, 'a') + ',');
        refused("Faults: 1\n  the numbers of tools end at 32767; 32767 can be added, not 32768", "tools",
                headings + "x,Wrenches,Cabinet A,,,32767\nx,Wrenches,Cabinet A,,,1");
        refused("Faults: 2\n  line 3, Number: \"17\" is there already\n  line 4, Number: \"2.5\" is no whole number",
                "employees", "Number\n19\n17\n2.5");
        QByteArray reasons = "Reason\n", numbers = "Number\n";
        for (int i = 0; i < 60; ++i)
            numbers += "no " + QByteArray::number(i) + '\n';
        refused("line 51, Number: \"no 49\" is no whole number of 32 bits\n  ... and 10 more", "employees", numbers);
        for (int i = 0; i < 60; ++i)
            reasons += "broken\nworn " + QByteArray::number(i / 2 % 26) + "\n";
        refused("Faults: 94\n  line 2, Description: \"broken\" is there already (and in 59 more lines)\n  line 5, "
                "Description: \"worn 0\" is",
                "reasons", reasons);
        refused("Faults: 2\n  line 3, Description: there is a type \"New\\Deep\" already\n  line 5, Description: ",
                "types", "Description\nNew/Deep\nNEW\\deep\nNew\nnew");
    }

    void refuses()
    {
        const auto [words, kind, file, status] = fetched<QString, QString, QByteArray, int>();
        writeFile(path("in.csv"), file);
        const QStringList before = everything();
        const AdminRun run = imported(kind, path("in.csv"));
        QVERIFY2(run.errors.startsWith('\'' + path("in.csv") + "' ") && run.errors.contains(words),
                 qPrintable(run.errors));
        QCOMPARE(run.status, status);
        QCOMPARE(everything(), before);
    }

    void exportsAllOrNothing()
    {
        m_crib->insert("Tools (Type,Location,Manufacturer,Description,Out)", {"1,1,'" + QString(256, 'm') + "','x',0"});
        QVERIFY(AdminRun({"export", m_crib->path(), path("a")}).out.contains("\n  tools.csv: line 2, Manufacturer: "));
        QDir().mkdir(path("b"));
        writeFile(path("b/reasons.csv"), "mine");
        QCOMPARE(AdminRun({"export", m_crib->path(), path("b")}).status, 6);
        QCOMPARE(QDir(path("b")).entryList(QDir::Files | QDir::Hidden), QStringList("reasons.csv"));
        QCOMPARE(contentOf(path("b/reasons.csv")), QByteArray("mine"));
    }

private:
    static QByteArray utf16(const QString &text)
    {
        return {reinterpret_cast<const char *>(text.utf16()), text.size() * 2};
    }
    AdminRun imported(const QString &kind, const QString &file, const QStringList &options = {}) const
    {
        return AdminRun(QStringList{"import-csv", file, m_crib->path(), "--into", kind} + options);
    }
    QString path(const QString &name) const { return m_folder->filePath(name); }
    QStringList everything() const
    {
        QStringList rows;
        for (const QString table : {"Tools", "Types", "Locations", "Employee", "ScrapReasons"})
            rows += m_crib->rows("SELECT * FROM " + table);
        return rows;
    }

    std::unique_ptr<CribDatabase> m_crib;
    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(TestCsv)
#include "tst_csv.moc"
