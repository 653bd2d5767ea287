#include "db/Literals.h"
#include "db/Schema.h"
#include "db/Session.h"
#include "platform/system/ProgramFolder.h"
#include "tests/support/EngineFile.h"

#include <QtTest>

class TestSession : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        ProgramFolder::setPath(m_folder->path());
        Schema::create(*Workspace::first().createDatabase(Session::DbPath()));
    }

    void cleanup()
    {
        Session::close();
        ProgramFolder::setPath({});
    }

    void missingFileLeavesNoSession()
    {
        Session::open();
        QCOMPARE(errorOf([this] { Session::open(m_folder->filePath("other.mdb")); }), int(EngineError::fileNotFound));
        QCOMPARE(errorOf([] { execute("DELETE FROM Types"); }), 3420);
    }

    void literalsStandForTheirValue()
    {
        Session::open();
        const QString name = "O'Neil's \"big\" cabinet; 100 %";
        execute("INSERT INTO Types (Description) VALUES (" + quoted(name) + ")");
        QCOMPARE(openRecordset("Select Description from Types where Description=" + quoted(name)).text(u"Description"),
                 name);

        const QDateTime when(QDate(2026, 3, 4), QTime(13, 5, 9));
        execute("INSERT INTO CheckOutIn (Tool_Id,DateOut) VALUES (1," + dateLiteral(when) + ")");
        QCOMPARE(openRecordset("Select DateOut from CheckOutIn").text(u"DateOut"), "2026-03-04 13:05:09");
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(TestSession)
#include "tst_session.moc"
