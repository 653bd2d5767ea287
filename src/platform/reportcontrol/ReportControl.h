#pragma once

#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>

class Database;
class PreviewWindow;
class Report;

/// Drives print runs for a window, with one preview: set the members, in their order, then print().
class ReportControl : public QObject
{
    Q_OBJECT
public:
    enum Destination { toPreview = 0, toPrinter = 1, toFile = 2 };

    /// The preview belongs to `owner` and closes as soon as that is closed. `database` is used for as long as the
    /// control lives.
    ReportControl(Database &database, QWidget *owner);

    QString windowTitle;
    QString reportFile; ///< a template in the program's folder
    QString selectionFormula;
    /// Place of the preview in pixels, from the main window's upper left corner.
    int windowWidth = 800;
    int windowHeight = 600;
    int windowLeft = 0;
    int windowTop = 0;
    int destination = toPreview;
    /// For toFile; a name that ends in ".csv" gets the records, any other the pages as PDF. Never replaced.
    QString outputFile;
    /// Shows the failure of what the user does in the preview later on.
    std::function<void(int resultCode, const QString &detail)> errorRoutine = [](int, const QString &) {};

    /// @returns a ResultCode: 0 when the preview is up, also without records, or when all is printed or written.
    int print();
    /// What was at fault when print() last failed: a line of the template, a field, a file. Empty after success.
    const QString &lastDetail() const { return m_lastDetail; }

    /// Null while no preview is up.
    PreviewWindow *preview() const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    int run(Report &report) const;
    void showPreview(std::unique_ptr<Report> report);

    Database &m_database;
    QWidget *m_owner;
    QPointer<PreviewWindow> m_preview;
    QString m_lastDetail;
    bool m_isBusy = false;
};
