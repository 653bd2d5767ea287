#include "tests/support/DataRows.h"
#include "tests/support/EngineFile.h"
#include "tests/support/Files.h"

#include "platform/engine/postgres/ConnectionFile.h"

class TestConnectionFile : public QObject
{
    Q_OBJECT

private slots:
    void contents_data()
    {
        row("no connection file", "[postgresq]\nhost=a\n", "none");
        row("the line alone", "[postgresql]", "sslmode=verify-full");
        row("blanks, comments, lines of Windows", "[postgresql] \r\n\r\n# ours\r\n host = 10.0.0.7 \r\nschema=crib\r\n",
            "host=10.0.0.7 sslmode=verify-full schema crib");
        row("files beside it", "[postgresql]\nhost=localhost\nsslrootcert=ca.crt\nsslkey=/etc/key\nsslcert=../c\n",
            "host=localhost sslrootcert=FOLDER/ca.crt sslkey=/etc/key sslcert=FOLDER/../c");
        row("the machine's authorities", "[postgresql]\nhostaddr=127.0.0.1\nsslrootcert=system\n",
            "hostaddr=127.0.0.1 sslrootcert=system");
        row("another machine behind a local name", "[postgresql]\nhost=localhost\nhostaddr=10.0.0.7\n",
            "host=localhost hostaddr=10.0.0.7 sslmode=verify-full");
        row("another machine as the second", "[postgresql]\nhost=localhost,b\n",
            "host=localhost,b sslmode=verify-full");
        row("another machine whose name begins like an address", "[postgresql]\nhost=127.example\n",
            "host=127.example sslmode=verify-full");
        row("a byte order mark", QString(QChar(0xfeff)) + "[postgresql]\nhost=127.0.0.1\n", "host=127.0.0.1");
        row("a certificate that nobody checks", "[postgresql]\nhost=a\nsslmode=require\n", "host=a sslmode=require");
        row("a password", "[postgresql]\n\npassword=secret\n",
            "3343 (line 3: all can read this file; a password belongs into the user's own password file)");
        row("a setting that could change others", "[postgresql]\noptions=-c x=y\n",
            "3343 (line 2: 'options' is not a setting of a connection)");
        row("no setting", "[postgresql]\nhost\n", "3343 (line 2: not of the form keyword=value)");
        row("no check by an empty word", "[postgresql]\nsslmode=\n", "3343 (line 2: 'sslmode' has no value)");
        row("a cut-off value", QString("[postgresql]\nhost=a%1b\n").arg(QChar(0)),
            "3343 (line 2: 'host' has no value)");
        row("twice", "[postgresql]\nhost=a\nhost=b\n", "3343 (line 3: 'host' is there twice)");
        row("without an end", "[postgresql]\n" + QString(70'000, '\n'), "3343 (line 65538: too long)");
    }

    void contents()
    {
        const auto [content, expected] = fetched<QString, QString>();
        const QTemporaryDir folder;
        const QString file = folder.filePath("crib.mdb");
        writeFile(file, content.toUtf8());

        QString seen, error;
        const int number = errorOf(
            [&] {
                const auto settings = ConnectionFile::read(file);
                for (const auto &[keyword, value] : settings ? settings->parameters : decltype(settings->parameters){})
                    seen += keyword + '=' + value + ' ';
                if (settings && !settings->schema.isEmpty())
                    seen += "schema " + settings->schema;
                seen = settings ? seen.trimmed() : "none";
            },
            &error);
        if (number)
            seen = QString::number(number) + error.remove("Unrecognized database format '" + file + "'.");
        QCOMPARE(seen.replace(folder.path(), "FOLDER"), expected);
    }
};

QTEST_GUILESS_MAIN(TestConnectionFile)
#include "tst_connectionfile.moc"
