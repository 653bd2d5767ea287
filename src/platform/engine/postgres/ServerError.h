#pragma once

#include "platform/engine/EngineError.h"
#include "platform/engine/dialect/Translation.h"

struct pg_conn;
struct pg_result;

/// What a server refused a statement with.
struct ServerError {
    QByteArray state; ///< its code of five characters
    QString text, table, column, constraint, detail;

    static ServerError of(const pg_result *result);
    bool is(const char *codeOrClass) const { return state.startsWith(codeOrClass); }
    /// Whether it is the server's farewell.
    bool isFarewell() const { return is("57P0") || is("08") || is("25P03"); }

    /// The same in the suite's numbers and words. `key` is the relation behind `constraint`, if it is one.
    /// `translation` tells what the statement was about, null for one in the engine's own language.
    EngineError inEnginesWords(const dialect::Translation *translation, const dialect::ForeignKey &key) const;
};

/// Why no connection to the server named in the file `path` came about.
EngineError connectionRefused(const QString &path, const QString &reason);
/// The same from what the server or the network told `connection`, which was asked to tell codes as well.
EngineError connectionRefused(const QString &path, const pg_conn *connection);

/// A connection that was lost on the way; `change` tells what is known of a change that was under way.
enum class LostChange { None, NothingStored, Unknown };
EngineError connectionLost(const QString &path, LostChange change);
