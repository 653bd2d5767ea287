#include "platform/engine/postgres/ServerError.h"

#include "platform/engine/postgres/Libpq.h"

#include <QRegularExpression>

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

constexpr const char *locks[] = {"55P03", "40"};

QString fieldOf(const PGresult *result, int field)
{
    return QString::fromUtf8(libpq().resultErrorField(result, field));
}

EngineError withReason(const EngineError &error, const QString &reason)
{
    return {error.number(), error.text() + QLatin1String(" (") + reason + u')'};
}

EngineError relationBroken(const ServerError &error, const dialect::ForeignKey &key)
{
    // Either the changed row names no row, or others name it: in any language the server shows whose column it is.
    if (error.detail.contains(u'(' + key.column + QLatin1String(")=")))
        return {EngineError::relatedRecordRequired,
                QStringLiteral("You cannot add or change a record because a related record is required in table '%1'.")
                    .arg(key.parentTable)};
    return {EngineError::relatedRecords,
            QStringLiteral("The record cannot be deleted or changed because table '%1' includes related records.")
                .arg(error.table)};
}

}

ServerError ServerError::of(const PGresult *result)
{
    return {libpq().resultErrorField(result, PG_DIAG_SQLSTATE),
            fieldOf(result, PG_DIAG_MESSAGE_PRIMARY),
            fieldOf(result, PG_DIAG_TABLE_NAME),
            fieldOf(result, PG_DIAG_COLUMN_NAME),
            fieldOf(result, PG_DIAG_CONSTRAINT_NAME),
            fieldOf(result, PG_DIAG_MESSAGE_DETAIL)};
}

EngineError ServerError::inEnginesWords(const dialect::Translation *translation, const dialect::ForeignKey &key) const
{
    if (is("23503"))
        return relationBroken(*this, key);
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
    if (is("57014"))
        return {EngineError::cancelled,
                QStringLiteral("The server cancelled the statement before it was done. (%1)").arg(text)};
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
    return withReason({EngineError::connectionFailed, QStringLiteral("Connection to '%1' failed.").arg(path)}, reason);
}

EngineError connectionRefused(const QString &path, const PGconn *connection)
{
    // What the server says begins with its code, and ends with a line for its makers.
    static const QRegularExpression code(QStringLiteral(":  ([0-9A-Z]{5}): "));
    static const QRegularExpression place(QStringLiteral("\\n[^\\n]*, \\w+\\.c:\\d+"));
    QString reason = QString::fromUtf8(libpq().errorMessage(connection)).remove(place);
    const QString state = code.match(reason).captured(1);
    reason = reason.replace(code, QStringLiteral(": ")).simplified();
    if (libpq().connectionNeedsPassword(connection) || state.startsWith(u"28"))
        return withReason(EngineError::of(EngineError::wrongAccount), reason);
    if (state == u"53300")
        return withReason(EngineError::of(EngineError::tooManyUsers), reason);
    if (state == u"42501")
        return withReason(EngineError::of(EngineError::noPermission), reason);
    if (state == u"3D000")
        return withReason({EngineError::fileNotFound, QStringLiteral("Could not find file '%1'.").arg(path)}, reason);
    return connectionRefused(path, reason);
}

EngineError connectionLost(const QString &path, LostChange change)
{
    static constexpr const char *consequences[] = {
        "", " Nothing of the change was stored.",
        " Whether the last change was stored is not known: look before you repeat it."};
    return {EngineError::connectionFailed,
            QStringLiteral("The connection to '%1' was lost.").arg(path) + QLatin1String(consequences[int(change)])};
}
