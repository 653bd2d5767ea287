#include "admin/NewDatabase.h"

#include "db/Schema.h"
#include "platform/engine/Workspace.h"

NewDatabase::NewDatabase(const QString &path)
{
    if (Workspace::isOnServer(path)) {
        m_database = Workspace::first().openDatabase(path);
        if (!m_database->tables().empty())
            throw EngineError(
                EngineError::fileExists,
                QString("The database of '%1' already has tables (%2).").arg(path, m_database->tables().front().name));
    } else {
        m_file.emplace(path);
        m_database = Workspace::first().createDatabase(m_file->temporaryPath());
    }
    m_transaction.emplace(*m_database);
}

void NewDatabase::commit()
{
    Schema::admitAttendants(*m_database);
    m_transaction->commit();
    m_transaction.reset();
    m_database.reset();
    if (m_file)
        m_file->commit();
}
