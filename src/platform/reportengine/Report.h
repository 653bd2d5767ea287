#pragma once

#include "platform/reportengine/ResultCode.h"
#include "platform/system/Progress.h"

#include <QHash>
#include <QPageLayout>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include <memory>

class Database;
class QDeadlineTimer;
class QPagedPaintDevice;
class QPainter;

/// A print run: a template of the program's folder, filled with the records that a selection formula picks, laid out on
/// pages and shown, printed or written. Needs a QGuiApplication for its fonts, but neither windows nor a screen.
///
/// Every step returns a ResultCode; a step begun while another one is on returns 20524. Lengths are in twips.
class Report
{
public:
    /// `database` may be null or lose its file; open() says so by its code.
    explicit Report(Database *database);
    ~Report();
    Q_DISABLE_COPY_MOVE(Report)

    /// Called during long steps; it may let events pass and call cancel().
    void setProgress(Progress progress);
    /// Ends the step that is on, or the next one, with 20545.
    void cancel();

    /// Reads the template and its records. `templatePath` is a file's name, or its place in the program's folder
    /// written with "\" or "/". `parameters` fill in {?name}. "title", the template's own where it has one, and
    /// "selection", the formula in words, are known without.
    int open(const QString &templatePath, const QString &formula, const QHash<QString, QString> &parameters = {});
    /// Goes on to lay out pages for some milliseconds, or to the end.
    int layout(int milliseconds = -1);
    bool isLaidOut() const;
    /// Those laid out so far; there is at least one after the first layout().
    int pageCount() const;
    QSizeF pageSize() const;
    /// How a printer's page is to be set up for print().
    QPageLayout pageLayout() const;
    QString title() const;
    int recordCount() const;

    /// Paints a page, from 0, at the painter's origin; the painter's unit is a twip. Also while another step is on.
    int paint(QPainter &painter, int page) const;
    /// Where `text` stands on a page, in any case.
    QList<QRectF> find(const QString &text, int page) const;

    /// Prints pages `first` to `last`, from 0, on a device that has our page layout; lays them out if need be.
    int print(QPagedPaintDevice &device, int first, int last);
    int writePdf(const QString &file, bool mayReplace = true);
    int writeCsv(const QString &file, bool mayReplace = true);
    /// A file whose name ends in ".csv" gets the records, any other the pages as PDF.
    int write(const QString &file, bool mayReplace = true);

    /// What was at fault when a step last failed: a line of the template, a field, a file. Empty after success.
    const QString &lastDetail() const { return m_lastDetail; }

private:
    struct Run;
    int perform(const std::function<void()> &step);
    int failed(int code, const QString &detail);
    /// Hands progress on and ends a step that was cancelled.
    Progress reporting();
    void layOut(const QDeadlineTimer &end);
    void requireRun() const;
    void requirePages(int first, int last) const;

    Database *m_database;
    Progress m_progress;
    std::unique_ptr<Run> m_run;
    QString m_lastDetail;
    bool m_isBusy = false;
    bool m_isCancelled = false;
};
