#pragma once

#include "platform/engine/EngineError.h"
#include "platform/engine/dialect/Translation.h"

struct pg_result;

/// What a server refused a statement with.
struct ServerError {
    QByteArray state; ///< its code of five characters
    QString text, table, column, constraint;

    static ServerError of(const pg_result *result);
    bool is(const char *codeOrClass) const { return state.startsWith(codeOrClass); }
    /// Whether it is the server's farewell.
    bool isFarewell() const { return is("57P0") || is("08"); }

    /// The same in the suite's numbers and words. `parent` is the table that `constraint` asks for a row of.
    /// `translation` tells what the statement was about, null for one in the engine's own language.
    EngineError inEnginesWords(const dialect::Translation *translation, const QString &parent) const;
};

/// Why no connection to the server named in the file `path` came about, from the server's or the network's words.
EngineError connectionRefused(const QString &path, const QString &reason);

/// A connection that was lost on the way; `change` tells what is known of a change that was under way.
enum class LostChange { None, NothingStored, Unknown };
EngineError connectionLost(const QString &path, LostChange change);
