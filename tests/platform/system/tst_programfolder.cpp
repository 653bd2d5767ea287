#include "platform/system/ProgramFolder.h"
#include "tests/support/Files.h"

#include <QScopeGuard>
#include <QTemporaryDir>
#include <QtTest>

/// Where the crib folder is, and which of two files of one name is taken.
class TestProgramFolder : public QObject
{
    Q_OBJECT

private slots:
    void tellsDevicesFromFiles()
    {
        constexpr auto windows = QOperatingSystemVersion::Windows;
        for (const QString name : {"NUL", "C:\\crib/com1.pdf", "aux .txt"})
            QVERIFY2(ProgramFolder::isDevice(name, windows), qPrintable(name));
        for (const QString name : {"null.pdf", "con/dorvak.mdb", "com10", "my.nul"})
            QVERIFY2(!ProgramFolder::isDevice(name, windows), qPrintable(name));
        QVERIFY(!ProgramFolder::isDevice("NUL", QOperatingSystemVersion::Unknown));
    }

    void cribFolderGoesFirst()
    {
        const QString beside = QCoreApplication::applicationFilePath(), name = QFileInfo(beside).fileName();
        const QTemporaryDir crib;
        qunsetenv(ProgramFolder::cribVariable);
        QCOMPARE(ProgramFolder::path(), QFileInfo(beside).path());
        qputenv(ProgramFolder::cribVariable, crib.path().toUtf8() + '/');
        const auto restore = qScopeGuard([] { qunsetenv(ProgramFolder::cribVariable); });
        QCOMPARE(ProgramFolder::path(), crib.path());
        QCOMPARE(ProgramFolder::find(name), beside);
        QCOMPARE(ProgramFolder::find("none.rpt"), crib.filePath("none.rpt"));
        writeFile(crib.filePath(name), "the shop's own");
        QCOMPARE(ProgramFolder::find(name), crib.filePath(name));
    }
};

QTEST_GUILESS_MAIN(TestProgramFolder)
#include "tst_programfolder.moc"
