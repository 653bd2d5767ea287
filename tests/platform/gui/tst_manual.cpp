#include "platform/gui/Manual.h"

#include "platform/gui/HelpKey.h"
#include "platform/gui/frmManual.h"
#include "platform/system/ProgramFolder.h"
#include "tests/support/Files.h"
#include "tests/support/ScriptedUser.h"

#include <QDir>
#include <QLineEdit>
#include <QMenu>
#include <QRegularExpression>

/// The pages of the manual as they are shipped, and F1.
class TestManual : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        ProgramFolder::setPath(PROGRAM_BIN);
        m_asked.clear();
        m_hasBrowser = true;
        Manual::setBrowser([this](const QUrl &page) {
            m_asked.append(page.fileName());
            return m_hasBrowser;
        });
    }

    void cleanup() { frmManual::unload(); }

    void linksLeadToPages()
    {
        static const QRegularExpression link("href=\"([^\"#]*)#?([^\"]*)\"");
        for (const QString &page : manual().entryList({"*.html"})) {
            QVERIFY2(page == "index.html" || contents("index.html").contains("href=\"" + page + '"'), qPrintable(page));
            for (auto found = link.globalMatch(contents(page)); found.hasNext();) {
                const QRegularExpressionMatch match = found.next();
                const QString target = match.captured(1).isEmpty() ? page : match.captured(1);
                const QString anchor = match.captured(2);
                QVERIFY2(manual().exists(target)
                             && (anchor.isEmpty() || contents(target).contains("id=\"" + anchor + '"')),
                         qPrintable(page + ": " + match.captured()));
            }
        }
    }

    void helpKeyAsksForThePageOfTheWindow()
    {
        QWidget frame, strange;
        frame.setObjectName("mdiMain");
        QWidget explorer(&frame);
        explorer.setObjectName("frmTree");
        QLineEdit list(&explorer);
        list.setFocus(); // where the user was last in the frame
        QMenu popUp(&frame);
        for (QWidget *in : {static_cast<QWidget *>(&list), static_cast<QWidget *>(&popUp), &strange})
            QTest::keyClick(in, Qt::Key_F1);
        QCOMPARE(m_asked, (QStringList{"tool-explorer.html", "tool-explorer.html", "index.html"}));
    }

    void readerCanBeUsedWhileADialogIsOpen()
    {
        m_hasBrowser = false;
        Manual::show("index.html");
        {
            QDialog dialog;
            dialog.setObjectName("frmCheckIn");
            whenModal<QDialog>([&](QDialog &) {
                QTest::keyClick(&dialog, Qt::Key_F1);
                frmManual &reader = frmManual::instance();
                QVERIFY(reader.isVisible());
                QCOMPARE(reader.windowTitle(), "Check in");
                // Through the window, as the mouse comes: one that the dialog blocks gets nothing.
                const QPoint home = reader.ui.cmdHome->mapTo(&reader, reader.ui.cmdHome->rect().center());
                QTest::mouseClick(reader.windowHandle(), Qt::LeftButton, {}, home);
                QCOMPARE(reader.windowTitle(), "Vorlane Manager: Manual");
                // F1 in the reader itself tells of the dialog below it.
                QTest::keyClick(reader.ui.txtPage, Qt::Key_F1);
                QCOMPARE(reader.windowTitle(), "Check in");
            });
            dialog.exec();
        }
        Manual::show("find.html"); // also after the dialog has gone
        QCOMPARE(frmManual::instance().windowTitle(), "Find");
    }

private:
    QDir manual() const { return QDir(PROGRAM_BIN "/manual"); }

    QString contents(const QString &page) const { return contentOf(manual().filePath(page)); }

    HelpKey m_helpKey{
        {{"mdiMain", "main-window.html"}, {"frmTree", "tool-explorer.html"}, {"frmCheckIn", "check-in.html"}}};
    QStringList m_asked;
    bool m_hasBrowser = true;
};

QTEST_MAIN(TestManual)
#include "tst_manual.moc"
