#include "db/Session.h"

#include "platform/engine/Workspace.h"
#include "platform/system/Clock.h"
#include "platform/system/ProgramFolder.h"

namespace {
std::unique_ptr<Database> session;
}

QString Session::DbPath() { return ProgramFolder::path() + "\\dorvak.mdb"; }

void Session::open(const QString &path)
{
    session.reset();
    session = Workspace::first().openDatabase(path);
    Clock::setOffset(session->clockOffset());
}

void Session::close() { session.reset(); }

Database &Session::database()
{
    if (!session)
        throw EngineError(3420, "Object invalid or no longer set.");
    return *session;
}

qint64 execute(const QString &statement) { return Session::database().execute(statement); }

Recordset openRecordset(const QString &statement) { return Session::database().openRecordset(statement); }
