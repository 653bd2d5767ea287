#include "platform/engine/sqlite/SqlFunctions.h"

#include "platform/engine/driver/StoredValue.h"
#include "platform/engine/sqlite/LikePattern.h"
#include "platform/engine/sqlite/SqliteLanguage.h"
#include "platform/text/Format.h"
#include "platform/text/Numbers.h"
#include "platform/text/TextCompare.h"

#include <sqlite3.h>

#include <charconv>

namespace {

using dialect::ValueKind;

/// The text that the user reads for `argument`, in UTF-8. It lives no longer than the argument.
QByteArray textOf(sqlite3_value *argument)
{
    if (sqlite3_value_type(argument) == SQLITE_FLOAT)
        return Format::plainNumber(sqlite3_value_double(argument)).toUtf8();
    const auto *text = reinterpret_cast<const char *>(sqlite3_value_text(argument));
    return QByteArray::fromRawData(text, sqlite3_value_bytes(argument));
}

std::string_view view(const QByteArray &text) { return {text.constData(), size_t(text.size())}; }

bool isNull(sqlite3_value *argument) { return sqlite3_value_type(argument) == SQLITE_NULL; }

Value valueOf(sqlite3_value *argument)
{
    switch (sqlite3_value_type(argument)) {
    case SQLITE_INTEGER:
        return qint64(sqlite3_value_int64(argument));
    case SQLITE_FLOAT:
        return sqlite3_value_double(argument);
    case SQLITE_NULL:
        return {};
    default:
        return QString::fromUtf8(textOf(argument));
    }
}

void giveText(sqlite3_context *context, const QByteArray &text)
{
    sqlite3_result_text64(context, text.constData(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

void giveValue(sqlite3_context *context, const Value &value)
{
    if (value.isNull())
        sqlite3_result_null(context);
    else if (value.isText())
        giveText(context, value.toText().toUtf8());
    else if (value.isInteger())
        sqlite3_result_int64(context, value.toInteger());
    else
        sqlite3_result_double(context, value.toNumber());
}

// ---- the functions; one that gives nothing gives null

void inCapitals(sqlite3_context *context, int, sqlite3_value **arguments)
{
    if (isNull(arguments[0]))
        return;
    const QByteArray text = textOf(arguments[0]);
    giveText(context, isAscii(view(text)) ? text.toUpper() : upperCase(QString::fromUtf8(text)).toUtf8());
}

void bytes(sqlite3_context *context, int, sqlite3_value **arguments)
{
    if (isNull(arguments[0]))
        return;
    const QByteArray bytes = QByteArray::fromHex(textOf(arguments[0]).mid(2));
    sqlite3_result_blob(context, bytes.constData(), int(bytes.size()), SQLITE_TRANSIENT);
}

void concatenate(sqlite3_context *context, int count, sqlite3_value **arguments)
{
    QByteArray text;
    bool any = false;
    for (int i = 0; i < count; ++i) {
        if (isNull(arguments[i]))
            continue;
        text += textOf(arguments[i]);
        any = true;
    }
    if (any)
        giveText(context, text);
}

void number(sqlite3_context *context, int, sqlite3_value **arguments)
{
    // Joins ask this of each row, and nearly all texts are a few digits.
    constexpr int exactDigits = 15;
    if (sqlite3_value_type(arguments[0]) == SQLITE_TEXT && sqlite3_value_bytes(arguments[0]) <= exactDigits) {
        const auto *const begin = static_cast<const char *>(sqlite3_value_blob(arguments[0]));
        const auto *const end = begin + sqlite3_value_bytes(arguments[0]);
        qint64 digits = 0;
        if (const auto read = std::from_chars(begin, end, digits); read.ec == std::errc() && read.ptr == end)
            return sqlite3_result_int64(context, digits);
    }
    const Value value = valueOf(arguments[0]);
    if (!value.isText())
        giveValue(context, value);
    else if (const std::optional<double> number = numberIn(value.toText()))
        sqlite3_result_double(context, *number);
}

void shortDate(sqlite3_context *context, int, sqlite3_value **arguments)
{
    giveText(context, Format::shortDate(QLatin1String(textOf(arguments[0]))).toLatin1());
}

void currency(sqlite3_context *context, int, sqlite3_value **arguments)
{
    const Value amount = storedValue(valueOf(arguments[0]), ValueKind::Number);
    giveText(context, amount.isNull() ? QByteArray("") : Format::currency(amount.toNumber()).toLatin1());
}

void stored(sqlite3_context *context, int, sqlite3_value **arguments)
{
    giveValue(context, storedValue(valueOf(arguments[0]), ValueKind(sqlite3_value_int(arguments[1]))));
}

void like(sqlite3_context *context, int, sqlite3_value **arguments)
{
    if (isNull(arguments[0]) || isNull(arguments[1]))
        return;
    // A pattern that stays the same for all rows is taken apart once.
    auto *pattern = static_cast<LikePattern *>(sqlite3_get_auxdata(context, 1));
    std::unique_ptr<LikePattern> fresh;
    if (!pattern) {
        fresh = std::make_unique<LikePattern>(QString::fromUtf8(textOf(arguments[1])));
        pattern = fresh.get();
    }
    sqlite3_result_int(context, pattern->matches(view(textOf(arguments[0]))));
    if (fresh)
        sqlite3_set_auxdata(context, 1, fresh.release(), [](void *kept) { delete static_cast<LikePattern *>(kept); });
}

/// Calls `function` for the engine below, through whose frames no exception may pass.
template<void (*function)(sqlite3_context *, int, sqlite3_value **)>
void guarded(sqlite3_context *context, int count, sqlite3_value **arguments)
{
    try {
        function(context, count, arguments);
    } catch (const EngineError &error) {
        static_cast<std::optional<EngineError> *>(sqlite3_user_data(context))->emplace(error);
        sqlite3_result_error(context, error.what(), -1);
    } catch (const std::bad_alloc &) {
        sqlite3_result_error_nomem(context);
    }
}

int collate(void *, int leftSize, const void *left, int rightSize, const void *right)
{
    return compareText(std::string_view(static_cast<const char *>(left), leftSize),
                       std::string_view(static_cast<const char *>(right), rightSize));
}

}

void registerSqlFunctions(sqlite3 *connection, std::optional<EngineError> &refused)
{
    sqlite3_create_collation_v2(connection, SqliteNames::collation, SQLITE_UTF8, nullptr, collate, nullptr);
    const auto add = [&](const char *name, int arguments, void (*body)(sqlite3_context *, int, sqlite3_value **)) {
        constexpr int flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_DIRECTONLY;
        sqlite3_create_function_v2(connection, name, arguments, flags, &refused, body, nullptr, nullptr, nullptr);
    };
    add(SqliteNames::upperCase, 1, guarded<inCapitals>);
    add(SqliteNames::concatenate, -1, guarded<concatenate>);
    add(SqliteNames::number, 1, guarded<number>);
    add(SqliteNames::shortDate, 1, guarded<shortDate>);
    add(SqliteNames::currency, 1, guarded<currency>);
    add(SqliteNames::stored, 2, guarded<stored>);
    add(SqliteNames::bytes, 1, guarded<bytes>);
    add(SqliteNames::like, 2, guarded<like>);
}
