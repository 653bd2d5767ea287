#include "platform/engine/Workspace.h"
#include "tests/support/AdminRun.h"
#include "tests/support/DataRows.h"

#include <QTemporaryDir>
#include <QtTest>

class TestSample : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        for (const QString scale : {"small", "shop"}) {
            QCOMPARE(AdminRun({"sample", m_folder.filePath(scale), "--scale", scale}).errors, "");
            QCOMPARE(AdminRun({"check", m_folder.filePath(scale)}).out, "No faults found.\n");
        }
    }

    void sameScaleMakesTheSameRows()
    {
        const auto database = Workspace::first().openDatabase(m_folder.filePath("small"));
        const Recordset rows = database->openNative("SELECT * FROM CheckOutIn");
        QStringList fields;
        for (int row = 0; row < rows.recordCount(); ++row)
            for (int column = 0; column < rows.fieldCount(); ++column)
                fields << rows.at(row, column).toText();
        // Another machine makes the same loans, and by them everything they were drawn from. What has been measured on
        // a sample compares only as long as this stays.
        QCOMPARE(QCryptographicHash::hash(fields.join('\n').toUtf8(), QCryptographicHash::Sha1).toHex(),
                 "b3a34c9361368edcfb5aac04a9a9e5c999393046");
    }

private:
    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(TestSample)
#include "tst_sample.moc"
