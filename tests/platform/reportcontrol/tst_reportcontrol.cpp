#include "platform/reportcontrol/ReportControl.h"
#include "tests/support/DataRows.h"

#include "platform/engine/Workspace.h"
#include "platform/report/Report.h"
#include "platform/reportcontrol/PreviewWindow.h"
#include "platform/reportcontrol/Printing.h"
#include "platform/reportcontrol/RunProgress.h"
#include "platform/system/ProgramFolder.h"
#include "tests/support/Files.h"
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
        m_database = Workspace::first().createDatabase(file("crib.mdb"));
        m_database->executeNative("CREATE TABLE Tools (ID INTEGER PRIMARY KEY AUTOINCREMENT, Description TEXT)");
        Transaction filling(*m_database);
        for (int row = 1; row <= rows; ++row)
            m_database->execute(QStringLiteral("INSERT INTO Tools (Description) VALUES('Tool %1')").arg(row));
        filling.commit();
        writeFile(file("List.rpt"), R"(<report version="1"><data><from table="Tools"/></data>
    <columns><column name="a" width="1"/></columns>
    <pageheader><line><cell in="a">{?title}</cell></line></pageheader>
    <detail><line><cell in="a">{Tools.Description}</cell></line></detail></report>)");
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
        QCOMPARE(control.print(), 20507);
        control.reportFile = m_folder.path() + "\\List.rpt";
        control.destination = 3;
        QCOMPARE(control.print(), 20505);
        control.destination = ReportControl::toPreview;
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
        QVERIFY(content("List.rpt").startsWith("<report"));
    }

    void furtherRunReplacesThePreview()
    {
        const QPointer<PreviewWindow> first = preview();
        PreviewWindow *second = preview("{Tools.ID} = 7");
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!first);
        QCOMPARE(second->ui.lblPages->text(), "of 1");
        QTest::keyClick(second, Qt::Key_Escape);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!m_control->preview());
    }

    void leafing()
    {
        PreviewWindow *window = preview();
        QSpinBox *page = window->ui.fpPage;
        QTRY_VERIFY(!window->ui.lblPages->text().endsWith('+'));
        const int pages = page->maximum();
        QVERIFY(pages > 10);
        QCOMPARE(window->ui.lblPages->text(), QStringLiteral("of %1").arg(pages));

        const auto press = [&](Qt::Key key, Qt::KeyboardModifiers with = Qt::NoModifier) {
            QTest::keyClick(window->focusWidget(), key, with);
            return page->value();
        };
        QCOMPARE(press(Qt::Key_PageDown, Qt::ControlModifier), 2);
        QCOMPARE(press(Qt::Key_PageDown, Qt::ControlModifier), 3);
        QCOMPARE(press(Qt::Key_PageUp, Qt::ControlModifier), 2);
        QCOMPARE(press(Qt::Key_End, Qt::ControlModifier), pages);
        QCOMPARE(press(Qt::Key_PageDown, Qt::ControlModifier), pages);
        QCOMPARE(press(Qt::Key_Home, Qt::ControlModifier), 1);
        for (int i = 0; i < 3; ++i)
            press(Qt::Key_PageDown);
        QVERIFY(page->value() > 1 && page->value() < pages);

        press(Qt::Key_G, Qt::ControlModifier);
        QTest::keyClicks(page, "5");
        QTest::keyClick(page, Qt::Key_Return);
        QCOMPARE(window->ui.pages->currentPage(), 4);
        window->ui.cmdLast->click();
        QCOMPARE(page->value(), pages);
    }

    void zooming_data()
    {
        columns<QString, double, QString>("chosen", "zoom", "shown");
        row("any number", "137", 1.37, "137 %");
        row("no larger", "900 %", 4.0, "400 %");
        row("no number", "large", 0.0, "Fit Width");
        row("page", "Fit Page", 0.0, "Fit Page");
    }

    void zooming()
    {
        const auto [chosen, zoom] = fetched<QString, double>("chosen", "zoom");
        PreviewWindow *window = preview();
        QCOMPARE(window->ui.cboZoom->currentText(), "Fit Width");
        window->ui.pages->goToPage(3);
        window->ui.cboZoom->setEditText(chosen);
        QTest::keyClick(window->ui.cboZoom, Qt::Key_Return);
        if (zoom > 0)
            QCOMPARE(window->ui.pages->zoom(), zoom);
        QTEST(window->ui.cboZoom->currentText(), "shown");
        // What was looked at stays.
        QCOMPARE(window->ui.fpPage->value(), 4);
        QTest::keyClick(window->ui.pages, Qt::Key_0, Qt::ControlModifier);
        QCOMPARE(window->ui.pages->zoom(), 1.0);
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
        const int page = window->ui.fpPage->value();
        QVERIFY(page > 10);
        QTest::keyClick(window, Qt::Key_F3, Qt::ShiftModifier);
        QTest::keyClick(window, Qt::Key_F3, Qt::ShiftModifier);
        QCOMPARE(window->ui.lblFound->text(), "11 of 11");
        QTest::keyClick(window, Qt::Key_F3);
        QCOMPARE(window->ui.lblFound->text(), "1 of 11");

        QCOMPARE(seek("anvil"), "Not found");
        // A search goes on from the page that is shown.
        window->ui.mnuGoLast->trigger();
        QCOMPARE(seek("Tool 2000"), "1 of 1");
        // The current place is marked on the page.
        const QImage shown = window->ui.pages->viewport()->grab().toImage();
        int marked = 0;
        for (int y = 0; y < shown.height(); ++y)
            for (int x = 0; x < shown.width(); ++x)
                marked += shown.pixelColor(x, y).saturation() > 60 ? 1 : 0;
        QVERIFY(marked > 50);
    }

    void pagesAreWrittenAndFailuresHandedOver()
    {
        QList<int> codes;
        QStringList details;
        m_control->errorRoutine = [&](int code, const QString &detail) {
            codes.append(code);
            details.append(detail);
        };
        PreviewWindow *window = preview();
        const auto saved = [&](QAction *command, const QString &name) {
            whenModal<QFileDialog>([&](QFileDialog &dialog) {
                dialog.findChild<QLineEdit *>("fileNameEdit")->setText(file(name));
                static_cast<QDialog &>(dialog).accept();
            });
            command->trigger();
            return content(name);
        };
        QVERIFY(saved(window->ui.mnuFilePdf, "saved.pdf").startsWith("%PDF"));
        QVERIFY(saved(window->ui.mnuFileCsv, "saved.csv").startsWith("\xef\xbb\xbf"));
        QVERIFY(QDir(m_folder.path()).mkdir("gone"));
        whenModal<QFileDialog>([&](QFileDialog &dialog) {
            dialog.findChild<QLineEdit *>("fileNameEdit")->setText(file("gone/saved.pdf"));
            connect(&dialog, &QDialog::accepted, window, [this] { QDir(m_folder.path()).rmdir("gone"); });
            static_cast<QDialog &>(dialog).accept();
        });
        window->ui.mnuFilePdf->trigger();
        QCOMPARE(codes, QList<int>{20530});
        QVERIFY(details[0].contains("saved.pdf"));
        Report report(m_database.get());
        QCOMPARE(printOn(QPrinterInfo(), report), 20526);
        if (!QPrinterInfo::availablePrinters().isEmpty())
            QSKIP("there is a printer");
        window->ui.mnuFilePrint->trigger();
        QCOMPARE(codes.last(), 20526);
        m_control->destination = ReportControl::toPrinter;
        QCOMPARE(m_control->print(), 20526);
    }

    void printingRanges_data()
    {
        using SetUp = std::function<void(QPrinter &)>;
        columns<SetUp, int, int>("setUp", "code", "printed");
        row("a range", SetUp([](QPrinter &printer) {
                printer.setPrintRange(QPrinter::PageRange);
                printer.setFromTo(3, 5);
            }),
            0, 3);
        row("the current page", SetUp([](QPrinter &printer) { printer.setPrintRange(QPrinter::CurrentPage); }), 0, 1);
        row("pages that there are not", SetUp([](QPrinter &printer) {
                printer.setPrintRange(QPrinter::PageRange);
                printer.setFromTo(3, 5000);
            }),
            20550, 0);
    }

    void printingRanges()
    {
        const auto [setUp, printed] = fetched<std::function<void(QPrinter &)>, int>("setUp", "printed");
        Report report(m_database.get());
        QCOMPARE(report.open("List.rpt", {}), 0);
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFileName(file("paper.pdf"));
        setUpPages(printer, report);
        QCOMPARE(printer.pageLayout().fullRectPoints().size(), (report.pageSize() / 20).toSize());
        QFile::remove(file("paper.pdf"));
        setUp(printer);
        QTEST(printPages(printer, report, 1), "code");
        QCOMPARE(content("paper.pdf").count("/Type /Page\n"), printed);
    }

    void longRunCanBeCancelled()
    {
        Report report(m_database.get());
        RunProgress progress(report, "Query Results", m_main.get());
        progress.show(0.1);
        QVERIFY(!QApplication::activeModalWidget());
        QElapsedTimer since;
        since.start();
        whenModal<QProgressDialog>([](QProgressDialog &dialog) {
            QCOMPARE(dialog.windowTitle(), "Query Results");
            QVERIFY(dialog.value() > 0);
            QTest::keyClick(&dialog, Qt::Key_Escape);
        });
        while (!progress.isCancelled() && since.elapsed() < 5000)
            progress.show(0.5);
        QVERIFY(progress.isCancelled());
        QVERIFY(since.elapsed() >= 450);
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

    QTemporaryDir m_folder;
    std::unique_ptr<Database> m_database;
    std::unique_ptr<QWidget> m_main;
    ReportControl *m_control = nullptr;
};

QTEST_MAIN(TestReportControl)
#include "tst_reportcontrol.moc"
