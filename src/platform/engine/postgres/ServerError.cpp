#include "platform/engine/postgres/ServerError.h"

#include <libpq-fe.h>

#include <algorithm>

namespace {

struct Refusal {
    const char *code; ///< one of two characters stands for its class
    EngineError::Number number;
};

constexpr Refusal refusals[] = {
    {"22P02", EngineError::typeMismatch}, {"22007", EngineError::typeMismatch}, {"22008", EngineError::typeMismatch},
    {"22021", EngineError::typeMismatch}, {"22001", EngineError::tooMuchData},  {"25006", EngineError::readOnly},
    {"42501", EngineError::noPermission}, {"53100", EngineError::diskFull},     {"53300", EngineError::tooManyUsers},
    {"54", EngineError::tooComplex},      {"2201B", EngineError::tooComplex},   {"58", EngineError::diskError},
    {"23505", EngineError::duplicateKey},
};

constexpr const char *locks[] = {"55P03", "40", "57014"};

QString detail(const PGresult *result, int field) { return QString::fromUtf8(PQresultErrorField(result, field)); }

EngineError relationBroken(const ServerError &error, const dialect::Translation *translation, const QString &parent)
{
    // Either the changed row names no row, or others name it.
    const bool namesNone = translation && translation->kind != dialect::Statement::Delete
        && dialect::sameName(translation->table, error.table);
    if (namesNone)
        return {EngineError::relatedRecordRequired,
                QStringLiteral("You cannot add or change a record because a related record is required in table '%1'.")
                    .arg(parent)};
    return {EngineError::relatedRecords,
            QStringLiteral("The record cannot be deleted or changed because table '%1' includes related records.")
                .arg(error.table)};
}

}

ServerError ServerError::of(const PGresult *result)
{
    return {PQresultErrorField(result, PG_DIAG_SQLSTATE), detail(result, PG_DIAG_MESSAGE_PRIMARY),
            detail(result, PG_DIAG_TABLE_NAME), detail(result, PG_DIAG_COLUMN_NAME),
            detail(result, PG_DIAG_CONSTRAINT_NAME)};
}

EngineError ServerError::inEnginesWords(const dialect::Translation *translation, const QString &parent) const
{
    if (is("23503"))
        return relationBroken(*this, translation, parent);
    if (is("23502"))
        return {EngineError::valueRequired,
                QStringLiteral("The field '%1.%2' cannot contain a Null value because the Required property for this "
                               "field is set to True. Enter a value in this field.")
                    .arg(table, column)};
    if (is("22003") || is("23514"))
        return {EngineError::numericOverflow, QStringLiteral("Numeric field overflow.")};
    if (is("42P01"))
        return {EngineError::unknownTable,
                QStringLiteral("The database engine cannot find the input table or query. (%1)").arg(text)};
    const bool reading = translation && translation->kind == dialect::Statement::SelectRows;
    if (std::ranges::any_of(locks, [this](const char *code) { return is(code); }))
        return {EngineError::lockedFile,
                QStringLiteral("Could not %1; currently locked by another user.")
                    .arg(QLatin1String(reading ? "read" : "update"))};
    const auto refusal = std::ranges::find_if(refusals, [this](const Refusal &known) { return is(known.code); });
    if (refusal != std::end(refusals))
        return EngineError::of(refusal->number);
    return {EngineError::internalError,
            QStringLiteral("Reserved error (%1); %2.").arg(QString::fromLatin1(state), text)};
}

EngineError connectionRefused(const QString &path, const QString &reason)
{
    const auto says = [&](const char *words) { return reason.contains(QLatin1String(words)); };
    const auto worded = [&](const EngineError &error) {
        return EngineError(error.number(), error.text() + QLatin1String(" (") + reason + u')');
    };
    if (says("authentication failed") || says("no password supplied") || says("not permitted to log in")
        || (says("role \"") && says("does not exist")))
        return worded(EngineError::of(EngineError::wrongAccount));
    if (says("too many c") || says("remaining connection slots"))
        return worded(EngineError::of(EngineError::tooManyUsers));
    if (says("database \"") && says("does not exist"))
        return worded({EngineError::fileNotFound, QStringLiteral("Could not find file '%1'.").arg(path)});
    return worded({EngineError::connectionFailed, QStringLiteral("Connection to '%1' failed.").arg(path)});
}

EngineError connectionLost(const QString &path, LostChange change)
{
    static constexpr const char *consequences[] = {
        "", " Nothing of the change was stored.",
        " Whether the last change was stored is not known: look before you repeat it."};
    return {EngineError::connectionFailed,
            QStringLiteral("The connection to '%1' was lost.").arg(path) + QLatin1String(consequences[int(change)])};
}
