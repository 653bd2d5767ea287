#include "platform/reportcontrol/ReportControl.h"
#include "tests/support/DataRows.h"

#include "platform/reportcontrol/PreviewWindow.h"
#include "platform/reportcontrol/Printing.h"
#include "platform/reportcontrol/RunProgress.h"
#include "platform/reportengine/Report.h"
#include "platform/system/ProgramFolder.h"
#include "tests/support/EngineFile.h"
#include "tests/support/ScriptedUser.h"

#include <QFileDialog>
#include <QPrinter>
#include <QPrinterInfo>

class TestReportControl : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        ProgramFolder::setPath(m_folder.path());
        Transaction filling(*m_database);
        for (int row = 1; row <= rows; ++row)
            m_database->execute(QStringLiteral("INSERT INTO Tools (Description) VALUES('Tool %1')").arg(row));
        filling.commit();
        const QByteArray title = "<pageheader><line><cell in=\"a\">{?title}</cell></line></pageheader>";
        writeFile(file("List.rpt"), simpleTemplate("<from table=\"Tools\"/>", "{Tools.Description}", title));
    }

    void init()
    {
        m_main = std::make_unique<QWidget>();
        m_main->resize(1000, 700);
        m_control = new ReportControl(*m_database, m_main.get());
    }

    void cleanup()
    {
        m_main.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void previewIsPlacedOverTheMainWindow()
    {
        m_main->move(30, 40);
        auto *between = new QWidget(m_main.get(), Qt::Window);
        ReportControl control(*m_database, between);
        control.windowTitle = "Query Results";
        control.windowWidth = 700;
        control.windowHeight = 500;
        control.windowLeft = 65;
        control.windowTop = 70;
        control.reportFile = m_folder.path() + "\\List.rpt";
        control.selectionFormula = "{Tools.Colour} = 1";
        QCOMPARE(control.print(), 20509);
        QVERIFY(!control.preview());
        control.selectionFormula = "{Tools.ID} = 0";
        QCOMPARE(control.print(), 0);
        QCOMPARE(control.preview()->windowTitle(), "Query Results");
        QCOMPARE(control.preview()->size(), QSize(700, 500));
        QCOMPARE(control.preview()->pos(), QPoint(95, 110));
        control.destination = ReportControl::toFile;
        control.outputFile = file("List.rpt");
        QCOMPARE(control.print(), 20514); // a file is not replaced
    }

    void leafingAndZooming()
    {
        PreviewWindow *window = preview();
        QSpinBox *page = window->ui.fpPage;
        QTRY_VERIFY(!window->ui.lblPages->text().endsWith('+'));
        const int pages = page->maximum();
        QCOMPARE(window->ui.lblPages->text(), QStringLiteral("of %1").arg(pages));

        const auto press = [&](Qt::Key key) {
            QTest::keyClick(window->focusWidget(), key, Qt::ControlModifier);
            return page->value();
        };
        QCOMPARE(press(Qt::Key_PageDown), 2);
        QCOMPARE(press(Qt::Key_PageUp), 1);
        QCOMPARE(press(Qt::Key_End), pages);
        QCOMPARE(press(Qt::Key_PageDown), pages);
        QCOMPARE(press(Qt::Key_Home), 1);
        press(Qt::Key_G);
        QTest::keyClicks(page, "5");
        QTest::keyClick(page, Qt::Key_Return);
        QCOMPARE(window->ui.pages->currentPage(), 4);
        for (const auto &[chosen, shown] : {std::pair("large", "Fit Width"), {"137", "137 %"}, {"900 %", "400 %"}}) {
            window->ui.cboZoom->setEditText(chosen);
            QTest::keyClick(window->ui.cboZoom, Qt::Key_Return);
            QCOMPARE(window->ui.cboZoom->currentText(), shown);
            QCOMPARE(page->value(), 5); // what was looked at stays
        }
        window->ui.cmdLast->click();
        QCOMPARE(page->value(), pages);
    }

    void finding()
    {
        PreviewWindow *window = preview();
        const auto seek = [&](const QString &text) {
            QTest::keyClick(window, Qt::Key_F, Qt::ControlModifier);
            QTest::keyClicks(window->ui.txtFind, text);
            QTest::keyClick(window->ui.txtFind, Qt::Key_Return);
            return window->ui.lblFound->text();
        };
        // Tool 1999, and none of the titles.
        QCOMPARE(seek("tool 199"), "1 of 11");
        QCOMPARE(window->ui.fpPage->value(), window->ui.pages->currentPage() + 1);
        QTest::keyClick(window, Qt::Key_F3);
        QCOMPARE(window->ui.lblFound->text(), "2 of 11");
        QTest::keyClick(window, Qt::Key_F3, Qt::ShiftModifier);
        QTest::keyClick(window, Qt::Key_F3, Qt::ShiftModifier);
        QCOMPARE(window->ui.lblFound->text(), "11 of 11");
        QTest::keyClick(window, Qt::Key_F3);
        QCOMPARE(window->ui.lblFound->text(), "1 of 11");

        QCOMPARE(seek("anvil"), "Not found");
        // A search goes on from the page that is shown.
        window->ui.mnuGoLast->trigger();
        QCOMPARE(seek("Tool 2000"), "1 of 1");
    }

    void pagesAreWrittenAndFailuresHandedOver()
    {
        QList<int> codes;
        m_control->errorRoutine = [&](int code, const QString &) { codes.append(code); };
        PreviewWindow *window = preview();
        const auto saved = [&](QAction *command, const QString &name) {
            whenModal<QFileDialog>([&](QFileDialog &dialog) {
                dialog.findChild<QLineEdit *>("fileNameEdit")->setText(file(name));
                connect(&dialog, &QDialog::accepted, window, [this] { QDir(m_folder.path()).rmdir("gone"); });
                static_cast<QDialog &>(dialog).accept();
            });
            command->trigger();
            return content(name);
        };
        QVERIFY(saved(window->ui.mnuFilePdf, "saved.pdf").startsWith("%PDF"));
        QVERIFY(saved(window->ui.mnuFileCsv, "saved.csv").startsWith("\xef\xbb\xbf"));
        QVERIFY(QDir(m_folder.path()).mkdir("gone"));
        QCOMPARE(saved(window->ui.mnuFilePdf, "gone/saved.pdf"), "");
        QCOMPARE(codes, QList<int>{20530});
        Report report(&*m_database);
        QCOMPARE(printOn(QPrinterInfo(), report), 20526);
    }

    void printingRanges_data()
    {
        row("a range", QPrinter::PageRange, 5, 0, 3);
        row("the current page", QPrinter::CurrentPage, 5, 0, 1);
        row("pages that there are not", QPrinter::PageRange, 5000, 20550, 0);
    }

    void printingRanges()
    {
        const auto [range, last, code, printed] = fetched<int, int, int, int>();
        Report report(&*m_database);
        QCOMPARE(report.open("List.rpt", {}), 0);
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFileName(file("paper.pdf"));
        setUpPages(printer, report);
        QCOMPARE(printer.pageLayout().fullRectPoints().size(), (report.pageSize() / 20).toSize());
        QFile::remove(file("paper.pdf"));
        printer.setFromTo(3, last);
        printer.setPrintRange(QPrinter::PrintRange(range));
        QCOMPARE(printPages(printer, report, 1), code);
        QCOMPARE(content("paper.pdf").count("/Type /Page\n"), printed);
    }

    void aRollIsNotTurned()
    {
        QByteArray content = simpleTemplate("<from table=\"Tools\"/>", "{Tools.Description}");
        writeFile(file("Roll.rpt"),
                  content.replace("version=", "width=\"62mm\" height=\"29mm\" margin=\"3mm\" version="));
        Report report(&*m_database);
        QCOMPARE(report.open("Roll.rpt", {}), 0);
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFileName(file("paper.pdf"));
        setUpPages(printer, report);
        QCOMPARE(printer.pageLayout().orientation(), QPageLayout::Portrait);
        QCOMPARE(printer.pageLayout().fullRectPoints(), QRect(0, 0, 176, 82));
    }

    void longRunCanBeCancelled()
    {
        Report report(&*m_database);
        RunProgress progress(report, "Query Results", m_main.get());
        whenModal<QProgressDialog>([](QProgressDialog &dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
        for (QDeadlineTimer end(5000); !progress.isCancelled() && !end.hasExpired();)
            progress.show(0.5);
        QVERIFY(progress.isCancelled());
        // What is under way ends with the next step that it reports.
        QCOMPARE(report.open("List.rpt", {}), 20545);
    }

private:
    static constexpr int rows = 2000;
    PreviewWindow *preview(const QString &formula = {})
    {
        m_control->selectionFormula = formula;
        m_control->reportFile = "List.rpt";
        if (m_control->print() != 0 || !QTest::qWaitForWindowActive(m_control->preview()))
            qFatal("no preview");
        return m_control->preview();
    }
    QString file(const QString &name) const { return m_folder.filePath(name); }
    QByteArray content(const QString &name) const { return contentOf(file(name)); }

    const EngineFile m_database{"CREATE TABLE Tools (ID INTEGER PRIMARY KEY AUTOINCREMENT, Description TEXT)"};
    QTemporaryDir m_folder;
    std::unique_ptr<QWidget> m_main;
    ReportControl *m_control = nullptr;
};

QTEST_MAIN(TestReportControl)
#include "tst_reportcontrol.moc"
