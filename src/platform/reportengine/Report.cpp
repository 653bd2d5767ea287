#include "platform/reportengine/Report.h"

#include "platform/reportengine/CsvWriter.h"
#include "platform/reportengine/DataSource.h"
#include "platform/reportengine/FormulaInWords.h"
#include "platform/reportengine/OutputFile.h"
#include "platform/reportengine/PagePainter.h"
#include "platform/reportengine/PageWriter.h"
#include "platform/reportengine/TemplateReader.h"
#include "platform/system/Clock.h"
#include "platform/system/ProgramFolder.h"

#include <QDebug>
#include <QScopeGuard>

#include <algorithm>
#include <optional>

namespace {

constexpr int millisecondsBetweenReports = 30;
// A long formula is not shown whole on every page.
constexpr int maxShownFormula = 4000;

/// The place of a template in the crib folder or among the program's own; nothing outside of them can be named.
QString placeOf(const QString &templatePath)
{
    QString name = templatePath;
    if (name.startsWith(ProgramFolder::path())) {
        name.remove(0, ProgramFolder::path().size());
        if (name.startsWith('\\') || name.startsWith('/'))
            name.remove(0, 1);
    }
    const auto isForbidden = [](QChar c) {
        return c == '\\' || c == '/' || c == ':' || c.category() == QChar::Other_Control;
    };
    if (!name.endsWith(QStringLiteral(".rpt"), Qt::CaseInsensitive) || name.contains(QStringLiteral(".."))
        || std::any_of(name.begin(), name.end(), isForbidden))
        throw ReportError(ResultCode::invalidFileName,
                          QStringLiteral("\"%1\" is no name of a report file").arg(templatePath));
    return ProgramFolder::find(name);
}

int codeOf(const EngineError &error)
{
    switch (error.number()) {
    case EngineError::fileNotFound:
    case EngineError::cannotOpenFile:
    case EngineError::notADatabase:
        return ResultCode::cannotOpenDatabase;
    case EngineError::unknownTable:
        return ResultCode::tableNotFound;
    default:
        return ResultCode::databaseError;
    }
}

}

/// What a successful open() has made, each part out of the one before.
struct Report::Run {
    Template report;
    QHash<QString, QString> parameters;
    Formula selection;
    std::optional<DataSource> source;
    GroupedRecords records;
    std::unique_ptr<BandComposer> composer;
    std::unique_ptr<Pagination> layout;
};

Report::Report(Database *database) : m_database(database), m_progress([](double) {}) { }

Report::~Report() = default;

void Report::setProgress(Progress progress) { m_progress = std::move(progress); }

void Report::cancel() { m_isCancelled = true; }

int Report::open(const QString &templatePath, const QString &formula, const QHash<QString, QString> &parameters)
{
    return perform([&] {
        m_run.reset();
        auto run = std::make_unique<Run>();
        run->report = TemplateReader::readFile(placeOf(templatePath));
        Template &report = run->report;

        run->parameters = parameters;
        if (!report.title.isEmpty() || !parameters.contains(QStringLiteral("title")))
            run->parameters[QStringLiteral("title")] = report.title;
        run->parameters[QStringLiteral("selection")] = {};
        report.requireParameters(run->parameters);

        run->selection = Formula::parse(formula, report.fields);
        if (!m_database || !ProgramFolder::fileExists(m_database->path()))
            throw ReportError(ResultCode::cannotOpenDatabase, QStringLiteral("there is no open database"));
        run->source.emplace(*m_database, report, run->selection);
        run->parameters[QStringLiteral("selection")] =
            inWords(run->selection, report.fields, report.table).left(maxShownFormula).simplified();
        run->records = run->source->read(reporting());
        run->composer = std::make_unique<BandComposer>(report, run->records, run->parameters, Clock::now());
        run->layout = std::make_unique<Pagination>(report, run->records, *run->composer);
        m_run = std::move(run);
    });
}

int Report::layout(int milliseconds)
{
    return perform([&] { layOut(QDeadlineTimer(milliseconds)); });
}

bool Report::isLaidOut() const { return m_run && m_run->layout->isComplete(); }

int Report::pageCount() const { return m_run ? m_run->layout->pageCount() : 0; }

QSizeF Report::pageSize() const { return m_run ? m_run->composer->pageSize() : QSizeF(); }

QPageLayout Report::pageLayout() const { return m_run ? m_run->report.pageLayout() : QPageLayout(); }

QString Report::title() const { return m_run ? m_run->parameters.value(QStringLiteral("title")) : QString(); }

int Report::recordCount() const { return m_run ? m_run->records.recordCount() : 0; }

int Report::paint(QPainter &painter, int page) const
{
    if (page < 0 || page >= pageCount())
        return ResultCode::invalidPageNumber;
    paintElements(painter, m_run->layout->elements(page), m_run->composer->measure());
    return ResultCode::ok;
}

QList<QRectF> Report::find(const QString &text, int page) const
{
    QList<QRectF> places;
    if (text.isEmpty() || page < 0 || page >= pageCount())
        return places;
    const auto shows = [&](const PageElement &element) { return element.text.contains(text, Qt::CaseInsensitive); };
    const QList<PageElement> elements = m_run->layout->elements(page);
    for (auto element = elements.begin(); element != elements.end(); ++element) {
        if (element->kind != PageElement::Text)
            continue;
        const auto cellEnd =
            std::find_if(element + 1, elements.end(), [](const PageElement &next) { return !next.cellText.isEmpty(); });
        // A sought text that is broken between two lines of a cell is found on neither; its place is the first line.
        const bool isBroken =
            element->cellText.contains(text, Qt::CaseInsensitive) && std::none_of(element, cellEnd, shows);
        if (isBroken || shows(*element))
            places.append(element->rect);
    }
    return places;
}

int Report::print(QPagedPaintDevice &device, int first, int last)
{
    return perform([&] {
        layOut(QDeadlineTimer::Forever);
        requirePages(first, last);
        PageWriter(*m_run->layout, *m_run->composer).print(device, first, last, reporting());
    });
}

int Report::writePdf(const QString &file, bool mayReplace)
{
    return perform([&] {
        OutputFile output(file, mayReplace);
        layOut(QDeadlineTimer::Forever);
        PageWriter(*m_run->layout, *m_run->composer).writePdf(output.file(), m_run->report, title(), reporting());
        output.commit();
    });
}

int Report::writeCsv(const QString &file, bool mayReplace)
{
    return perform([&] {
        requireRun();
        OutputFile output(file, mayReplace);
        // A table shows each record, also where the pages have sums only.
        const bool isFolded = m_run->records.isFolded();
        const GroupedRecords each = isFolded ? m_run->source->read(reporting(), true) : GroupedRecords();
        ::writeCsv(output.file(), isFolded ? each : m_run->records, m_run->report.fields, reporting());
        output.commit();
    });
}

int Report::write(const QString &file, bool mayReplace)
{
    return file.endsWith(QLatin1String(".csv"), Qt::CaseInsensitive) ? writeCsv(file, mayReplace)
                                                                     : writePdf(file, mayReplace);
}

int Report::perform(const std::function<void()> &step)
{
    if (m_isBusy)
        return ResultCode::jobBusy;
    m_isBusy = true;
    const auto end = qScopeGuard([this] { m_isBusy = m_isCancelled = false; });
    m_lastDetail.clear();
    try {
        step();
        return ResultCode::ok;
    } catch (const ReportError &error) {
        return failed(error.code(), error.detail());
    } catch (const EngineError &error) {
        return failed(codeOf(error), error.text());
    } catch (const std::bad_alloc &) {
        return failed(ResultCode::outOfMemory, QStringLiteral("out of memory"));
    }
}

int Report::failed(int code, const QString &detail)
{
    m_lastDetail = detail;
    qWarning().noquote() << QStringLiteral("report error %1: %2").arg(code).arg(detail);
    return code;
}

Progress Report::reporting()
{
    return [this](double done) {
        m_progress(done);
        if (m_isCancelled)
            throw ReportError(ResultCode::cancelled, QStringLiteral("the run was cancelled"));
    };
}

void Report::layOut(const QDeadlineTimer &end)
{
    requireRun();
    const Progress progress = reporting();
    do
        progress(m_run->layout->progress());
    while (!m_run->layout->advance(std::min(end, QDeadlineTimer(millisecondsBetweenReports))) && !end.hasExpired());
}

void Report::requireRun() const
{
    if (!m_run)
        throw ReportError(ResultCode::reportNotFound, QStringLiteral("no report is open"));
}

void Report::requirePages(int first, int last) const
{
    requireRun();
    if (first < 0 || last < first || last >= pageCount())
        throw ReportError(ResultCode::invalidPageNumber,
                          QStringLiteral("there is no page %1").arg(first < 0 || last < first ? first + 1 : last + 1));
}
