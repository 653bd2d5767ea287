#include "start/CribChooser.h"
#include "start/CribFolder.h"
#include "tests/support/DataRows.h"
#include "tests/support/Files.h"
#include "tests/support/ScriptedUser.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

/// Finding the crib folder, and making one.
class TestCribChooser : public QObject
{
    Q_OBJECT

private slots:
    void configurationNamesOneFolder_data()
    {
        row("one line", "# for all\n\n/srv/tool crib/ \n", "/srv/tool crib");
        row("two lines", "/srv/a\n/srv/b\n", "must have one line, the path of the crib folder; it has 2.");
        row("nothing but a comment", "# none\n", "must have one line, the path of the crib folder; it has 0.");
        row("not a whole path", "crib=/srv/a\n", "'crib=/srv/a' in '");
    }

    void configurationNamesOneFolder()
    {
        const auto [content, answer] = fetched<QString, QString>();
        writeFile(m_folder.filePath("vorlane.conf"), content.toUtf8());
        const CribFolder::Found found = CribFolder::namedIn(m_folder.filePath("vorlane.conf"));
        QVERIFY2((found.folder + found.fault).contains(answer), qPrintable(found.fault));
        QCOMPARE(found.fault.isEmpty(), found.folder == answer);
    }

    void makesOrSaysWhyNot_data()
    {
        row("sample", "optSample", "new/sample", "", "");
        row("empty", "optEmpty", "new/empty", "", "");
        row("opened", "optOpen", "there", "", "");
        row("server's certificate cannot be had", "optServer", "new", "server.txt", "Connection to '");
        row("no connection file", "optServer", "new", "note.txt", "is no connection file");
        row("a crib is there", "optEmpty", "there", "", "There is a crib in the folder '");
        row("nothing there", "optOpen", "nowhere", "", "is not there.");
        row("no crib in it", "optOpen", ".", "", "it has no file dorvak.mdb.");
        row("no folder can be made", "optSample", "note.txt/new", "", "cannot be made: Not a directory.");
        row("no old file", "optMoveIn", "new/one/two", "note.txt", "is no Jet database.");
    }

    void makesOrSaysWhyNot()
    {
        const auto [option, folder, file, fault] = fetched<QString, QString, QString, QString>();
        QTemporaryDir home;
        writeFile(home.filePath("note.txt"), QByteArray(5000, 'x'));
        writeFile(home.filePath("server.txt"),
                  "[postgresql]\nhost=127.0.0.1\nport=1\ndbname=crib\nsslrootcert=note.txt\n");
        QCOMPARE(CribMaker(PROGRAM_BIN "/vorlane-admin", nullptr).makeEmpty(home.filePath("there")), QString());

        CribChooser chooser({}, PROGRAM_BIN "/vorlane-admin");
        ScriptedUser user;
        if (!fault.isEmpty())
            user.answers(QMessageBox::Ok);
        chooser.findChild<QRadioButton *>(option)->click();
        chooser.ui.txtFolder->setText(home.filePath(folder));
        chooser.ui.txtFile->setText(file.isEmpty() ? file : home.filePath(file));
        chooser.ui.cmdOK->click();
        QVERIFY(user.done());
        QCOMPARE(chooser.result() == QDialog::Accepted, fault.isEmpty());
        if (fault.isEmpty())
            QCOMPARE(CribFolder::fault(chooser.folder()), QString());
        else
            QVERIFY2(user.seen.value(0).text.contains(fault), qPrintable(user.seen.value(0).text));
        QVERIFY(fault.isEmpty() || !QFileInfo::exists(home.filePath("new"))); // nothing half made is left
    }

    void movesInFromAFileWithPasswordAndGaps()
    {
        const QString old = m_folder.filePath("old.mdb"), password = "Geheim ß", made = m_folder.filePath("new");
        QCOMPARE(QProcess::execute(
                     "python3", {TEST_DATA "/../support/make_jet.py", old, "--password", password, "Tools.Type[1]=99"}),
                 0);
        CribChooser chooser({}, PROGRAM_BIN "/vorlane-admin");
        chooser.ui.optMoveIn->click();
        chooser.ui.txtFolder->setText(made);
        chooser.ui.txtFile->setText(old);
        QVERIFY(!chooser.ui.txtPassword->isVisibleTo(&chooser));

        ScriptedUser user(QMessageBox::Ok, 2);
        chooser.ui.cmdOK->click();
        QVERIFY(chooser.ui.txtPassword->isVisibleTo(&chooser));
        chooser.ui.txtPassword->setText("geheim");
        chooser.ui.cmdOK->click();
        chooser.ui.txtPassword->setText(password);
        user.answers(QMessageBox::No).answers(QMessageBox::Ok);
        chooser.ui.cmdOK->click();
        QVERIFY(!QFileInfo::exists(made));
        user.answers(QMessageBox::Yes).answers(QMessageBox::Ok);
        chooser.ui.cmdOK->click();
        QCOMPARE(chooser.result(), int(QDialog::Accepted));
        QCOMPARE(CribFolder::fault(made), QString());
        QVERIFY2(user.texts().value(1).contains("has another password"), qPrintable(user.texts().join('\n')));
        QVERIFY2(user.seen.value(2).detail.contains("\n\nThese: tool 2 \"Tap M8\" (type 99)."),
                 qPrintable(user.seen.value(2).detail));
    }

private:
    QTemporaryDir m_folder;
};

QTEST_MAIN(TestCribChooser)
#include "tst_cribchooser.moc"
