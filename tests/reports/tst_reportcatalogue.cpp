#include "platform/gui/Manual.h"
#include "platform/reportcontrol/PreviewWindow.h"
#include "reports/PrintBy.h"
#include "reports/QueryKind.h"
#include "reports/ResultsKind.h"
#include "reports/frmConfigReports.h"
#include "reports/frmImportSelected.h"
#include "reports/frmNewReport.h"
#include "tests/reports/ReportsCrib.h"
#include "tests/support/DataRows.h"
#include "tests/support/ScriptedUser.h"

class TestReportCatalogue : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_crib = std::make_unique<ReportsCrib>();
        m_crib->run({
            "INSERT INTO Reports (Name,Description,Module,FileName) VALUES('Mine','My own','Junk Tools','Mine.rpt')",
            "INSERT INTO Reports (Name,Description,Module,FileName,Default)"
            " VALUES('Yours','Your own','Junk Tools','Yours.rpt',-1)",
        });
    }
    void cleanup() { m_crib.reset(); }

    void modulesAreListed()
    {
        config([](frmConfigReports &form) {
            QCOMPARE(form.ui.dbcRtype->currentText(), "Tools Out");
            QCOMPARE(form.ui.dbcRtype->count(), 3);
            QAbstractItemModel *rows = form.ui.dbgReport->model();
            QCOMPARE(rows->rowCount(), 1);
            form.ui.dbcRtype->setCurrentText("Junk Tools");
            rows = form.ui.dbgReport->model();
            QStringList texts;
            for (int row = 0; row < rows->rowCount(); ++row)
                for (int column = 0; column < rows->columnCount(); ++column)
                    texts.append(rows->index(row, column).data().toString());
            QCOMPARE(texts.join('|'),
                     "Junk Tools|Scrapped tools of each job|Yes|Yes|Mine|My own|No|No|Yours|Your own|Yes|No");
        });
    }

    void setDefault_data()
    {
        columns<QMessageBox::StandardButton, QStringList>("answer", "templates");
        row("leaves one", QMessageBox::Ok, QStringList{"Junk Tools|0", "Mine|-1", "Yours|0"});
        row("asks first", QMessageBox::Cancel, QStringList{"Junk Tools|-1", "Mine|0", "Yours|-1"});
    }

    void setDefault()
    {
        QFETCH(QMessageBox::StandardButton, answer);
        ScriptedUser user(answer);
        config([](frmConfigReports &form) {
            form.ui.dbcRtype->setCurrentText("Junk Tools");
            form.ui.dbgReport->selectRow(1);
            form.ui.cmdDefault->click();
            QCOMPARE(form.ui.dbgReport->selectedRows(), QList<int>{1});
        });
        QCOMPARE(user.boxes(),
                 QStringList("Set as Default (question): Set Mine As Default for Junk Tools? [OK]* [Cancel]"));
        QTEST(junkTemplates(), "templates");
    }

    void remove_data()
    {
        columns<int, QMessageBox::StandardButton, QStringList, int>("row", "answer", "said", "left");
        row("one of our own", 1, QMessageBox::Ok, QStringList("Delete This Record?"), 2);
        row("asks first", 1, QMessageBox::Cancel, QStringList("Delete This Record?"), 3);
        row("one that came with the program, after the question", 0, QMessageBox::Ok,
            QStringList{"Delete This Record?", "You Cannot Delete OEM Reports!."}, 3);
    }

    void remove()
    {
        QFETCH(int, row);
        QFETCH(QMessageBox::StandardButton, answer);
        QFETCH(QStringList, said);
        ScriptedUser user;
        user.answers(answer, int(said.size()));
        config([row](frmConfigReports &form) {
            form.ui.dbcRtype->setCurrentText("Junk Tools");
            form.ui.dbgReport->selectRow(row);
            form.ui.cmdRemove->click();
        });
        QCOMPARE(user.texts(), said);
        QTEST(int(junkTemplates().size()), "left");
    }

    void nothingSelected()
    {
        ScriptedUser user(QMessageBox::Ok, 2);
        config([&](frmConfigReports &form) {
            form.ui.cmdDefault->click();
            form.ui.cmdRemove->click();
        });
        QCOMPARE(user.boxes(),
                 QStringList({"Selection Error (information): Nothing Selected!. [OK]",
                              "Selection Error (information): Nothing Selected to Remove!. [OK]"}));
    }

    void importing()
    {
        m_crib->addTemplate("new.RPT", {}, {});
        config([&](frmConfigReports &form) {
            form.ui.dbcRtype->setCurrentText("All Tools");
            whenModal<frmNewReport>([](frmNewReport &chooser) {
                chooser.ui.filReport->setCurrentRow(0);
                whenModal<frmImportSelected>([](frmImportSelected &import) {
                    QCOMPARE(import.ui.lblRpt->text(), "new.RPT");
                    import.ui.cboRtype->setCurrentText("All Tools");
                    import.ui.txtName->setText("Bob's list");
                    import.ui.txtDesc->setText("For Bob");
                    import.ui.cmdImport->click();
                    QVERIFY(!import.isVisible());
                });
                chooser.ui.cmdSelect->click();
                QVERIFY(!chooser.isVisible());
            });
            form.ui.cmdAdd->click();
            QCOMPARE(form.ui.dbgReport->model()->rowCount(), 2);
        });
        QCOMPARE(m_crib->rows("Select * from Reports where FileName='new.RPT'"),
                 QStringList("Bob's list|For Bob|All Tools|new.RPT|0|0"));
    }

    void importAsksForEverything()
    {
        ScriptedUser user(QMessageBox::Ok, 3);
        frmImportSelected import("new.rpt");
        import.ui.cmdImport->click();
        import.ui.cboRtype->setCurrentText("Junk Tools");
        import.ui.txtName->setText("  ");
        import.ui.cmdImport->click();
        import.ui.txtName->setText("New");
        import.ui.cmdImport->click();
        QCOMPARE(
            user.texts(),
            (QStringList{"You must enter a Report Type!", "You must enter a Name!", "You must enter a Description!"}));
        QCOMPARE(user.seen[1].caption, "System Message");
        QCOMPARE(user.seen[1].icon, QMessageBox::Information);
        QCOMPARE(junkTemplates().size(), 3);
    }

    void onlyTemplatesAreOffered()
    {
        m_crib->addTemplate("b.rpt", {}, {});
        m_crib->addTemplate("A.rpt", {}, {});
        m_crib->addTemplate("notes.txt", {}, {});
        ScriptedUser user(QMessageBox::Ok);
        whenModal<frmNewReport>([](frmNewReport &chooser) {
            QCOMPARE(chooser.ui.filReport->count(), 2);
            QCOMPARE(chooser.ui.filReport->item(0)->text(), "A.rpt");
            chooser.ui.cmdSelect->click();
            QVERIFY(chooser.isVisible());
        });
        frmNewReport::showModal();
        QCOMPARE(user.texts(), QStringList("Nothing Selected To Delete!"));
        QCOMPARE(user.seen[0].caption, "Selection Error");
    }

    void manualTellsOfEveryWindow()
    {
        const auto pageOf = [](const QString &window) {
            QWidget named;
            named.setObjectName(window);
            return Manual::pageFor(&named);
        };
        for (const QueryKind *query :
             {&QueryKind::frmQueryCheckedOut, &QueryKind::frmQueryTypeLoc, &QueryKind::frmReportAllTools,
              &QueryKind::frmQueryScrap, &QueryKind::frmReportJunkTools}) {
            QCOMPARE(pageOf(query->name), "queries.html");
            QCOMPARE(pageOf(query->results.name), "results.html");
        }
        QCOMPARE(pageOf(ResultsKind::frmEmpQresults.name), "results.html");
        for (const PrintByKind *window : {&PrintByKind::frmPrByJob, &PrintByKind::frmPrByEmp})
            QCOMPARE(pageOf(window->name), "print-by.html");
        for (const QMetaObject &window :
             {frmConfigReports::staticMetaObject, frmNewReport::staticMetaObject, frmImportSelected::staticMetaObject})
            QCOMPARE(pageOf(window.className()), "configure-reports.html");
        QCOMPARE(pageOf(PreviewWindow::staticMetaObject.className()), "preview.html");
    }

private:
    QStringList junkTemplates() const
    {
        return m_crib->rows("Select Name,Default from Reports where Module='Junk Tools'");
    }
    static void config(const std::function<void(frmConfigReports &)> &steps)
    {
        whenModal<frmConfigReports>(steps);
        frmConfigReports::showModal();
    }

    std::unique_ptr<ReportsCrib> m_crib;
};

QTEST_MAIN(TestReportCatalogue)
#include "tst_reportcatalogue.moc"
