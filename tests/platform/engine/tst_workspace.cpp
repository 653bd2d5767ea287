#include "tests/support/DataRows.h"
#include "tests/support/EngineFile.h"
#include "tests/support/Files.h"

#include <QDir>

#include <sqlite3.h>

namespace {

/// Another program that has the file open.
class OtherProgram
{
public:
    explicit OtherProgram(const QString &file) { sqlite3_open(file.toUtf8().constData(), &m_connection); }
    ~OtherProgram() { sqlite3_close(m_connection); }
    Q_DISABLE_COPY_MOVE(OtherProgram)
    bool run(const char *sql) { return sqlite3_exec(m_connection, sql, nullptr, nullptr, nullptr) == SQLITE_OK; }

private:
    sqlite3 *m_connection = nullptr;
};

template<typename Action>
QString wordsOf(Action action)
{
    QString text;
    const int number = errorOf(action, &text);
    return number ? QString::number(number) + ' ' + text : QString();
}

}

class TestWorkspace : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_folder.emplace(); }

    void filesThatAreNoDatabase_data()
    {
        const QString damagedFile = "3049 Cannot open database 'FOLDER/crib.mdb'. It may not be a database that your "
                                    "application recognizes, or the file may be corrupt.";
        const QString unrecognized = "3343 Unrecognized database format 'FOLDER/crib.mdb'.";
        init();
        create();
        QByteArray damaged = contentOf(path("crib.mdb"));
        QByteArray cut = damaged.first(5000);
        damaged.replace(100, 400, QByteArray(400, 'x'));

        row("an empty file", QByteArray(), unrecognized);
        row("damaged where its tables are listed", damaged, damagedFile);
        row("cut off", cut, damagedFile);
    }

    void filesThatAreNoDatabase()
    {
        const auto [contents, error] = fetched<QByteArray, QString>();
        writeFile(path("crib.mdb"), contents);
        QCOMPARE(openError("crib.mdb"), error);
        QCOMPARE(contentOf(path("crib.mdb")), contents);
    }

    void placesWithoutAFile()
    {
        QCOMPARE(openError("crib.mdb"), "3024 Could not find file 'FOLDER/crib.mdb'.");
        QCOMPARE(openError("."),
                 "3051 The database engine cannot open the file 'FOLDER/.'. It is not a file, or you need "
                 "permission to view its data.");
        QVERIFY(QDir(m_folder->path()).isEmpty());
    }

    void readOnlyFile()
    {
        const char *const refused = "3027 Cannot update. Database or object is read-only.";
        create();
        QVERIFY(QFile::setPermissions(path("crib.mdb"), QFile::ReadOwner));
        const auto database = Workspace::first().openDatabase(path("crib.mdb"));
        // Some users may write to every file.
        if (QFileInfo(path("crib.mdb")).isWritable())
            database->executeNative("PRAGMA query_only = ON");
        QCOMPARE(wordsOf([&] { database->execute("DELETE FROM Types"); }), refused);
    }

    void lockedFile()
    {
        const auto database = create();
        OtherProgram other(path("crib.mdb"));
        QVERIFY(other.run("BEGIN EXCLUSIVE"));
        QCOMPARE(wordsOf([&] { const ReadScope reading(*database); }),
                 "3260 Could not read; currently locked by another user.");
        QCOMPARE(openError("crib.mdb"), "3260 Could not open 'FOLDER/crib.mdb'; currently locked by another user.");
        QVERIFY(other.run("ROLLBACK"));
        QCOMPARE(openError("crib.mdb"), "");
    }

    void lockDuringACommit()
    {
        const auto database = create();
        OtherProgram reader(path("crib.mdb"));
        QVERIFY(reader.run("BEGIN; SELECT * FROM Types"));
        const char *const locked = "3260 Could not update; currently locked by another user.";

        QCOMPARE(wordsOf([&] { database->execute("INSERT INTO Types (Description) VALUES ('a')"); }), locked);
        QCOMPARE(wordsOf([&] {
                     Transaction transaction(*database);
                     database->execute("INSERT INTO Types (Description) VALUES ('b')");
                     database->execute("UPDATE Types SET Description = 'c' WHERE ID = 1");
                     transaction.commit();
                 }),
                 locked);
        QVERIFY(reader.run("COMMIT"));
        database->execute("INSERT INTO Types (Description) VALUES ('d')");
        QCOMPARE(database->openRecordset("Select Description from Types order by ID").at(1, 0).toText(), "d");
    }

    void backups()
    {
        const auto database = create();
        database->backupTo(path("copy.mdb"));
        const auto copy = Workspace::first().openDatabase(path("copy.mdb"));
        copy->execute("INSERT INTO Types (Description) VALUES ('only in the copy')");
        QCOMPARE(database->openRecordset("Select * from Types").recordCount(), 1);
        const Transaction writing(*database);
        database->execute("INSERT INTO Types (Description) VALUES ('half done')");
        QVERIFY(wordsOf([&] { database->backupTo(path("half.mdb")); }).startsWith("3260 "));
        QVERIFY(!QFile::exists(path("half.mdb")));
    }

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }

    std::unique_ptr<Database> create() const
    {
        auto database = Workspace::first().createDatabase(path("crib.mdb"));
        database->executeNative("BEGIN; CREATE TABLE Types(ID INTEGER PRIMARY KEY AUTOINCREMENT, Description TEXT);"
                                "INSERT INTO Types(Description) VALUES ('Drills'); COMMIT");
        return database;
    }

    QString openError(const QString &name) const
    {
        return wordsOf([&] { Workspace::first().openDatabase(path(name)); }).replace(m_folder->path(), "FOLDER");
    }

    std::optional<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(TestWorkspace)
#include "tst_workspace.moc"
