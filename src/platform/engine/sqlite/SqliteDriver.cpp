#include "platform/engine/sqlite/SqliteDriver.h"

#include "platform/engine/dialect/SqlText.h"
#include "platform/engine/sqlite/SqlFunctions.h"
#include "platform/engine/sqlite/SqliteLanguage.h"
#include "platform/system/ProgramFolder.h"

#include <QFileInfo>

#include <sqlite3.h>

#include <algorithm>
#include <utility>

namespace {

constexpr int busyMilliseconds = 2000;
// Of the engine below: a millisecond or less in memory, some tens where rows are deleted all over a large file.
constexpr int operationsBetweenPulses = 15'000;

/// What the engine below reports, in the suite's numbers.
struct Refusal {
    int code;
    EngineError::Number number;
};

constexpr Refusal refusals[] = {
    {SQLITE_CONSTRAINT_PRIMARYKEY, EngineError::duplicateKey},
    {SQLITE_CONSTRAINT_UNIQUE, EngineError::duplicateKey},
    {SQLITE_CONSTRAINT_ROWID, EngineError::duplicateKey},
    {SQLITE_NOTADB, EngineError::notADatabase},
    {SQLITE_CORRUPT, EngineError::damagedFile},
    {SQLITE_CANTOPEN, EngineError::cannotOpenFile},
    {SQLITE_READONLY, EngineError::readOnly},
    {SQLITE_PERM, EngineError::readOnly},
    {SQLITE_FULL, EngineError::diskFull},
    {SQLITE_IOERR, EngineError::diskError},
    {SQLITE_TOOBIG, EngineError::tooMuchData},
};

// The limits of the engine below have no codes of their own.
bool isTooComplex(const QString &text)
{
    constexpr QStringView beginnings[] = {u"Expression tree is too large", u"parser stack overflow", u"too many "};
    return std::ranges::any_of(beginnings, [&](QStringView beginning) { return text.startsWith(beginning); });
}

using dialect::ValueKind;

ValueKind kindOf(const QString &declared)
{
    const QString type = declared.toUpper();
    if (type == u"YESNO" || type == u"BIT" || type == u"BOOLEAN")
        return ValueKind::YesNo;
    if (type.startsWith(u"DATE") || type == u"TIMESTAMP")
        return ValueKind::Date;
    if (type == u"CURRENCY" || type == u"MONEY")
        return ValueKind::Currency;
    if (type.contains(u"TEXT") || type.contains(u"CHAR") || type == u"MEMO")
        return ValueKind::Text;
    if (type.contains(u"INT") || type == u"LONG" || type == u"COUNTER")
        return ValueKind::Long;
    return type == u"BLOB" ? ValueKind::Unknown : ValueKind::Number;
}

void bind(sqlite3_stmt *statement, int parameter, const Value &value)
{
    if (value.isNull()) {
        sqlite3_bind_null(statement, parameter);
    } else if (value.isInteger()) {
        sqlite3_bind_int64(statement, parameter, value.toInteger());
    } else if (value.isText()) {
        const QByteArray text = value.toText().toUtf8();
        sqlite3_bind_text(statement, parameter, text.constData(), int(text.size()), SQLITE_TRANSIENT);
    } else {
        sqlite3_bind_double(statement, parameter, value.toNumber());
    }
}

class SqliteStatement : public Driver::Statement
{
public:
    explicit SqliteStatement(sqlite3_stmt *handle) : handle(handle) { }
    ~SqliteStatement() override { sqlite3_finalize(handle); }

    sqlite3_stmt *const handle;
};

sqlite3_stmt *handleOf(Driver::Statement &statement) { return static_cast<SqliteStatement &>(statement).handle; }

/// Adds the row that `statement` stands on.
void addRow(RowStore &rows, sqlite3_stmt *statement)
{
    rows.beginRow();
    for (int column = 0; column < rows.columnCount(); ++column) {
        // Taken once as a value, the column is looked up once and not for each question. The engine below allows the
        // questions as long as one thread alone uses the connection.
        sqlite3_value *const value = sqlite3_column_value(statement, column);
        switch (sqlite3_value_type(value)) {
        case SQLITE_INTEGER:
            rows.addInteger(sqlite3_value_int64(value));
            break;
        case SQLITE_FLOAT:
            rows.addFraction(sqlite3_value_double(value));
            break;
        case SQLITE_NULL:
            rows.addNull();
            break;
        // Elsewhere bytes are a text that another program wrote.
        case SQLITE_BLOB:
            if (qstricmp(sqlite3_column_decltype(statement, column), "BLOB") == 0) {
                const auto *bytes = static_cast<const char *>(sqlite3_value_blob(value));
                const QByteArray text = "\\x" + QByteArray(bytes, sqlite3_value_bytes(value)).toHex();
                rows.addText(text.constData(), text.size());
                break;
            }
            [[fallthrough]];
        default: {
            const void *text = sqlite3_value_blob(value);
            rows.addText(text, text ? sqlite3_value_bytes(value) : 0);
        }
        }
    }
}

using dialect::quotedName;
using dialect::quotedNames;

QString columnDefinition(const TableDefinition::Column &column)
{
    // Kinds: Unknown, Null, Text, Long, Number, Currency, YesNo, Date
    static constexpr const char *types[] = {"BLOB", "TEXT", "TEXT", "LONG", "DOUBLE", "CURRENCY", "YESNO", "DATETIME"};
    static constexpr const char *rules[] = {"", " NOT NULL", " NOT NULL DEFAULT 0", " NOT NULL PRIMARY KEY"};
    if (column.rule == TableDefinition::Counter)
        return quotedName(column.name) + QLatin1String(" INTEGER PRIMARY KEY AUTOINCREMENT");
    return quotedName(column.name) + u' ' + QLatin1String(types[size_t(column.kind)])
        + QLatin1String(rules[column.rule]);
}

/// The name of the row's number that no column of `table` bears, and so hides.
QString rowNumberOf(const dialect::Table &table)
{
    const QStringList names{QStringLiteral("rowid"), QStringLiteral("oid"), QStringLiteral("_rowid_")};
    const auto free = std::ranges::find_if(names, [&](const QString &name) { return table.find(name) < 0; });
    return free == names.end() ? QString() : *free;
}

/// Brings a statement back to its beginning, whatever happened.
class Reset
{
public:
    explicit Reset(sqlite3_stmt *statement) : m_statement(statement) { }
    ~Reset()
    {
        sqlite3_reset(m_statement);
        sqlite3_clear_bindings(m_statement);
    }
    Q_DISABLE_COPY_MOVE(Reset)

private:
    sqlite3_stmt *m_statement;
};

}

SqliteDriver::SqliteDriver(const QString &path, Mode mode) : m_path(path)
{
    const QString file = QFileInfo(ProgramFolder::toNative(path)).absoluteFilePath();
    const bool create = mode == Mode::CreateNew;
    try {
        open(file, create ? SQLITE_OPEN_CREATE : 0);
        execute(QStringLiteral("PRAGMA foreign_keys = ON; PRAGMA synchronous = FULL; PRAGMA cache_size = -16384"));
        // An empty file is none of the engine's: the first page is written at once.
        if (create)
            execute(QStringLiteral("PRAGMA user_version = 1"));
        // What is wrong with a file shows when it is first read.
        execute(QStringLiteral("SELECT count(*) FROM sqlite_schema"));
        m_opened = true;
    } catch (...) {
        sqlite3_close_v2(m_connection);
        throw;
    }
}

SqliteDriver::SqliteDriver() { open(QStringLiteral(":memory:"), 0); }

void SqliteDriver::open(const QString &file, int flags)
{
    // There is one thread; the locks of the engine below would only cost time.
    flags |= SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX;
    if (sqlite3_open_v2(file.toUtf8().constData(), &m_connection, flags, nullptr) != SQLITE_OK)
        fail();
    sqlite3_extended_result_codes(m_connection, 1);
    sqlite3_busy_timeout(m_connection, busyMilliseconds);
    // What a statement means must neither depend on a misread quote nor run what a foreign file brings along.
    sqlite3_db_config(m_connection, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(m_connection, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    sqlite3_db_config(m_connection, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    registerSqlFunctions(m_connection, m_refused);
}

SqliteDriver::~SqliteDriver()
{
    m_readCursor.reset();
    sqlite3_close_v2(m_connection);
}

const dialect::Language &SqliteDriver::language() const { return sqliteLanguage; }

Driver::Prepared SqliteDriver::prepare(const QString &sql)
{
    const QByteArray text = sql.toUtf8();
    sqlite3_stmt *statement = nullptr;
    ++counters.prepared;
    if (sqlite3_prepare_v3(m_connection, text.constData(), int(text.size()) + 1, SQLITE_PREPARE_PERSISTENT, &statement,
                           nullptr)
        != SQLITE_OK)
        fail();
    return std::make_shared<SqliteStatement>(statement);
}

template<typename Visit>
void SqliteDriver::step(sqlite3_stmt *statement, const std::vector<Value> &values,
                        const dialect::Translation *translation, Visit visit)
{
    const Reset reset(statement);
    for (size_t i = 0; i < values.size(); ++i)
        bind(statement, int(i) + 1, values[i]);
    ++counters.run;
    int result = sqlite3_step(statement);
    for (; result == SQLITE_ROW; result = sqlite3_step(statement)) {
        ++counters.rowsFetched;
        visit();
    }
    counters.fullScanSteps += sqlite3_stmt_status(statement, SQLITE_STMTSTATUS_FULLSCAN_STEP, 1);
    if (result != SQLITE_DONE)
        fail(translation, values);
}

qint64 SqliteDriver::run(Statement &statement, const std::vector<Value> &values, RowStore *rows,
                         const dialect::Translation *translation)
{
    sqlite3_stmt *const handle = handleOf(statement);
    step(handle, values, translation, [&] {
        if (rows)
            addRow(*rows, handle);
    });
    return sqlite3_stmt_readonly(handle) ? 0 : sqlite3_changes64(m_connection);
}

void SqliteDriver::read(Statement &statement, const std::vector<Value> &values, int columnCount,
                        const std::function<void(const RowStore &)> &visit, const dialect::Translation *translation)
{
    sqlite3_stmt *const handle = handleOf(statement);
    RowStore row(columnCount);
    step(handle, values, translation, [&] {
        row.clear();
        addRow(row, handle);
        visit(row);
    });
}

void SqliteDriver::setPulse(std::function<void()> pulse)
{
    m_pulse = std::move(pulse);
    const auto beat = [](void *self) {
        auto *connection = static_cast<SqliteDriver *>(self);
        try {
            connection->m_pulse();
            return 0;
        } catch (...) {
            // No exception may pass through the frames of the engine below.
            connection->m_ended = std::current_exception();
            return 1;
        }
    };
    sqlite3_progress_handler(m_connection, m_pulse ? operationsBetweenPulses : 0, beat, this);
}

void SqliteDriver::setPatience(int milliseconds) { sqlite3_busy_timeout(m_connection, milliseconds); }

void SqliteDriver::beginReading()
{
    const dialect::Translation reading; // a SELECT
    // The second row is there for a file without tables.
    Prepared cursor = prepare(QStringLiteral("SELECT 1 FROM sqlite_schema UNION ALL SELECT 2"));
    if (sqlite3_step(handleOf(*cursor)) != SQLITE_ROW)
        fail(&reading);
    m_readCursor = std::move(cursor);
}

void SqliteDriver::execute(const QString &sql)
{
    ++counters.run;
    if (sqlite3_exec(m_connection, sql.toUtf8().constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
        fail();
}

RowStore SqliteDriver::read(const QString &sql)
{
    const Prepared statement = prepare(sql);
    RowStore rows(sqlite3_column_count(handleOf(*statement)));
    run(*statement, {}, &rows);
    return rows;
}

void SqliteDriver::copyTo(const QString &file)
{
    SqliteDriver copy(file, Mode::CreateNew);
    sqlite3_backup *backup = sqlite3_backup_init(copy.m_connection, "main", m_connection, "main");
    if (!backup)
        copy.fail();
    const int result = sqlite3_backup_step(backup, -1);
    sqlite3_backup_finish(backup);
    if (result == SQLITE_BUSY || result == SQLITE_LOCKED)
        failLocked(nullptr);
    if (result != SQLITE_DONE)
        copy.fail();
}

Driver::Native SqliteDriver::prepareNative(const QString &sql)
{
    Native native{prepare(sql), {}};
    sqlite3_stmt *const handle = handleOf(*native.statement);
    for (int column = 0; column < sqlite3_column_count(handle); ++column)
        native.columns.append(QString::fromUtf8(sqlite3_column_name(handle, column)));
    return native;
}

void SqliteDriver::createTable(const TableDefinition &table)
{
    QStringList parts;
    for (const TableDefinition::Column &column : table.columns)
        parts.append(columnDefinition(column));
    for (const dialect::ForeignKey &key : table.foreignKeys)
        parts.append(QStringLiteral("FOREIGN KEY (%1) REFERENCES %2 (%3)")
                         .arg(quotedName(key.column), quotedName(key.parentTable), quotedName(key.parentColumn)));
    const QString name = quotedName(table.name);
    execute(QStringLiteral("CREATE TABLE %1 (%2)").arg(name, parts.join(QLatin1String(", "))));
    for (const QStringList &columns : table.indexes)
        execute(QStringLiteral("CREATE INDEX %1 ON %2 (%3)")
                    .arg(quotedName(table.name + u'_' + columns.join(u'_')), name, quotedNames(columns)));
    if (table.firstNumber != 1)
        execute(QStringLiteral("INSERT INTO sqlite_sequence VALUES (%1, %2)")
                    .arg(dialect::quotedText(table.name))
                    .arg(table.firstNumber - 1));
}

void SqliteDriver::append(const dialect::Table &table, const RowStore &rows)
{
    QStringList names, parameters;
    for (const dialect::Column &column : table.columns) {
        names.append(quotedName(column.name));
        const QString parameter = u'?' + QString::number(names.size());
        parameters.append(column.kind == ValueKind::Unknown ? SqliteNames::bytes + (u'(' + parameter + u')')
                                                            : parameter);
    }
    const Prepared insert = prepare(QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                                        .arg(quotedName(table.name), names.join(u','), parameters.join(u',')));
    dialect::Translation translation;
    translation.kind = dialect::Statement::Insert;
    translation.table = table.name;
    std::vector<Value> values(table.columns.size());
    for (int row = 0; row < rows.rowCount(); ++row) {
        for (size_t column = 0; column < values.size(); ++column)
            values[column] = rows.at(row, int(column));
        run(*insert, values, nullptr, &translation);
    }
}

qint64 SqliteDriver::nextNumber(const dialect::Table &table)
{
    // Where no table remembers the numbers it gave, the engine goes on behind the highest.
    if (!read(QStringLiteral("SELECT 1 FROM sqlite_schema WHERE name = 'sqlite_sequence'")).rowCount())
        return read(QStringLiteral("SELECT coalesce(max(rowid), 0) + 1 FROM ") + quotedName(table.name))
            .at(0, 0)
            .toInteger();
    const RowStore last =
        read(QStringLiteral("SELECT seq FROM sqlite_sequence WHERE name = %1").arg(dialect::quotedText(table.name)));
    return last.rowCount() > 0 ? last.at(0, 0).toInteger() + 1 : 1;
}

void SqliteDriver::setNextNumber(const dialect::Table &table, qint64 number)
{
    const QString name = dialect::quotedText(table.name);
    execute(QStringLiteral("DELETE FROM sqlite_sequence WHERE name = %1; INSERT INTO sqlite_sequence VALUES (%1, %2)")
                .arg(name)
                .arg(number - 1));
}

QStringList SqliteDriver::damage()
{
    QStringList findings;
    const RowStore rows = read(QStringLiteral("PRAGMA integrity_check"));
    for (int row = 0; row < rows.rowCount(); ++row)
        findings.append(rows.at(row, 0).toText());
    findings.removeAll(QStringLiteral("ok"));
    return findings;
}

dialect::Schema SqliteDriver::schema()
{
    dialect::Schema schema;
    const RowStore columns = read(QStringLiteral(
        "SELECT t.name, t.wr, c.name, c.type, c.pk, c.pk = 1 OR EXISTS (SELECT 1 FROM pragma_index_list(t.name) AS i, "
        "pragma_index_info(i.name) AS k WHERE k.seqno = 0 AND k.name = c.name) "
        "FROM pragma_table_list AS t, pragma_table_info(t.name) AS c "
        "WHERE t.schema = 'main' AND t.type = 'table' AND t.name NOT LIKE 'sqlite\\_%' ESCAPE '\\' ORDER BY t.name, "
        "c.cid"));
    for (int i = 0; i < columns.rowCount(); ++i) {
        const QString name = columns.at(i, 0).toText();
        if (schema.tables.empty() || schema.tables.back().name != name)
            schema.tables.push_back({name, {}, {}, columns.at(i, 1).toBool() ? QString() : QStringLiteral("rowid")});
        const QString column = columns.at(i, 2).toText(), type = columns.at(i, 3).toText();
        if (columns.at(i, 4).toInteger() == 1 && dialect::sameName(type, u"INTEGER"))
            schema.tables.back().counter = column;
        schema.tables.back().columns.push_back({column, kindOf(type), columns.at(i, 5).toBool()});
    }
    for (dialect::Table &table : schema.tables)
        if (!table.rowNumber.isEmpty())
            table.rowNumber = rowNumberOf(table);
    const RowStore keys =
        read(QStringLiteral("SELECT t.name, k.\"from\", k.\"table\", k.\"to\" FROM pragma_table_list AS t, "
                            "pragma_foreign_key_list(t.name) AS k WHERE t.schema = 'main'"));
    for (int i = 0; i < keys.rowCount(); ++i)
        if (dialect::Table *table = schema.find(keys.at(i, 0).toText()))
            table->foreignKeys.push_back({keys.at(i, 1).toText(), keys.at(i, 2).toText(), keys.at(i, 3).toText()});
    return schema;
}

bool SqliteDriver::hasPartner(const dialect::Reference &reference, const std::vector<Value> &values)
{
    const QString column = reference.key.parentColumn.isEmpty() ? QStringLiteral("rowid") : reference.key.parentColumn;
    try {
        const Prepared statement =
            prepare(QStringLiteral("SELECT 1 FROM %1 WHERE %2 = %3")
                        .arg(quotedName(reference.key.parentTable), quotedName(column), reference.value));
        RowStore found(1);
        run(*statement, values, &found);
        return found.rowCount() > 0;
    } catch (const EngineError &) {
        // A value that was computed from the row cannot be asked for by itself.
        return false;
    }
}

void SqliteDriver::failRelation(const dialect::Translation *translation, const std::vector<Value> &values)
{
    if (translation && !translation->references.empty()) {
        const auto &references = translation->references;
        const auto lacking = std::ranges::find_if(
            references, [&](const dialect::Reference &reference) { return !hasPartner(reference, values); });
        const dialect::Reference &named = lacking == references.end() ? references.front() : *lacking;
        throw EngineError(
            EngineError::relatedRecordRequired,
            QStringLiteral("You cannot add or change a record because a related record is required in table '%1'.")
                .arg(named.key.parentTable));
    }
    QString child;
    for (const dialect::Table &table : schema().tables)
        for (const dialect::ForeignKey &key : table.foreignKeys)
            if (!translation || dialect::sameName(key.parentTable, translation->table))
                child = table.name;
    throw EngineError(
        EngineError::relatedRecords,
        QStringLiteral("The record cannot be deleted or changed because table '%1' includes related records.")
            .arg(child));
}

void SqliteDriver::fail(const dialect::Translation *translation, const std::vector<Value> &values)
{
    if (m_ended)
        std::rethrow_exception(std::exchange(m_ended, nullptr));
    if (m_refused)
        throw *std::exchange(m_refused, std::nullopt);
    const int code = sqlite3_extended_errcode(m_connection);
    const QString text = QString::fromUtf8(sqlite3_errmsg(m_connection));
    if (code == SQLITE_CONSTRAINT_FOREIGNKEY)
        failRelation(translation, values);
    if (code == SQLITE_CONSTRAINT_NOTNULL)
        throw EngineError(EngineError::valueRequired,
                          QStringLiteral("The field '%1' cannot contain a Null value because the Required property for "
                                         "this field is set to True. Enter a value in this field.")
                              .arg(text.sliced(text.lastIndexOf(u' ') + 1)));
    if (code == SQLITE_NOMEM)
        throw std::bad_alloc();
    const int primary = code & 0xff;
    if (primary == SQLITE_BUSY || primary == SQLITE_LOCKED)
        failLocked(translation);
    if (primary == SQLITE_ERROR && isTooComplex(text))
        throw EngineError::of(EngineError::tooComplex);
    for (const Refusal &refusal : refusals)
        if (refusal.code == code || refusal.code == primary)
            throw EngineError::of(refusal.number, m_path);
    throw EngineError(EngineError::internalError, QStringLiteral("Reserved error (%1); %2.").arg(code).arg(text));
}

void SqliteDriver::failLocked(const dialect::Translation *translation) const
{
    const bool reading = translation && translation->kind == dialect::Statement::SelectRows;
    const QString what = !m_opened ? QStringLiteral("open '%1'").arg(m_path)
        : reading                  ? QStringLiteral("read")
                                   : QStringLiteral("update");
    throw EngineError(EngineError::lockedFile,
                      QStringLiteral("Could not %1; currently locked by another user.").arg(what));
}
