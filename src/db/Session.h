#pragma once

#include "platform/engine/Database.h"

/// The one database session of a run: opened once, before any window is shown, and used by every
/// window until the process ends.
namespace Session {

/// The database file's name as the suite writes it: the crib folder and "\dorvak.mdb".
QString DbPath();

/// Opens the session, in place of the one that was open; tests hand over a file of their own.
/// @throws EngineError as Workspace::openDatabase() does; no session is open then.
void open(const QString &path = DbPath());

/// Closes the session, for tests that take their file away. Without one every statement ends in
/// error 3420.
void close();

/// The open database. @throws EngineError 3420 when none is open.
Database &database();

}

/// Runs an INSERT, UPDATE or DELETE through the session. @returns the number of rows it touched.
/// @throws EngineError as Database::execute() does.
qint64 execute(const QString &statement);

/// Runs a SELECT through the session, as Database::openRecordset() does.
Recordset openRecordset(const QString &statement);
