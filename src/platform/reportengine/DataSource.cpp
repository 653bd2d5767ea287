#include "platform/reportengine/DataSource.h"

#include "platform/engine/RowReader.h"
#include "platform/reportengine/FolderPaths.h"
#include "platform/reportengine/FormulaInSql.h"
#include "platform/text/Format.h"
#include "platform/text/TextCompare.h"

#include <QSet>

#include <algorithm>
#include <map>

namespace {

constexpr size_t keysOfStatement = 1000;
// To look up the partners of more rows than these, all over their table, takes longer than to read that table once.
constexpr int rowsToLookUp = 3000;

FieldKind kindOf(dialect::ValueKind kind)
{
    switch (kind) {
    case dialect::ValueKind::YesNo:
        return FieldKind::YesNo;
    case dialect::ValueKind::Date:
        return FieldKind::DateTime;
    case dialect::ValueKind::Long:
    case dialect::ValueKind::Number:
    case dialect::ValueKind::Currency:
        return FieldKind::Number;
    default:
        return FieldKind::Text;
    }
}

struct TableColumns {
    QHash<QString, FieldKind> kinds; ///< by folded name; none when there is no such table
    QString counter;

    bool isTree() const { return !counter.isEmpty() && kinds.contains("parent") && kinds.contains("description"); }
};

constexpr QLatin1StringView pathColumn("Path");

TableColumns columnsOf(const Database &database, const QString &name)
{
    TableColumns columns;
    if (const dialect::Table *table = database.table(name)) {
        columns.counter = table->counter;
        for (const dialect::Column &column : table->columns)
            columns.kinds.insert(column.name.toCaseFolded(), kindOf(column.kind));
    }
    return columns;
}

void addOnce(std::vector<int> &fields, int field)
{
    if (std::ranges::find(fields, field) == fields.end())
        fields.push_back(field);
}

void addFields(std::vector<int> &fields, const FormulaCondition &condition)
{
    if (condition.field >= 0)
        addOnce(fields, condition.field);
    for (const FormulaCondition &part : condition.parts)
        addFields(fields, part);
}

QString where(QStringList conditions)
{
    conditions.removeAll(QString());
    return conditions.isEmpty() ? QString() : " WHERE " + conditions.join(" AND ");
}

template<typename Visit>
void forEachBand(Template &report, Visit visit)
{
    for (Band *band : {&report.reportHeader, &report.pageHeader, &report.detail, &report.reportFooter,
                       &report.pageFooter, &report.noData})
        visit(*band);
    for (Group &group : report.groups) {
        visit(group.header);
        visit(group.footer);
    }
}

}

DataSource::DataSource(Database &database, Template &report, Formula &selection)
    : m_database(database), m_template(report), m_selection(selection)
{
    learnKinds();
    checkJoins();
    checkFormats();
    checkGroups();
    checkAggregates();
    bindFormulas();
}

void DataSource::learnKinds()
{
    QHash<QString, TableColumns> tables;
    const auto learn = [&](const QString &table, int line) {
        const QString name = table.toCaseFolded();
        if (tables.contains(name))
            throw templateError(m_template.fileName, line, QStringLiteral("a second table %1").arg(table));
        // Nothing but a plain name goes into the text of a statement.
        const bool isPlain = !Field::fromName(QStringLiteral("%1.column").arg(table)).table.isEmpty();
        tables[name] = isPlain ? columnsOf(m_database, table) : TableColumns();
        if (tables[name].kinds.isEmpty())
            throw templateError(m_template.fileName, line, QStringLiteral("the database has no table %1").arg(table),
                                ResultCode::tableNotFound);
    };
    if (!m_template.table.isEmpty())
        learn(m_template.table, m_template.tableLine);
    for (const Join &join : std::as_const(m_template.joins))
        learn(join.table, join.line);
    m_key = tables[m_template.table.toCaseFolded()].counter;

    for (int number = 0; number < m_template.fields.count(); ++number) {
        Field &field = m_template.fields.at(number);
        const TableColumns table = tables.value(field.table.toCaseFolded());
        const QHash<QString, FieldKind> &columns = table.kinds;
        const auto column = columns.constFind(field.column.toCaseFolded());
        field.isPath = column == columns.constEnd() && field.column.compare(pathColumn, Qt::CaseInsensitive) == 0
            && table.isTree();
        field.isInStatement = !field.isPath;
        if (field.isPath)
            continue;
        if (column == columns.constEnd()) {
            const QString what = QStringLiteral("{%1} is no column of the report's tables").arg(field.name());
            throw field.line > 0 ? templateError(m_template.fileName, field.line, what, ResultCode::invalidFieldName)
                                 : ReportError(ResultCode::invalidFieldName, what);
        }
        field.kind = *column;
    }
    // Which partner is the last one is known when all of them have been read; conditions over it, and over tables that
    // may be joined to it, wait until then.
    QSet<QString> late;
    for (qsizetype i = 0; i < m_template.joins.size(); ++i) {
        const Join &join = m_template.joins.at(i);
        if (join.lastBy >= 0 && m_last >= 0)
            throw templateError(m_template.fileName, join.line, QStringLiteral("a second last row"));
        if (join.lastBy >= 0)
            m_last = i;
        if (m_last >= 0)
            late.insert(join.table.toCaseFolded());
    }
    for (int number = 0; number < m_template.fields.count(); ++number)
        if (late.contains(m_template.fields.at(number).table.toCaseFolded()))
            m_template.fields.at(number).isInStatement = false;
}

QString DataSource::counterOf(const QString &table) const { return columnsOf(m_database, table).counter; }

void DataSource::checkJoins() const
{
    QStringList earlier{m_template.table.toCaseFolded()};
    for (const Join &join : std::as_const(m_template.joins)) {
        const QString joined = join.table.toCaseFolded();
        for (const auto &[left, right] : join.equalFields) {
            if (m_template.fields.at(left).isPath || m_template.fields.at(right).isPath)
                throw templateError(m_template.fileName, join.line, QStringLiteral("a path joins no tables"));
            const QString one = m_template.fields.at(left).table.toCaseFolded();
            const QString other = m_template.fields.at(right).table.toCaseFolded();
            if (!(one == joined && earlier.contains(other)) && !(other == joined && earlier.contains(one)))
                throw templateError(m_template.fileName, join.line,
                                    QStringLiteral("%1 is not joined to a table before it").arg(join.table));
        }
        if (join.lastBy >= 0
            && (m_key.isEmpty() || counterOf(join.table).isEmpty()
                || m_template.fields.at(join.lastBy).table.toCaseFolded() != joined
                || m_template.fields.at(join.lastBy).isPath))
            throw templateError(m_template.fileName, join.line,
                                QStringLiteral("%1 has no last row by that column").arg(join.table));
        earlier.append(joined);
    }
}

FieldKind DataSource::kindOf(const TextPiece &piece) const
{
    if (piece.kind == TextPiece::FieldValue)
        return m_template.fields.at(piece.number).kind;
    const Aggregate &aggregate = m_template.aggregates.at(piece.number);
    const bool isValueOfField = aggregate.function == Aggregate::Minimum || aggregate.function == Aggregate::Maximum;
    return isValueOfField ? m_template.fields.at(aggregate.field).kind : FieldKind::Number;
}

void DataSource::checkFormats()
{
    forEachBand(m_template, [this](const Band &band) {
        for (const BandLine &line : band.lines)
            for (const Cell &cell : line.cells)
                for (const TextPiece &piece : cell.text) {
                    const bool isFilledIn =
                        piece.kind == TextPiece::FieldValue || piece.kind == TextPiece::AggregateValue;
                    if (isFilledIn && !piece.format.suits(kindOf(piece)))
                        throw templateError(m_template.fileName, piece.line,
                                            QStringLiteral("the format does not suit the field"));
                }
    });
    for (const Chart &chart : std::as_const(m_template.charts)) {
        const FieldKind kind = kindOf(chart.value);
        if ((kind != FieldKind::Number && kind != FieldKind::YesNo) || !chart.value.format.suits(kind))
            throw templateError(m_template.fileName, chart.line, QStringLiteral("the chart's value is no number"));
    }
}

void DataSource::checkGroups() const
{
    for (const Group &group : std::as_const(m_template.groups))
        if (group.period != Group::EachValue && m_template.fields.at(group.field).kind != FieldKind::DateTime)
            throw templateError(m_template.fileName, group.line,
                                QStringLiteral("{%1} is no date").arg(m_template.fields.at(group.field).name()));
}

void DataSource::checkAggregates() const
{
    for (const Aggregate &aggregate : std::as_const(m_template.aggregates)) {
        if (aggregate.function != Aggregate::Sum && aggregate.function != Aggregate::Average)
            continue;
        const Field &field = m_template.fields.at(aggregate.field);
        if (field.kind != FieldKind::Number && field.kind != FieldKind::YesNo)
            throw templateError(m_template.fileName, aggregate.line,
                                QStringLiteral("{%1} is no number").arg(field.name()), ResultCode::invalidSummaryField);
    }
}

void DataSource::bindFormulas()
{
    m_selection.bind(m_template.fields);
    const auto bind = [this](Formula &formula) {
        try {
            formula.bind(m_template.fields);
        } catch (const ReportError &error) {
            throw templateError(m_template.fileName, formula.line(), error.detail());
        }
    };
    bind(m_template.where);
    forEachBand(m_template, [&](Band &band) {
        bind(band.when);
        for (BandLine &line : band.lines) {
            bind(line.when);
            for (Cell &cell : line.cells)
                bind(cell.when);
        }
    });
}

QString DataSource::column(int field) const
{
    const Field &named = m_template.fields.at(field);
    return QStringLiteral("[%1].[%2]").arg(named.table, named.isPath ? counterOf(named.table) : named.column);
}

QString DataSource::tables(qsizetype joins, bool withPartner) const
{
    QString from = QStringLiteral("[%1]").arg(m_template.table);
    for (qsizetype i = 0; i < joins; ++i) {
        const Join &join = m_template.joins.at(i);
        QStringList equalFields;
        for (const auto &[left, right] : join.equalFields)
            equalFields.append(QStringLiteral("%1 = %2").arg(column(left), column(right)));
        // Each join but the first takes the ones before it in brackets.
        from = QStringLiteral("%1 %2 JOIN [%3] ON %4")
                   .arg(i == 0 ? from : '(' + from + ')',
                        join.keepsUnmatched && !(withPartner && i == m_last) ? QStringLiteral("LEFT")
                                                                             : QStringLiteral("INNER"),
                        join.table, equalFields.join(QStringLiteral(" AND ")));
    }
    return from;
}

QString DataSource::statement(const QStringList &conditions, bool withPartner) const
{
    QStringList columns;
    for (int number = 0; number < m_template.fields.count(); ++number)
        columns.append(QStringLiteral("%1 AS F%2").arg(column(number)).arg(number));
    if (!m_key.isEmpty())
        columns.append(QStringLiteral("[%1].[%2] AS Place").arg(m_template.table, m_key));
    const QString select =
        "SELECT " + columns.join(", ") + " FROM " + tables(m_template.joins.size(), withPartner) + where(conditions);
    // Records that the template puts in no order come as they were entered, by whatever way they are found.
    return m_key.isEmpty() ? select : select + QStringLiteral(" ORDER BY [%1].[%2]").arg(m_template.table, m_key);
}

GroupedRecords DataSource::read(const Progress &progress, bool each) const
{
    Reading reading;
    if (m_template.table.isEmpty())
        return GroupedRecords(m_template, std::move(reading.values));
    if (m_template.detail.lines.isEmpty() && !each) {
        reading.isFolding = true;
        reading.printed = printedFields();
        for (const Aggregate &aggregate : std::as_const(m_template.aggregates))
            if (aggregate.field >= 0)
                addOnce(reading.folded.fields, aggregate.field);
    }
    double done = 0;
    progress(done);
    RowReader reader(m_database, [&] { progress(done); });
    for (int number = 0; number < m_template.fields.count(); ++number)
        if (const Field &field = m_template.fields.at(number); field.isPath)
            reading.paths.emplace_back(number, folderPaths(reader, field.table, counterOf(field.table)));
    const int key = m_template.fields.find(m_template.table, m_key);
    if (const auto keys = m_key.isEmpty() ? std::nullopt : m_selection.numbersOf(key))
        readListed(reading, *keys, reader, done);
    else
        readAll(reading, reader, done);
    return GroupedRecords(m_template, std::move(reading.values), std::move(reading.folded));
}

std::vector<int> DataSource::printedFields() const
{
    std::vector<int> printed;
    const auto addFormula = [&](const Formula &formula) { addFields(printed, formula.condition()); };
    forEachBand(m_template, [&](const Band &band) {
        addFormula(band.when);
        for (const BandLine &line : band.lines) {
            addFormula(line.when);
            for (const Cell &cell : line.cells) {
                addFormula(cell.when);
                for (const TextPiece &piece : cell.text)
                    if (piece.kind == TextPiece::FieldValue)
                        addOnce(printed, piece.number);
            }
        }
    });
    for (const Group &group : std::as_const(m_template.groups)) {
        addOnce(printed, group.field);
        if (group.sortField >= 0)
            addOnce(printed, group.sortField);
    }
    return printed;
}

size_t DataSource::HashOfValues::operator()(const std::vector<Value> &values) const
{
    size_t hash = 0;
    for (const Value &value : values)
        hash = qHash(value.toText(), hash);
    return hash;
}

void DataSource::readListed(Reading &reading, const std::vector<double> &keys, RowReader &reader, double &done) const
{
    for (size_t first = 0; first < keys.size(); first += keysOfStatement) {
        done = double(first) / double(keys.size());
        QStringList numbers;
        for (size_t i = first; i < std::min(first + keysOfStatement, keys.size()); ++i)
            numbers.append(Format::plainNumber(keys[i]));
        const QStringList conditions{
            QStringLiteral("[%1].[%2] IN (%3)").arg(m_template.table, m_key, numbers.join(',')),
            inSql(m_template.where, m_template.fields)};
        if (m_last >= 0)
            readLast(reading, conditions, reader);
        else
            reader.read(statement(conditions), [&](const std::vector<Value> &record) { addMatching(reading, record); });
    }
}

void DataSource::readAll(Reading &reading, RowReader &reader, double &done) const
{
    const QStringList conditions{inSql(m_template.where, m_template.fields), inSql(m_selection, m_template.fields)};
    if (m_last >= 0)
        return readLast(reading, conditions, reader);
    // The counter tells how much is done, as rows mostly come in its order. Where they come in another, the progress
    // waits instead of going back.
    const auto extent = [this](const QString &what) {
        const QString select = QStringLiteral("SELECT %1 FROM [%2]").arg(what, m_template.table);
        return m_database.openRecordset(select).at(0, 0).toNumber();
    };
    // One at a time, the ends are found without reading the table.
    const double first = m_key.isEmpty() ? 0 : extent(QStringLiteral("Min([%1])").arg(m_key));
    const double last =
        m_key.isEmpty() ? extent(QStringLiteral("Count(*)")) - 1 : extent(QStringLiteral("Max([%1])").arg(m_key));
    double read = 0;
    reader.read(statement(conditions), [&](const std::vector<Value> &record) {
        const double place = m_key.isEmpty() ? ++read : record.back().toNumber();
        done = std::clamp((place - first) / (last - first + 1), done, 1.0);
        addMatching(reading, record);
    });
}

// A tool has many loans: three columns of each tell which is the last, and only that one's record is read.
void DataSource::readLast(Reading &reading, const QStringList &conditions, RowReader &reader) const
{
    std::map<qint64, std::vector<Value>> records; // in the order in which the rows were entered
    const auto keep = [&](const std::vector<Value> &record) { records.emplace(record.back().toInteger(), record); };
    const Join &join = m_template.joins.at(m_last);
    const QString number = QStringLiteral("[%1].[%2]").arg(join.table, counterOf(join.table));
    const QHash<qint64, Partner> partners = lastPartners(conditions, reader);
    QStringList numbers;
    for (auto partner = partners.begin(); partner != partners.end();) {
        numbers.append(QString::number(partner->number));
        if (++partner == partners.end() || size_t(numbers.size()) == keysOfStatement) {
            reader.read(statement(conditions + QStringList(number + " IN (" + numbers.join(',') + ')'), true), keep);
            numbers.clear();
        }
    }
    if (join.keepsUnmatched)
        reader.read(statement(conditions + QStringList(number + " IS NULL")), keep);
    for (const auto &[row, record] : records)
        addMatching(reading, record);
}

QHash<qint64, DataSource::Partner> DataSource::lastPartners(const QStringList &conditions, RowReader &reader) const
{
    const Join &join = m_template.joins.at(m_last);
    qint64 rows = 0;
    reader.read("SELECT Count(*) FROM " + tables(m_last) + where(conditions),
                [&](const std::vector<Value> &count) { rows = count[0].toInteger(); });
    const bool all = rows > rowsToLookUp && isJoinedByKey(join);
    const auto &[left, right] = join.equalFields.first();
    const bool isLeft = m_template.fields.at(left).table.compare(join.table, Qt::CaseInsensitive) == 0;
    const QString row = all ? column(isLeft ? left : right) : QStringLiteral("[%1].[%2]").arg(m_template.table, m_key);
    const QString select = QStringLiteral("SELECT %1, [%2].[%3], %4 FROM ")
                               .arg(row, join.table, counterOf(join.table), column(join.lastBy));
    QHash<qint64, Partner> last;
    const auto keepLast = [&](const std::vector<Value> &found) {
        if (found[0].isNull() || found[1].isNull())
            return;
        const Partner partner{found[1].toInteger(), found[2]};
        const auto known = last.find(found[0].toInteger());
        if (known == last.end())
            last.insert(found[0].toInteger(), partner);
        else if (isLater(partner, *known))
            *known = partner;
    };
    reader.read(all ? select + '[' + join.table + ']' : select + tables(m_last + 1) + where(conditions), keepLast);
    return last;
}

/// Whether a partner holds the number of its row.
bool DataSource::isJoinedByKey(const Join &join) const
{
    const auto &[left, right] = join.equalFields.first();
    const int key = m_template.fields.find(m_template.table, m_key);
    const Field &other = m_template.fields.at(left == key ? right : left);
    const dialect::Table *table = m_database.table(other.table);
    return join.equalFields.size() == 1 && (left == key || right == key)
        && table->columns[table->find(other.column)].kind == dialect::ValueKind::Long;
}

bool DataSource::isLater(const Partner &partner, const Partner &than) const
{
    const FieldKind kind = m_template.fields.at(m_template.joins.at(m_last).lastBy).kind;
    const int order = kind == FieldKind::Text || kind == FieldKind::DateTime
        ? compareText(partner.value.toText(), than.value.toText())
        : int(partner.value.toNumber() > than.value.toNumber()) - int(partner.value.toNumber() < than.value.toNumber());
    return order != 0 ? order > 0 : partner.number > than.number;
}

void DataSource::addMatching(Reading &reading, const std::vector<Value> &record) const
{
    std::vector<Value> withPaths;
    if (!reading.paths.empty())
        withPaths = record;
    for (const auto &[field, paths] : reading.paths)
        if (!record[field].isNull())
            withPaths[field] = paths.value(record[field].toInteger());
    const std::vector<Value> &whole = reading.paths.empty() ? record : withPaths;
    if (!m_template.where.matches(whole.data()) || !m_selection.matches(whole.data()))
        return;
    if (reading.isFolding)
        fold(reading, whole);
    else
        addRow(reading, whole);
}

void DataSource::addRow(Reading &reading, const std::vector<Value> &record) const
{
    std::vector<Value> &values = reading.values;
    const size_t width = size_t(m_template.fields.count());
    if (values.size() == GroupedRecords::maxCount * width)
        throw ReportError(ResultCode::outOfMemory,
                          QStringLiteral("more than %1 records").arg(GroupedRecords::maxCount));
    values.insert(values.end(), record.begin(), record.begin() + qsizetype(width));
}

void DataSource::fold(Reading &reading, const std::vector<Value> &record) const
{
    std::vector<Value> printed;
    for (const int field : reading.printed)
        printed.push_back(record[field]);
    auto &[counts, fields, tallies] = reading.folded;
    const auto [known, isNew] = reading.rows.try_emplace(std::move(printed), counts.size());
    if (isNew) {
        addRow(reading, record);
        counts.push_back(0);
        tallies.resize(tallies.size() + fields.size());
    }
    const size_t row = known->second;
    ++counts[row];
    for (size_t i = 0; i < fields.size(); ++i)
        tallies[row * fields.size() + i].add(record[fields[i]], m_template.fields.at(fields[i]).kind);
}
