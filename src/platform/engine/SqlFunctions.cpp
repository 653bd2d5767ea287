#include "platform/engine/SqlFunctions.h"

#include "platform/engine/LikePattern.h"
#include "platform/engine/StoredValue.h"
#include "platform/engine/dialect/Translation.h"
#include "platform/text/Format.h"
#include "platform/text/TextCompare.h"

#include <sqlite3.h>

namespace {

using dialect::ValueKind;

Value valueOf(sqlite3_value *argument)
{
    switch (sqlite3_value_type(argument)) {
    case SQLITE_INTEGER:
        return qint64(sqlite3_value_int64(argument));
    case SQLITE_FLOAT:
        return sqlite3_value_double(argument);
    case SQLITE_NULL:
        return {};
    default: {
        const auto *text = reinterpret_cast<const char *>(sqlite3_value_text(argument));
        return QString::fromUtf8(text, sqlite3_value_bytes(argument));
    }
    }
}

void give(sqlite3_context *context, const Value &value)
{
    if (value.isNull()) {
        sqlite3_result_null(context);
    } else if (value.isText()) {
        const QByteArray text = value.toText().toUtf8();
        sqlite3_result_text64(context, text.constData(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    } else if (value.isInteger()) {
        sqlite3_result_int64(context, value.toInteger());
    } else {
        sqlite3_result_double(context, value.toNumber());
    }
}

/// A function of the engine below whose result is `compute(arguments, count)`. No exception may pass through its
/// frames.
template<Value (*compute)(sqlite3_value **, int)>
void function(sqlite3_context *context, int count, sqlite3_value **arguments)
{
    try {
        give(context, compute(arguments, count));
    } catch (const EngineError &error) {
        auto &refused = *static_cast<std::optional<EngineError> *>(sqlite3_user_data(context));
        refused.emplace(error);
        sqlite3_result_error(context, error.what(), -1);
    } catch (const std::bad_alloc &) {
        sqlite3_result_error_nomem(context);
    }
}

Value inCapitals(sqlite3_value **arguments, int)
{
    const Value value = valueOf(arguments[0]);
    return value.isNull() ? value : upperCase(value.toText());
}

Value concatenate(sqlite3_value **arguments, int count)
{
    QString text;
    bool any = false;
    for (int i = 0; i < count; ++i) {
        const Value value = valueOf(arguments[i]);
        any = any || !value.isNull();
        text += value.toText();
    }
    return any ? Value(text) : Value();
}

Value shortDate(sqlite3_value **arguments, int) { return Format::shortDate(valueOf(arguments[0]).toText()); }

Value currency(sqlite3_value **arguments, int)
{
    const Value value = storedValue(valueOf(arguments[0]), ValueKind::Number);
    return value.isNull() ? QString(QLatin1String("")) : Format::currency(value.toNumber());
}

Value stored(sqlite3_value **arguments, int)
{
    return storedValue(valueOf(arguments[0]), ValueKind(sqlite3_value_int(arguments[1])));
}

void like(sqlite3_context *context, int, sqlite3_value **arguments)
{
    if (sqlite3_value_type(arguments[0]) == SQLITE_NULL || sqlite3_value_type(arguments[1]) == SQLITE_NULL)
        return;
    // A pattern that stays the same for all rows is taken apart once.
    auto *pattern = static_cast<LikePattern *>(sqlite3_get_auxdata(context, 1));
    std::unique_ptr<LikePattern> fresh;
    if (!pattern) {
        fresh = std::make_unique<LikePattern>(valueOf(arguments[1]).toText());
        pattern = fresh.get();
    }
    sqlite3_result_int(context, pattern->matches(valueOf(arguments[0]).toText()));
    if (fresh)
        sqlite3_set_auxdata(context, 1, fresh.release(), [](void *kept) { delete static_cast<LikePattern *>(kept); });
}

int collate(void *, int leftSize, const void *left, int rightSize, const void *right)
{
    return compareText(std::string_view(static_cast<const char *>(left), leftSize),
                       std::string_view(static_cast<const char *>(right), rightSize));
}

}

void registerSqlFunctions(sqlite3 *connection, std::optional<EngineError> &refused)
{
    sqlite3_create_collation_v2(connection, dialect::names::collation, SQLITE_UTF8, nullptr, collate, nullptr);
    const auto add = [&](const char *name, int arguments, void (*body)(sqlite3_context *, int, sqlite3_value **)) {
        constexpr int flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_DIRECTONLY;
        sqlite3_create_function_v2(connection, name, arguments, flags, &refused, body, nullptr, nullptr, nullptr);
    };
    add(dialect::names::upperCase, 1, function<inCapitals>);
    add(dialect::names::concatenate, -1, function<concatenate>);
    add(dialect::names::shortDate, 1, function<shortDate>);
    add(dialect::names::currency, 1, function<currency>);
    add(dialect::names::stored, 2, function<stored>);
    add(dialect::names::like, 2, like);
}
